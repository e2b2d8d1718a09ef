#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace reference::bench {

// What is asked, and what the answer consists of: "hrefs" are the pages that match, as texts;
// "results" are read with name, href and purpose.
enum class Ask : std::uint8_t {
    ExactHrefs,
    ExactResults,
    AnyCaseHrefs,
    LastComponentHrefs,
    LastTwoComponentsHrefs,
    ClassResults,  // the class with its properties, and its members
    PageResults,   // by file name
    PartHrefs,     // a part of the name or of the purpose, in any case
    PartResults,
    TextResults,  // a part of any text, in any case
};

inline constexpr std::size_t askCount = 10;

// By which rule the texts of the queries are picked from the data.
enum class Pick : std::uint8_t {
    Names,
    ShoutedNames,
    MissingNames,
    LastComponents,
    LastTwoComponents,
    Classes,
    FileNames,
    RareWords,
    MediumWords,
    FrequentWords,
    MissingWords,
    TwoLetters,
    Phrases,
    NonLatinWords,
    Punctuation,
};

// How hard a class is meant to be.
enum class Tier : std::uint8_t { Easy, Typical, Adversarial };

struct QueryClass {
    std::string_view name;
    Ask ask;
    Pick pick;
    Tier tier;
    // Why the class is in its tier.
    std::string_view remark;
};

[[nodiscard]] std::span<const QueryClass> queryClasses();

[[nodiscard]] std::string_view nameOf(Tier tier);

// Whether the answer to the question holds results and not hrefs alone.
[[nodiscard]] bool answersWithResults(Ask ask);

// Whether the question is about a name, of an entity, class or page, and not about parts of texts.
[[nodiscard]] bool isAboutNames(Ask ask);

}  // namespace reference::bench
