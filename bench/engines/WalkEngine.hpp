#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string_view>

#include "corpus/Corpus.hpp"
#include "engines/Engine.hpp"

namespace reference::bench {

// No index: compares each name, and looks through all texts, which lie in one piece of memory and
// are folded already. Shows what an index must at least be worth.
class WalkEngine final : public Engine {
  public:
    explicit WalkEngine(std::shared_ptr<const Corpus> corpus);
    [[nodiscard]] std::string name() const override { return "walk"; }
    [[nodiscard]] Meaning meaning(Ask ask, const Query& query) const override;
    void answer(Ask ask, const Query& query, Delivery& delivery) override;
    [[nodiscard]] std::unique_ptr<Engine> another() const override;

  private:
    [[nodiscard]] std::set<std::uint32_t> pagesWithPart(std::string_view part) const;

    std::shared_ptr<const Corpus> m_corpus;
};

}  // namespace reference::bench
