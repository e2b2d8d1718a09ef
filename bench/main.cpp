// Compares the library with what could be used in its place. scripts/benchmark runs this and makes
// docs/benchmarks.md of what it writes.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "corpus/Corpus.hpp"
#include "engines/LibraryEngine.hpp"
#include "engines/Rivals.hpp"
#include "grow/grow.hpp"
#include "measure/memory.hpp"
#include "measure/opening.hpp"
#include "measure/orders.hpp"
#include "measure/process.hpp"
#include "measure/queries.hpp"
#include "measure/threads.hpp"

namespace {

using namespace reference::bench;

struct Options {
    SetFolders folders;
    bool withoutXapian = false;
    std::size_t threads = 0;
    QueryOptions queries;
    std::filesystem::path out;
    std::vector<std::string> command;
    std::filesystem::path grownSet;
    std::size_t entities = 0;
    std::size_t products = 0;
};

void write(const Options& options, const boost::json::object& figures) {
    if (options.out.empty())
        return;
    std::ofstream file(options.out);
    file << boost::json::serialize(figures) << '\n';
    file.close();
    if (!file)
        throw std::runtime_error("Cannot write " + options.out.string());
}

void runQueries(const Options& options) {
    const auto corpus = std::make_shared<const Corpus>(readCorpus(options.folders.set));
    fillRivals(*corpus, options.folders, !options.withoutXapian);
    loadLibrary(options.folders.set);
    const auto engines = openEngines(corpus, options.folders, !options.withoutXapian);
    boost::json::object figures{
        {"entities", corpus->keys.size()},
        {"products", corpus->products.size()},
        {"results", corpus->resultPages.size()},
        {"recordBytes", corpus->recordTexts.bytes().size()},
        {"textBytes", corpus->itemTexts.bytes().size()},
        {"classes", measureQueries(*corpus, engines, options.queries, std::cout)}};
    if (options.threads > 0)
        figures["threads"] = measureThreads(*corpus, engines, options.threads, std::cout);
    write(options, figures);
}

void addSet(CLI::App& command, Options& options) {
    command.add_option("--set", options.folders.set, "The documentation set")
        ->required()
        ->type_name("FOLDER");
}

void addRivals(CLI::App& command, Options& options) {
    command
        .add_option("--rivals", options.folders.rivals,
                    "Where the rivals' databases are; \"queries\" makes those that are missing")
        ->required()
        ->type_name("FOLDER");
    command.add_flag("--without-xapian", options.withoutXapian,
                     "Leave Xapian out, whose databases take longest to make");
}

void addOut(CLI::App& command, Options& options) {
    command.add_option("--out", options.out, "Where the figures go, as JSON")->type_name("FILE");
}

void addQueries(CLI::App& app, Options& options) {
    auto* const command = app.add_subcommand("queries", "Every kind of query, with warm caches");
    addSet(*command, options);
    addRivals(*command, options);
    addOut(*command, options);
    command->add_option("--only", options.queries.only, "Only classes with this in their names")
        ->type_name("TEXT");
    command->add_option("--queries", options.queries.queries, "Queries of a class")
        ->capture_default_str();
    command->add_option("--min-time", options.queries.minTime, "Seconds to repeat each query for")
        ->capture_default_str();
    command
        ->add_option("--budget", options.queries.budget,
                     "Seconds after which an engine is spared further queries of a class")
        ->capture_default_str();
    command->add_option("--threads", options.threads,
                        "Then also ask from this many threads at once");
    command->callback([&options] { runQueries(options); });
}

void addOpening(CLI::App& app, Options& options) {
    auto* const command = app.add_subcommand("opening", "From nothing to the first answer");
    addSet(*command, options);
    addRivals(*command, options);
    addOut(*command, options);
    command->callback([&options] {
        write(options,
              {{"opening", measureOpening(options.folders, !options.withoutXapian, std::cout)}});
    });
}

void addMemory(CLI::App& app, Options& options) {
    auto* const command = app.add_subcommand("memory", "What the library keeps in memory");
    addSet(*command, options);
    addOut(*command, options);
    command->callback(
        [&options] { write(options, measureMemory(options.folders.set, std::cout)); });
}

void addOrders(CLI::App& app, Options& options) {
    auto* const command = app.add_subcommand("orders", "Ordering many results");
    addSet(*command, options);
    addOut(*command, options);
    command->callback([&options] {
        write(options, {{"orders", measureOrders(options.folders.set, std::cout)}});
    });
}

void addProcess(CLI::App& app, Options& options) {
    auto* const command = app.add_subcommand("process", "Time and memory of a whole program");
    addOut(*command, options);
    command->add_option("command", options.command, "The program and its arguments, after --")
        ->required();
    command->callback([&options] {
        const auto figures = measureProcess(options.command);
        std::cout << boost::json::serialize(figures) << '\n';
        write(options, figures);
    });
}

void addGrow(CLI::App& app, Options& options) {
    auto* const command = app.add_subcommand("grow", "Makes a large set out of a small real one");
    addSet(*command, options);
    command->add_option("--into", options.grownSet, "The new set")->required()->type_name("FOLDER");
    command->add_option("--entities", options.entities, "How many it is to have")->required();
    command->add_option("--products", options.products, "Among how many products")->required();
    command->callback([&options] {
        grow(options.folders.set, options.grownSet, options.entities, options.products);
    });
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Compares the library with what could be used in its place.", "lookup_benchmark");
    app.require_subcommand(1);
    Options options;
    addQueries(app, options);
    addOpening(app, options);
    addMemory(app, options);
    addOrders(app, options);
    addProcess(app, options);
    addGrow(app, options);
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
