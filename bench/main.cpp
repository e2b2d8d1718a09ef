// Compares the library with what could be used in its place. scripts/benchmark runs this and makes
// docs/benchmarks.md of what it writes.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <utility>

#include <CLI/CLI.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "corpus/Corpus.hpp"
#include "engines/LibraryEngine.hpp"
#include "engines/Rivals.hpp"
#include "grow/grow.hpp"
#include "measure/queries.hpp"

namespace {

using namespace reference::bench;

struct CommonOptions {
    SetFolders folders;
    bool withoutXapian = false;
    std::filesystem::path out;
};

void addCommonOptions(CLI::App& command, CommonOptions& options) {
    command.add_option("--set", options.folders.set, "The documentation set")
        ->required()
        ->type_name("FOLDER");
    command
        .add_option("--rivals", options.folders.rivals,
                    "Where the rivals' databases are; those that are missing are made")
        ->required()
        ->type_name("FOLDER");
    command.add_flag("--without-xapian", options.withoutXapian,
                     "Leave Xapian out, whose databases take longest to make");
    command.add_option("--out", options.out, "Where the figures go, as JSON")->type_name("FILE");
}

void write(const CommonOptions& options, const boost::json::object& figures) {
    if (options.out.empty())
        return;
    std::ofstream file(options.out);
    file << boost::json::serialize(figures) << '\n';
    file.close();
    if (!file)
        throw std::runtime_error("Cannot write " + options.out.string());
}

void runQueries(const CommonOptions& options, const QueryOptions& queryOptions) {
    const auto corpus = std::make_shared<const Corpus>(readCorpus(options.folders.set));
    fillRivals(*corpus, options.folders, !options.withoutXapian);
    loadLibrary(options.folders.set);
    const auto engines = openEngines(corpus, options.folders, !options.withoutXapian);
    auto rows = measureQueries(*corpus, engines, queryOptions, std::cout);
    write(options, {{"entities", corpus->keys.size()},
                    {"products", corpus->products.size()},
                    {"textBytes", corpus->itemTexts.bytes().size()},
                    {"classes", std::move(rows)}});
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Compares the library with what could be used in its place.", "lookup_benchmark");
    app.require_subcommand(1);
    CommonOptions common;

    QueryOptions queryOptions;
    auto* const queries = app.add_subcommand("queries", "Every kind of query, with warm caches");
    addCommonOptions(*queries, common);
    queries->add_option("--only", queryOptions.only, "Only classes with this in their names")
        ->type_name("TEXT");
    queries->add_option("--queries", queryOptions.queries, "Queries of a class")
        ->capture_default_str();
    queries->add_option("--min-time", queryOptions.minTime, "Seconds to repeat each query for")
        ->capture_default_str();
    queries
        ->add_option("--budget", queryOptions.budget,
                     "Seconds after which an engine is spared further queries of a class")
        ->capture_default_str();
    queries->callback([&] { runQueries(common, queryOptions); });

    std::filesystem::path from;
    std::filesystem::path into;
    std::size_t entities = 0;
    std::size_t products = 0;
    auto* const growing = app.add_subcommand("grow", "Makes a large set out of a small real one");
    growing->add_option("--from", from, "The real set")->required()->type_name("FOLDER");
    growing->add_option("--into", into, "The new set")->required()->type_name("FOLDER");
    growing->add_option("--entities", entities, "How many it is to have")->required();
    growing->add_option("--products", products, "Among how many products")->required();
    growing->callback([&] { grow(from, into, entities, products); });

    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError& error) {
        return app.exit(error);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
