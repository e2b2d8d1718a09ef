#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace reference::bench {

// What answers questions: the library, or something that could be used in its place. One thread at
// a time.
class Searcher {
  public:
    Searcher() = default;
    Searcher(const Searcher&) = delete;  // holds open databases
    Searcher& operator=(const Searcher&) = delete;
    virtual ~Searcher() = default;

    [[nodiscard]] virtual std::string name() const = 0;

    // The labels of what is found, the best first, no more than `count`. The question is in UTF-8,
    // as a person types it.
    [[nodiscard]] virtual std::vector<std::string> ask(const std::string& question,
                                                       std::size_t count) = 0;
};

}  // namespace reference::bench
