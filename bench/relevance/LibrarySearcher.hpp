#pragma once

#include "relevance/Searcher.hpp"

namespace reference::bench {

// The library, over the documentation set of VELTRA_DOC_ROOT.
class LibrarySearcher final : public Searcher {
  public:
    [[nodiscard]] std::string name() const override { return "this library"; }
    [[nodiscard]] std::vector<std::string> ask(const std::string& question,
                                               std::size_t count) override;
};

}  // namespace reference::bench
