// Documentation sets for tests: one whose files are texts to be broken, and products to publish.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "docset/Fault.hpp"
#include "docset/ProductDocumentation.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {

// The three files of a sound set with one product, "demo", in which every member of the format
// occurs. The layout is what a person would write; nothing relies on it.
struct SetTexts {
    std::string manifest;
    std::string lookup;
    std::string reference;
};

inline constexpr const char* manifestPath = "documentation-set.json";
inline constexpr const char* lookupPath = "en_US/demo.lookup.json";
inline constexpr const char* referencePath = "en_US/demo.reference.json";

[[nodiscard]] SetTexts soundSet();

// The text of the set's file at `path`, one of the three above.
[[nodiscard]] std::string& fileOf(SetTexts& texts, std::string_view path);

void writeSet(const TempFolder& root, const SetTexts& texts);

// `text` with its one occurrence of `from` replaced. Throws std::logic_error when there is not
// exactly one.
[[nodiscard]] std::string replaced(std::string text, std::string_view from, std::string_view to);

// A text without its mark, and where the mark stood, counted from 1; 0 where there was none.
struct MarkedText {
    std::string text;
    std::size_t line = 0;
    std::size_t column = 0;
};

inline constexpr char placeMark = '^';

[[nodiscard]] MarkedText takeMark(std::string text);

// Gathers the faults that a reader reports to `faults.handler()`.
class FaultList {
  public:
    [[nodiscard]] docset::FaultHandler handler();

    [[nodiscard]] const std::vector<docset::Fault>& all() const noexcept { return m_faults; }

  private:
    std::vector<docset::Fault> m_faults;
};

// One line for each fault.
[[nodiscard]] std::string dump(const std::vector<docset::Fault>& faults);

// A sound product: `functions` functions f0, f1, … on pages of their own, and a class Box with a
// property. Every purpose is `edition`, which tells one edition from another.
[[nodiscard]] docset::ProductDocumentation makeProduct(const std::u16string& shortName,
                                                       const std::u16string& edition = u"first",
                                                       std::size_t functions = 2);

// All that the set at `root` holds of a product in a locale; nothing when the set has no such
// product. Throws std::runtime_error, with the faults, when there are any.
[[nodiscard]] std::optional<docset::ProductDocumentation> readProduct(
    const std::filesystem::path& root, const std::u16string& shortName,
    const std::string& locale = "en_US");

// The `edition` that makeProduct gave every record and item of `product`, in UTF-8. Throws
// std::runtime_error when they differ.
[[nodiscard]] std::string editionOf(const docset::ProductDocumentation& product);

}  // namespace reference::tests

namespace reference::docset {

void PrintTo(const Fault& fault, std::ostream* out);

}  // namespace reference::docset
