#pragma once

#include <memory>
#include <string>
#include <vector>

#include "relevance/Entities.hpp"
#include "relevance/Searcher.hpp"

namespace reference::bench {

// Xapian: the words of names, purposes and texts with their stems, in fields and all together, and
// with spelling corrected. The database is in a folder for temporary files, and goes with this
// object. Keeps a reference to the entities.
class XapianSearcher final : public Searcher {
  public:
    explicit XapianSearcher(const std::vector<Entity>& entities);
    ~XapianSearcher() override;
    [[nodiscard]] std::string name() const override { return "Xapian"; }
    [[nodiscard]] std::vector<std::string> ask(const std::string& question,
                                               std::size_t count) override;

  private:
    struct Index;

    const std::vector<Entity>& m_entities;
    std::unique_ptr<Index> m_index;
};

}  // namespace reference::bench
