#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <string>

#include <CLI/CLI.hpp>

#include "vref/Commands.hpp"
#include "vref/Ordering.hpp"

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

void addQueryOptions(CLI::App& command, QueryOptions& options) {
    command
        .add_option("--type", options.types,
                    "Only entities of this type, by name or number; may be repeated")
        ->type_name("TYPE")
        ->allow_extra_args(false);
    command
        .add_option("--product", options.products,
                    "Only this product, by its short name; may be repeated")
        ->type_name("PRODUCT")
        ->allow_extra_args(false);
    command.add_flag("-i,--ignore-case", options.ignoreCase, "Upper and lower case are the same");
    command.add_flag("--ignore-package", options.ignorePackage,
                     "The name may lack its qualification: gaussian_kde for "
                     "scipy.stats.gaussian_kde");
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
    }

    int run(int argc, char** argv) {
        try {
            m_app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            return m_app.exit(error) == 0 ? Success : Unusable;
        }
        if (!m_command)
            throw UnusableError(
                "A command is missing: find, show, products, import sphinx or validate; "
                "\"vref --help\" tells more.");
        return m_command();
    }

  private:
    void addFind() {
        CLI::App* command =
            m_app.add_subcommand("find", "Lists the entries that bear a name, or hold it");
        command->add_option("NAME", m_find.query.name, "The entity's qualified name");
        command
            ->add_option(
                "--search", m_find.query.search,
                "What the name is compared with: entity names (the default), classes, each "
                "with its properties, parts of names and purposes, parts of all text, or "
                "pages")
            ->transform(
                CLI::CheckedTransformer(std::map<std::string, Search>{{"entity", Search::Entity},
                                                                      {"class", Search::Class},
                                                                      {"purpose", Search::Purpose},
                                                                      {"text", Search::Text},
                                                                      {"page", Search::Page}}))
            ->type_name("entity|class|purpose|text|page");
        addQueryOptions(*command, m_find.query);
        command
            ->add_option(
                "--order", m_find.order,
                "What to order by, one key or several divided by commas: " + Ordering::knownKeys() +
                    ". Without it: the very name first, then preferred, then depth")
            ->type_name("KEY[,KEY...]")
            ->allow_extra_args(false);
        command->add_flag("--explain", m_find.explain,
                          "Tell which key put each entry before the next");
        command->add_flag("--all", m_find.query.all,
                          "Everything of the given types and products, whatever its name");
        command->add_option("--limit", m_find.limit, "At most this many entries")->type_name("N");
        command->add_flag("--long", m_find.hrefs, "Also show each entry's page");
        command->add_flag("--json", m_find.json, "Print the whole entries as a JSON array");
        addDocumentationOptions(*command, m_find.documentation);
        command->callback([this] { m_command = [this] { return find(m_find); }; });
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
        command->callback([this] { m_command = [this] { return importSphinx(m_import); }; });
    }

    void addValidate() {
        CLI::App* command = m_app.add_subcommand("validate", "Checks a documentation set");
        command->add_option("ROOT", m_root, "The set's folder")->required();
        command->callback([this] { m_command = [this] { return validate(m_root); }; });
    }

    CLI::App m_app;
    FindOptions m_find;
    ShowOptions m_show;
    ProductsOptions m_products;
    ImportSphinxOptions m_import;
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
