#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "corpus/Corpus.hpp"
#include "engines/Engine.hpp"

namespace reference::bench {

// What cannot be beaten by much: for a name, one probe into a hash table made for just that
// question; for a part of texts, reading every byte of them once, which is what an answer costs
// without an index even if comparing were free.
class FloorEngine final : public Engine {
  public:
    explicit FloorEngine(std::shared_ptr<const Corpus> corpus);
    [[nodiscard]] std::string name() const override { return "floor"; }
    [[nodiscard]] Meaning meaning(Ask ask, const Query& query) const override;
    void answer(Ask ask, const Query& query, Delivery& delivery) override;
    [[nodiscard]] std::unique_ptr<Engine> another() const override;

  private:
    using Table = std::unordered_map<std::string_view, std::vector<std::uint32_t>>;
    struct Tables {
        // Records by name.
        std::array<Table, 4> names;
        // Pages by file name and by class.
        Table fileNames;
        Table classes;
    };
    FloorEngine(std::shared_ptr<const Corpus> corpus, std::shared_ptr<const Tables> tables);

    std::shared_ptr<const Corpus> m_corpus;
    std::shared_ptr<const Tables> m_tables;
};

}  // namespace reference::bench
