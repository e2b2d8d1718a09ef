#include "reference/search/TextQuery.hpp"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "docimage/searchForm.hpp"
#include "reference/search/NumberSet.hpp"

namespace reference::search {
namespace {

using docimage::Lexicon;
using docimage::WordPart;

constexpr std::string_view sigma = "\xCF\x83";

bool isLead(char16_t unit) {
    return (unit & 0xFC00U) == 0xD800U;
}
bool isTrail(char16_t unit) {
    return (unit & 0xFC00U) == 0xDC00U;
}

// Without what may be the half of a surrogate pair in the texts that are searched.
std::u16string_view withoutHalves(std::u16string_view text) {
    if (!text.empty() && isTrail(text.front()))
        text.remove_prefix(1);
    if (!text.empty() && isLead(text.back()))
        text.remove_suffix(1);
    return text;
}

bool hasSurrogate(std::u16string_view text) {
    return std::ranges::any_of(text, [](char16_t unit) { return isLead(unit) || isTrail(unit); });
}

}  // namespace

// A text in search form holds the wanted form if the wanted text occurs in it, so each word of the
// form is a word of the text, or the end, the beginning or the middle of one where the form begins
// or ends with it.
TextQuery::TextQuery(std::u16string_view text, bool isCaseSensitive) {
    const std::u16string_view kept = withoutHalves(text);
    m_form = docimage::searchForm(kept);
    docimage::forEachWord(m_form, [this](std::string_view word) {
        const auto at = static_cast<std::size_t>(word.data() - m_form.data());
        m_parts.push_back({.at = at,
                           .size = word.size(),
                           .isStart = at > 0,
                           .isEnd = at + word.size() < m_form.size()});
    });
    // A sigma stands for two letters, and surrogates for what may be folded or not.
    m_isExact = !isCaseSensitive && m_parts.size() == 1 && m_parts.front().size == m_form.size() &&
                m_form.find(sigma) == std::string::npos && !hasSurrogate(text);
}

WordPart TextQuery::wordPart(const Part& part) const {
    return {.letters = std::string_view(m_form).substr(part.at, part.size),
            .isStart = part.isStart,
            .isEnd = part.isEnd};
}

std::vector<std::uint32_t> TextQuery::textsWithAll(const Lexicon& lexicon,
                                                   std::size_t textCount) const {
    // The words of each part, and how many texts they lead to at most.
    struct PartWords {
        std::vector<std::uint32_t> words;
        std::size_t weight = 0;
    };
    std::vector<PartWords> parts;
    for (const Part& part : m_parts) {
        PartWords& found = parts.emplace_back();
        lexicon.forEachWordWith(wordPart(part), [&](std::uint32_t word) {
            found.words.push_back(word);
            found.weight += lexicon.weightOf(word);
        });
        if (found.words.empty())
            return {};
    }
    std::ranges::sort(parts, {}, &PartWords::weight);

    std::optional<std::vector<std::uint32_t>> texts;
    for (const PartWords& part : parts) {
        NumberSet set(textCount);
        for (const std::uint32_t word : part.words)
            lexicon.forEachTextWith(word, [&](std::uint32_t text) { set.insert(text); });
        std::vector<std::uint32_t> withPart = set.take();
        if (texts) {
            std::vector<std::uint32_t> withBoth;
            std::ranges::set_intersection(*texts, withPart, std::back_inserter(withBoth));
            withPart = std::move(withBoth);
        }
        texts = std::move(withPart);
        if (texts->empty())
            break;
    }
    return std::move(*texts);
}

}  // namespace reference::search
