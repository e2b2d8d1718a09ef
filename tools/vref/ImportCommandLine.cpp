#include "vref/ImportCommandLine.hpp"

#include <string_view>

#include <CLI/CLI.hpp>

#include "vref/DisplayText.hpp"
#include "vref/OptionTexts.hpp"

namespace reference::tools {
namespace {

constexpr std::string_view importerUsage =
    "There is one importer, for built Sphinx HTML pages:\n"
    "      vref import sphinx DIR --product NAME --into ROOT\n"
    "where DIR is the folder on this machine that holds objects.inv.";

bool isAddress(const std::string& text) {
    return text.find("://") != std::string::npos;
}

}  // namespace

CLI::App& addImportSphinx(CLI::App& import, ImportSphinxOptions& options) {
    CLI::App* command = import.add_subcommand(
        "sphinx", "Imports a built Sphinx HTML tree as a product, or replaces the product");
    command->add_option("DIR", options.source, "The folder that holds objects.inv")
        ->check([](const std::string& text) {
            return isAddress(text) ? describeUnknownImporter(text) : std::string();
        })
        ->required();
    command->add_option("--product", options.product, "The product's short name")
        ->type_name("NAME")
        ->check(checkProductName)
        ->required();
    command->add_option("--into", options.root, "The documentation set; made when missing")
        ->type_name("ROOT")
        ->required();
    command
        ->add_option("--locale", options.locale,
                     "The locale to file it under (else the set's first, en_US in a new set)")
        ->type_name("LOCALE");
    command
        ->add_option("--display-name", options.displayName,
                     "What readers see (else the project's own name)")
        ->type_name("TEXT");
    command
        ->add_option("--product-version", options.version,
                     "The product's version (else the project's own)")
        ->type_name("TEXT");
    command
        ->add_option("--help-folder", options.helpFolder,
                     "The folder of the pages below the help root (else the short name)")
        ->type_name("PATH")
        ->check(checkHelpFolder);
    command->add_flag("--list-all", options.listAll,
                      "List every object without a description, however many");
    command->add_flag("--force", options.force,
                      "Replace the product even if nothing, or far less than before, was "
                      "found");
    return *command;
}

std::string describeMissingImporter() {
    return "What to import is missing. " + std::string(importerUsage);
}

std::string describeUnknownImporter(const std::string& typed) {
    const std::string text = isAddress(typed)
                                 ? "Nothing is imported from an address such as " +
                                       printableLine(typed) + "; fetch the pages first."
                                 : "There is no importer \"" + printableLine(typed) + "\".";
    return text + " " + std::string(importerUsage);
}

}  // namespace reference::tools
