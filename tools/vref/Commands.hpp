#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "vref/Configuration.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/Finding.hpp"
#include "vref/Query.hpp"

// The commands of the tool. Each writes its answer to the standard output stream and messages to
// the standard error stream, and returns the exit status. When it cannot go on, it throws
// UnusableError or what the library threw.
namespace reference::tools {

// Prints the entries that a search finds, in order.
ExitStatus find(const FindOptions& options, const Configuration& configuration);

struct ShowOptions {
    // The name may be an href as well.
    QueryOptions query;
    // Which of the entries that are found, counted from 1.
    std::size_t nth = 1;
    bool json = false;
};

// Prints one entry as a manual page.
ExitStatus show(const ShowOptions& options, const Configuration& configuration);

// Opens the page of one entry in the browser; without a browser, prints the page's address. The
// name may be an href as well.
ExitStatus openPage(const QueryOptions& query, const Configuration& configuration);

struct CompleteOptions {
    // The name is the beginning of one; of the rest, the products and those that are preferred
    // count.
    QueryOptions query;
    std::size_t limit = 20;
    bool json = false;
};

// Prints what names go on from a beginning: at a terminal as a table, else a line each, of the
// text, the type and the purpose with tabs between them.
ExitStatus complete(const CompleteOptions& options, const Configuration& configuration);

struct ProductsOptions {
    bool json = false;
};

// Lists the products.
ExitStatus products(const ProductsOptions& options, const Configuration& configuration);

struct ImportSphinxOptions {
    std::string source;
    std::string product;
    std::string root;
    std::string locale;       // empty: the first locale of the set, en_US for a new one
    std::string displayName;  // empty: the project's own name
    std::string version;      // empty: the project's own
    std::string helpFolder;   // empty: the product's short name
    bool listAll = false;
    bool force = false;  // replace the product no matter what it loses
};

// Imports a built Sphinx tree into a documentation set. If nothing was found, or the product would
// lose more than an ordinary release removes, it refuses and leaves the set as it is.
ExitStatus importSphinx(const ImportSphinxOptions& options);

// Checks a documentation set.
ExitStatus validate(const std::string& root);

// Writes the compiled images of a documentation set; faulty files are reported and get none.
ExitStatus compile(const std::string& root);

struct WarmOptions {
    bool trace = false;  // also the records that tell when start-up begins and ends
    bool json = false;
};

// Performs the library's start-up and reports what it logged and loaded.
ExitStatus warm(const WarmOptions& options, const Configuration& configuration);

struct WatchOptions {
    bool json = false;
};

// Answers requests from the standard input stream, one per line, until the stream ends.
ExitStatus watch(const WatchOptions& options, const Configuration& configuration);

struct ConfigOptions {
    std::vector<std::string> prefer;
    bool json = false;
};

// Prints what is in force, and where each value comes from.
ExitStatus config(const ConfigOptions& options, const Configuration& configuration);

}  // namespace reference::tools
