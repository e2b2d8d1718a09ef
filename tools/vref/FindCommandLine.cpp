#include "vref/FindCommandLine.hpp"

#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <boost/algorithm/string/join.hpp>

#include "vref/OptionTexts.hpp"
#include "vref/Ordering.hpp"

namespace reference::tools {
namespace {

Search searchOfOption(const std::string& name) {
    if (const auto search = toSearch(name))
        return *search;
    throw CLI::ValidationError("--search", "There is no search \"" + name + "\"; there is: " +
                                               boost::join(searchNames(), ", ") + ".");
}

void addProductOptions(CLI::App& command, QueryOptions& options) {
    command
        .add_option("--product", options.products,
                    "Only this product, by its short name; may be repeated")
        ->type_name("PRODUCT")
        ->allow_extra_args(false);
    command
        .add_option("--prefer", options.prefer,
                    "Entries of this product before equal ones of others; may be repeated")
        ->type_name("PRODUCT")
        ->allow_extra_args(false);
}

}  // namespace

void addQueryOptions(CLI::App& command, QueryOptions& options) {
    command
        .add_option("--type", options.types,
                    "Only entities of this type, by name or number; may be repeated")
        ->type_name("TYPE")
        ->allow_extra_args(false);
    addProductOptions(command, options);
    command.add_flag("-i,--ignore-case", options.ignoreCase, "Upper and lower case are the same");
    command.add_flag("--ignore-package", options.ignorePackage,
                     "The name may lack its qualification: gaussian_kde for "
                     "scipy.stats.gaussian_kde");
}

void addFindOptions(CLI::App& command, FindOptions& options) {
    command.add_option_function<std::vector<std::string>>(
        "WORDS",
        [&options](const std::vector<std::string>& words) {
            options.query.name = boost::join(words, " ");
        },
        "A name, a part of one, words that say what it is for, or pasted code");
    command.add_flag("--exact", options.exact,
                     "The name as it stands, as the library's request has it: what --search, "
                     "--ignore-case, --ignore-package and --order say holds then");
    command
        .add_option_function<std::string>(
            "--search",
            [&options](const std::string& name) { options.query.search = searchOfOption(name); },
            "What the name is compared with: entity names, classes, each with its "
            "properties, parts of names and purposes, parts of all text, or the pages that "
            "entries are on")
        ->type_name(boost::join(searchNames(), "|"));
    addQueryOptions(command, options.query);
    command
        .add_option("--order", options.order,
                    "What to order by, one key or several divided by commas: " +
                        Ordering::knownKeys() + ".")
        ->type_name("KEY[,KEY...]")
        ->allow_extra_args(false);
    command.add_flag("--explain", options.explain, "Tell which key put each entry before the next");
    command.add_flag("--all", options.query.all,
                     "All that is found; without WORDS, everything of the given types and "
                     "products");
    command
        .add_option("--limit", options.limit,
                    "At most this many entries (ten, unless a request says how to match)")
        ->type_name("N")
        ->check(checkCount);
    command.add_flag("--long", options.hrefs, "Also show each entry's page");
    command.add_flag("--json", options.json, "Print the whole entries as a JSON array");
}

void addCompleteOptions(CLI::App& command, CompleteOptions& options) {
    command.add_option("BEGINNING", options.query.name,
                       "The beginning of a name, such as Data or DataFrame.gr");
    addProductOptions(command, options.query);
    command.add_option("--limit", options.limit, "At most this many (20)")
        ->type_name("N")
        ->check(checkCount);
    command.add_flag("--json", options.json, "Print the list as a JSON array");
}

}  // namespace reference::tools
