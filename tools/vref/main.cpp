#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "vref/Commands.hpp"
#include "vref/FindCommandLine.hpp"

namespace {

using namespace reference::tools;

void addDocumentationOptions(CLI::App& command, DocumentationOptions& options) {
    command
        .add_option("--doc-root", options.docRoot,
                    "The documentation set to read (else VELTRA_DOC_ROOT, else the one installed "
                    "with the library)")
        ->type_name("FOLDER");
    command
        .add_option("--language", options.language,
                    "The language to read it in, such as ja_JP or ja (else the set's first)")
        ->type_name("LOCALE");
}

// The command line of the tool, and what its commands were told.
class CommandLine {
  public:
    CommandLine() : m_app("Finds and shows reference documentation.", "vref") {
        m_app.set_version_flag("--version", "vref " VELTRA_VERSION);
        m_app.footer(
            "Exit status: 0 found or done, 1 nothing found or not whole, 2 wrong use or "
            "broken documentation.");
        addFind();
        addShow();
        addProducts();
        addImport();
        addValidate();
        addWarm();
        addWatch();
    }

    int run(int argc, char** argv) {
        try {
            m_app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            return m_app.exit(error) == 0 ? Success : Unusable;
        }
        if (!m_command)
            throw UnusableError(
                "A command is missing: find, show, products, import sphinx, validate, warm or "
                "watch; \"vref --help\" tells more.");
        return m_command();
    }

  private:
    void addFind() {
        CLI::App* command =
            m_app.add_subcommand("find", "Lists the entries that bear a name, or hold it");
        addFindOptions(*command, m_find);
        addDocumentationOptions(*command, m_findWhere);
        command->callback([this] { m_command = [this] { return find(m_find, m_findWhere); }; });
    }

    void addShow() {
        CLI::App* command = m_app.add_subcommand("show", "Shows one entry as a manual page");
        command->add_option("NAME", m_show.query.name, "The entity's name, or a page's href")
            ->required();
        addQueryOptions(*command, m_show.query);
        command->add_flag("--json", m_show.json, "Print the entry as a JSON array of one");
        addDocumentationOptions(*command, m_show.documentation);
        command->callback([this] { m_command = [this] { return show(m_show); }; });
    }

    void addProducts() {
        CLI::App* command = m_app.add_subcommand("products", "Lists the products");
        command->add_flag("--json", m_products.json, "Print the list as a JSON array");
        addDocumentationOptions(*command, m_products.documentation);
        command->callback([this] { m_command = [this] { return products(m_products); }; });
    }

    void addImport() {
        CLI::App* import =
            m_app.add_subcommand("import", "Brings documentation into a documentation set");
        CLI::App* command = import->add_subcommand(
            "sphinx", "Imports a built Sphinx HTML tree as a product, or replaces the product");
        command->add_option("DIR", m_import.source, "The folder that holds objects.inv")
            ->required();
        command->add_option("--product", m_import.product, "The product's short name")
            ->type_name("NAME")
            ->required();
        command->add_option("--into", m_import.root, "The documentation set; made when missing")
            ->type_name("ROOT")
            ->required();
        command->add_option(
            "--locale", m_import.locale,
            "The locale to file it under (else the set's first, en_US in a new set)");
        command->add_option("--display-name", m_import.displayName,
                            "What readers see (else the project's own name)");
        command->add_option("--product-version", m_import.version,
                            "The product's version (else the project's own)");
        command->add_option("--help-folder", m_import.helpFolder,
                            "The folder of the pages below the help root (else the short name)");
        command->add_flag("--list-all", m_import.listAll,
                          "List every object without a description, however many");
        command->add_flag("--force", m_import.force,
                          "Replace the product even if nothing, or far less than before, was "
                          "found");
        command->callback([this] { m_command = [this] { return importSphinx(m_import); }; });
    }

    void addValidate() {
        CLI::App* command = m_app.add_subcommand("validate", "Checks a documentation set");
        command->add_option("ROOT", m_root, "The set's folder")->required();
        command->callback([this] { m_command = [this] { return validate(m_root); }; });
    }

    void addWarm() {
        CLI::App* command = m_app.add_subcommand(
            "warm", "Performs the library's start-up and tells what it logged and loaded");
        command->add_flag("--trace", m_warm.trace, "Also tell when start-up begins and ends");
        command->add_flag("--json", m_warm.json, "Print one JSON object");
        addDocumentationOptions(*command, m_warm.documentation);
        command->callback([this] { m_command = [this] { return warm(m_warm); }; });
    }

    void addWatch() {
        CLI::App* command = m_app.add_subcommand(
            "watch",
            "Answers a request a line from the standard input, until that ends: the arguments of "
            "\"find\", or \":help\" for the rest. Takes notice when the documentation changes");
        command->add_flag("--json", m_watch.json, "Print one JSON value a line, for a program");
        addDocumentationOptions(*command, m_watch.documentation);
        command->callback([this] { m_command = [this] { return watch(m_watch); }; });
    }

    CLI::App m_app;
    FindOptions m_find;
    DocumentationOptions m_findWhere;
    ShowOptions m_show;
    ProductsOptions m_products;
    ImportSphinxOptions m_import;
    WarmOptions m_warm;
    WatchOptions m_watch;
    std::string m_root;
    std::function<ExitStatus()> m_command;
};

}  // namespace

int main(int argc, char** argv) {
    try {
        return CommandLine().run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "vref: " << error.what() << '\n';
        return Unusable;
    }
}
