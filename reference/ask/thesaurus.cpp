#include "reference/ask/thesaurus.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <vector>

#include "docimage/Stemmer.hpp"
#include "docimage/searchForm.hpp"
#include "foundation/core/NeverDestroyed.hpp"

namespace reference::ask {
namespace {

// One group of words a line, in any of their forms. A word may stand in several groups, and means
// what any of them does. Here stand the words that documentation and its readers exchange for one
// another, not all that a dictionary has: each group makes questions find more, and less of what
// they find is meant.
constexpr std::string_view groups[] = {
    // What is done.
    "delete remove drop erase discard clear unlink",
    "strip trim remove",
    "convert turn transform change cast",
    "parse read interpret decode",
    "make create build generate construct produce",
    "get fetch retrieve obtain",
    "find search locate look seek detect",
    "check test verify validate determine",
    "run execute launch spawn invoke",
    "start begin launch",
    "stop end finish terminate kill cancel abort",
    "pause sleep wait suspend delay block",
    "capture collect record catch",
    "catch handle suppress ignore",
    "print display show output write",
    "write save store dump export serialize persist",
    "read load open import",
    "join merge combine concatenate concat unite",
    "split divide break partition separate chop",
    "sort order arrange rank",
    "reverse backwards flip invert",
    "group aggregate bucket bin",
    "loop iterate iteration traverse walk",
    "repeat duplicate replicate tile",
    "copy duplicate clone",
    "move rename",
    "replace substitute swap exchange",
    "plug substitute insert",
    "insert add append put",
    "compress zip gzip deflate archive pack",
    "decompress extract unpack unzip inflate",
    "compare difference diff",
    "choose select pick",
    "keep preserve retain",
    "fill impute pad",
    "cut truncate clip limit",
    "measure time benchmark profile",
    "compute calculate evaluate",
    "estimate approximate",
    "fit train learn",
    "predict forecast estimate",
    "tune optimize search",
    "optimize minimize maximize",
    "simplify reduce",
    "draw plot chart figure visualize",
    "resample sample draw",
    "call invoke",
    "listen watch monitor observe",
    "send transmit post",
    "receive accept",
    "download fetch retrieve url",
    "enumerate list number",
    "flatten ravel unnest explode",
    "pivot reshape unstack",
    "stack pile",
    "shuffle permute random",
    "escape quote",
    "align justify",
    "wrap fold",
    // What it is done to.
    "folder directory",
    "text string",
    "word token",
    "char character letter",
    "picture image photo",
    "program process command executable application subprocess",
    "shell terminal console",
    "table dataframe frame",
    "row record line",
    "column field variable feature",
    "cell value entry",
    "element item entry member",
    "list array sequence vector",
    "dictionary dict mapping map",
    "pair tuple",
    "key index label",
    "number numeric digit",
    "integer int",
    "float decimal real",
    "boolean bool truth",
    "path route",
    "graph network",
    "node vertex vertices",
    "edge link connection arc",
    "tree hierarchy",
    "heap priority",
    "queue fifo",
    "file document",
    "spreadsheet excel",
    "database sql",
    "web internet http url",
    "address url uri",
    "server service",
    "email mail message",
    "socket connection",
    "thread concurrent parallel",
    "parallel concurrent simultaneous multiprocessing",
    "coroutine async asynchronous awaitable task",
    "lock mutex semaphore",
    "error exception failure",
    "warning alert",
    "argument parameter option",
    "function callable routine",
    "attribute property field",
    "formula expression equation",
    "polynomial poly",
    "root zero",
    "integral area quadrature",
    "derivative gradient slope differentiate",
    "matrix matrices",
    "picture plot figure",
    "signal waveform",
    "time duration period interval elapsed",
    "clock timer counter",
    "date day datetime",
    "weekday day",
    "timezone tz",
    "calendar month",
    "password secret credential",
    "token key secret",
    "hash digest checksum",
    "memory ram bytes storage",
    "size length len",
    "count number frequency occurrence amount",
    "version release",
    "user person account",
    "group cluster segment",
    "category class label target",
    "fold split cross validation",
    "anomaly outlier novelty abnormal",
    "pattern regex regular expression",
    "whitespace space blank",
    "newline line",
    "prefix begin start",
    "suffix end",
    "quantile percentile",
    "percent percentage pct",
    "proportion ratio fraction share percentage",
    "average mean",
    "sum total add",
    "spread deviation variance dispersion",
    "probability chance likelihood",
    "correlation association dependence",
    "similarity similar resemblance alike",
    "distance metric",
    "noise disturbance",
    "neighbor nearest closest",
    "model estimator",
    "score accuracy metric",
    "weight coefficient",
    "hyperparameter parameter",
    "missing null nan na absent",
    // How it is.
    "random pseudorandom stochastic",
    "secure unguessable cryptographic strong safe",
    "temporary scratch temp tmp",
    "unique distinct different",
    "equal same identical equivalent",
    "duplicate repeated same",
    "maximum max largest biggest greatest highest",
    "minimum min smallest lowest least",
    "short shortest cheap cheapest minimum",
    "long longest maximum",
    "consecutive successive adjacent previous",
    "cumulative running accumulate",
    "rolling moving sliding window",
    "nested recursive recursively deep tree",
    "entire whole everything complete full",
    "empty blank none",
    "upper uppercase capital",
    "lower lowercase",
    "sorted ordered",
    "readable human pretty",
    "balanced stratified",
    "exhaustive grid brute all",
    "normal gaussian",
    "symmetric hermitian",
    "fast quick efficient",
    "several multiple many",
    "shared common",
    "current now today",
    "external outside foreign",
    "descending reverse decreasing",
    "ascending increasing",
    "irreducible prime",
};

using Thesaurus = std::map<std::string, std::vector<std::string>, std::less<>>;

Thesaurus readGroups() {
    Thesaurus thesaurus;
    docimage::Stemmer stemmer;
    for (const auto& group : groups) {
        std::vector<std::string> stems;
        docimage::forEachWord(
            group, [&](std::string_view word) { stems.emplace_back(stemmer.stem(word)); });
        for (const auto& stem : stems) {
            auto& synonyms = thesaurus[stem];
            for (const auto& other : stems)
                if (other != stem && std::ranges::find(synonyms, other) == synonyms.end())
                    synonyms.push_back(other);
        }
    }
    return thesaurus;
}

}  // namespace

std::span<const std::string> synonymsOf(std::string_view stem) {
    static const foundation::core::NeverDestroyed<Thesaurus> thesaurus{readGroups()};
    const auto found = thesaurus->find(stem);
    if (found == thesaurus->end())
        return {};
    return found->second;
}

}  // namespace reference::ask
