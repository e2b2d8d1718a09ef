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

bool hasSurrogate(std::u16string_view text) {
    return std::ranges::any_of(text, [](char16_t unit) { return (unit & 0xF800U) == 0xD800U; });
}

}  // namespace

// A text in search form holds the wanted form if the wanted text occurs in it, so each word of the
// form is a word of the text, or the end, the beginning or the middle of one where the form begins
// or ends with it.
TextQuery::TextQuery(const ReferenceRequestExt& ext) {
    const std::string_view form = ext.partForm();
    docimage::forEachWord(form, [&](std::string_view word) {
        const auto at = static_cast<std::size_t>(word.data() - form.data());
        m_parts.push_back(
            {.letters = word, .isStart = at > 0, .isEnd = at + word.size() < form.size()});
    });
    // A sigma stands for two letters, and surrogates for what may be folded or not.
    m_isExact = !ext.isCaseSensitive() && m_parts.size() == 1 &&
                m_parts.front().letters.size() == form.size() &&
                form.find(sigma) == std::string_view::npos && !hasSurrogate(ext.searchText());
}

std::vector<std::uint32_t> TextQuery::textsWithAll(const Lexicon& lexicon,
                                                   std::size_t textCount) const {
    // The words of each part, and how many texts they lead to at most.
    struct PartWords {
        std::vector<std::uint32_t> words;
        std::size_t weight = 0;
    };
    std::vector<PartWords> parts;
    for (const WordPart& part : m_parts) {
        PartWords& found = parts.emplace_back();
        lexicon.forEachWordWith(part, [&](std::uint32_t word) {
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
