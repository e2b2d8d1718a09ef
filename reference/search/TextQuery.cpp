#include "reference/search/TextQuery.hpp"

#include <algorithm>
#include <iterator>
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

TextQuery::Words TextQuery::wordsOf(const Lexicon& lexicon) const {
    Words words;
    for (const WordPart& part : m_parts) {
        PartWords& found = words.emplace_back();
        lexicon.forEachWordWith(part, [&](std::uint32_t word) {
            found.words.push_back(word);
            found.weight += lexicon.weightOf(word);
        });
        if (found.words.empty())
            return {};
    }
    return words;
}

// From the part with the fewest texts on: each of the others leaves some of them out.
std::vector<std::uint32_t> TextQuery::textsWithAll(const Lexicon& lexicon, Words& words,
                                                   std::size_t textCount) {
    std::ranges::sort(words, {}, &PartWords::weight);
    std::vector<std::uint32_t> texts;
    for (std::size_t part = 0; part < words.size(); ++part) {
        NumberSet set(textCount);
        for (const std::uint32_t word : words[part].words)
            lexicon.forEachTextWith(word, [&](std::uint32_t text) { set.insert(text); });
        std::vector<std::uint32_t> withPart = set.take();
        if (part == 0) {
            texts = std::move(withPart);
            continue;
        }
        std::vector<std::uint32_t> withBoth;
        std::ranges::set_intersection(texts, withPart, std::back_inserter(withBoth));
        texts = std::move(withBoth);
    }
    return texts;
}

}  // namespace reference::search
