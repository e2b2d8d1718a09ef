#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace reference::bench {

// What can be found: a documented name of a product, with its texts in UTF-8.
struct Entity {
    // "pandas:pandas.read_csv", as answers and right answers are written.
    std::string label;
    std::string name;
    // In lower case, as the text is.
    std::string purpose;
    // All texts of the reference page that the library searches.
    std::string text;
    // Names of the same entry have the same number.
    std::uint32_t entry = 0;
};

// Every name that the library can find in the documentation set, by product and name. Throws what
// the parser throws.
[[nodiscard]] std::vector<Entity> readEntities(const std::filesystem::path& root);

// The parts of a name as the library divides it, in lower case: "pandas read csv".
[[nodiscard]] std::string spacedParts(const std::string& name);

// "read_csv".
[[nodiscard]] std::string_view lastComponent(std::string_view name);

// Puts an answer together. An entry with two names comes once, under the name that was found first,
// as it does in an answer of the library.
class AnswerList {
  public:
    AnswerList(const std::vector<Entity>& entities, std::size_t count)
        : m_entities(entities), m_count(count) {}

    // Whether more are wanted.
    bool add(std::size_t entity);
    [[nodiscard]] bool isFull() const { return m_labels.size() >= m_count; }
    [[nodiscard]] const std::vector<std::string>& labels() const { return m_labels; }

  private:
    const std::vector<Entity>& m_entities;
    const std::size_t m_count;
    std::vector<std::uint32_t> m_entries;
    std::vector<std::string> m_labels;
};

}  // namespace reference::bench
