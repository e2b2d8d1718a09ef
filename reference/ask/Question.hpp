#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "property/RefEntityType.hpp"
#include "reference/api/export.hpp"

namespace reference::ask {

// Where the words of a question are looked for.
enum class Place { Anywhere, Names, Purposes, Texts };

// A name or a word of a question: "os.path" has the components os and path.
struct Term {
    std::vector<std::u16string> components;
    // So many of them, from the first on, are what code only makes likely: in
    // "df.groupby(x).agg(f)", agg is called on what groupby returned.
    std::size_t hints = 0;
    // Of the question's text, in UTF-16 units.
    std::size_t position = 0;
    std::size_t length = 0;
};

// A filter, as "in", and what may stand after its colon; no values where these are types of
// entities or names of products.
struct QuestionFilter {
    std::u16string_view name;
    std::span<const std::u16string_view> values;
};

struct WantedProduct {
    std::u16string name;
    std::size_t position = 0;
    std::size_t length = 0;
};

// A question as a person types or pastes it, taken apart. An immutable value.
//
//   question = { filter | "-" word | '"' phrase '"' | code | term }
//   filter   = "type:" types | "product:" products | "in:" place | "is:" state
//   term     = component { ("." | "::" | "->" | "#" | "/") component }
//
// Types, products and states are separated by commas; a value may stand in quotation marks. A place
// is "name", "purpose" or "text", a state "deprecated" or "current". Code is a term with brackets
// after it: the names that are called are looked for. A prompt before it, an assignment to a
// variable, the keywords of an import and the message after the name of an error are left out; the
// punctuation of sentences is, too.
class VELTRA_REFERENCE_API Question {
  public:
    // Longer questions are not asked: no name and no sentence of a person is as long.
    static constexpr std::size_t maxLength = 4096;
    static constexpr std::size_t maxTerms = 64;

    // All filters; valid as long as the process.
    [[nodiscard]] static std::span<const QuestionFilter> filters() noexcept;

    // Throws QuestionError for a filter without a value or with an unknown one, a phrase that is
    // not ended, more than `maxLength` units, more than `maxTerms` words (each component of a name
    // is one, and each phrase), and a question that has nothing to look for.
    [[nodiscard]] static Question parse(std::u16string_view text);

    // References are valid as long as the question.
    // The text without white space at its ends.
    [[nodiscard]] const std::u16string& text() const noexcept { return m_text; }
    // What code calls, the likeliest first; empty for a question that is not code.
    [[nodiscard]] const std::vector<Term>& calls() const noexcept { return m_calls; }
    // The words and names outside code, in their order.
    [[nodiscard]] const std::vector<Term>& terms() const noexcept { return m_terms; }
    [[nodiscard]] const std::vector<std::u16string>& phrases() const noexcept { return m_phrases; }
    [[nodiscard]] const std::vector<std::u16string>& excluded() const noexcept {
        return m_excluded;
    }
    // Empty: any.
    [[nodiscard]] const std::vector<property::RefEntityType::Value>& types() const noexcept {
        return m_types;
    }
    [[nodiscard]] const std::vector<WantedProduct>& products() const noexcept { return m_products; }
    [[nodiscard]] Place place() const noexcept { return m_place; }
    // Whether only what is deprecated is wanted, or only what is not; nothing: either.
    [[nodiscard]] std::optional<bool> wantsDeprecated() const noexcept { return m_deprecated; }

    [[nodiscard]] bool hasFilters() const noexcept {
        return !m_types.empty() || !m_products.empty() || m_deprecated || !m_excluded.empty();
    }

  private:
    friend class QuestionParser;
    Question() = default;

    std::u16string m_text;
    std::vector<Term> m_calls;
    std::vector<Term> m_terms;
    std::vector<std::u16string> m_phrases;
    std::vector<std::u16string> m_excluded;
    std::vector<property::RefEntityType::Value> m_types;
    std::vector<WantedProduct> m_products;
    Place m_place = Place::Anywhere;
    std::optional<bool> m_deprecated;
};

}  // namespace reference::ask
