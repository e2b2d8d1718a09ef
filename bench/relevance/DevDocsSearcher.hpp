#pragma once

#include <string>
#include <vector>

#include "relevance/Entities.hpp"
#include "relevance/Searcher.hpp"

namespace reference::bench {

// All names scored by the rule of DevDocs, the best first, equal ones in the order of products and
// names. The rule knows names alone. Keeps a reference to the entities.
class DevDocsSearcher final : public Searcher {
  public:
    explicit DevDocsSearcher(const std::vector<Entity>& entities);
    [[nodiscard]] std::string name() const override { return "DevDocs' rule"; }
    [[nodiscard]] std::vector<std::string> ask(const std::string& question,
                                               std::size_t count) override;

  private:
    const std::vector<Entity>& m_entities;
    std::vector<std::string> m_names;
};

}  // namespace reference::bench
