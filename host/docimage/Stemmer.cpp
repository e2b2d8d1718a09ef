#include "docimage/Stemmer.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <libstemmer.h>
#include <new>

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include "docimage/searchForm.hpp"
#include "fl/i18n/units.hpp"
#include "foundation/core/Once.hpp"

namespace reference::docimage {
namespace {

// Sorted. Words that also name things in programs ("any", "for", "is", "not", "with") are here
// because questions are full of them; a question of nothing else keeps them.
constexpr std::string_view stopWords[] = {
    "a",     "about", "all",    "also",    "am",    "an",        "and",  "any",    "are",   "as",
    "at",    "be",    "been",   "being",   "but",   "by",        "can",  "cannot", "could", "d",
    "did",   "do",    "does",   "doesn",   "doing", "don",       "each", "etc",    "every", "few",
    "for",   "from",  "had",    "has",     "have",  "having",    "he",   "her",    "his",   "how",
    "i",     "if",    "in",     "instead", "into",  "is",        "isn",  "it",     "its",   "just",
    "like",  "ll",    "m",      "may",     "me",    "might",     "much", "must",   "my",    "need",
    "of",    "on",    "one",    "or",      "our",   "out",       "over", "please", "re",    "s",
    "shall", "she",   "should", "so",      "some",  "something", "such", "t",      "than",  "that",
    "the",   "their", "them",   "then",    "there", "these",     "they", "this",   "those", "to",
    "too",   "up",    "ve",     "very",    "want",  "was",       "way",  "we",     "were",  "what",
    "when",  "where", "which",  "while",   "who",   "whose",     "why",  "will",   "with",  "would",
    "you",   "your"};

bool isAscii(std::u16string_view text) {
    return std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; });
}

// Calls `visit` for each run of letters and digits.
template <typename Visit>
void forEachRunOfLetters(std::u16string_view text, Visit visit) {
    for (std::size_t at = 0; at < text.size();) {
        if (!fl::i18n::isLetterOrDigit(text[at])) {
            ++at;
            continue;
        }
        std::size_t end = at + 1;
        while (end < text.size() && fl::i18n::isLetterOrDigit(text[end]))
            ++end;
        visit(text.substr(at, end - at));
        // A letter or two after an apostrophe belong to the word before it.
        if (end < text.size() && (text[end] == u'\'' || text[end] == u'\u2019')) {
            std::size_t after = end + 1;
            while (after < text.size() && fl::i18n::isLetterOrDigit(text[after]))
                ++after;
            if (after - end <= 3)
                end = after;
        }
        at = end;
    }
}

}  // namespace

void Stemmer::Delete::operator()(sb_stemmer* stemmer) const noexcept {
    sb_stemmer_delete(stemmer);
}

Stemmer::Stemmer() : m_stemmer(sb_stemmer_new("english", "UTF_8")) {
    if (!m_stemmer)
        throw std::bad_alloc();
}

Stemmer::~Stemmer() = default;

std::string_view Stemmer::stem(std::string_view word) {
    // No word of a language is longer; the algorithm takes its length as an int.
    constexpr std::size_t longest = 64;
    if (word.size() > longest ||
        !std::ranges::all_of(word, [](char letter) { return letter >= 'a' && letter <= 'z'; }))
        return word;
    const auto* const stemmed =
        sb_stemmer_stem(m_stemmer.get(), reinterpret_cast<const sb_symbol*>(word.data()),
                        static_cast<int>(word.size()));
    if (stemmed == nullptr)
        throw std::bad_alloc();
    return {reinterpret_cast<const char*>(stemmed),
            static_cast<std::size_t>(sb_stemmer_length(m_stemmer.get()))};
}

void writeStems(const Lexicon& words, ImageWriter& writer, std::uint32_t firstSection) {
    Stemmer stemmer;
    LexiconBuilder stems;
    for (std::size_t word = 0; word < words.wordCount(); ++word)
        stems.addWord(stemmer.stem(words.word(word)), toOffset(word));
    stems.writeTo(writer, firstSection, FoundBy::Ends);
}

namespace {

// The first break iterator of a process makes ICU find out its default locale, which belongs to the
// program around. Where ICU lacks the memory for that, it waits for its own lock for ever; so it is
// asked while there is some. Throws std::bad_alloc.
void findOutDefaultLocale() {
    static foundation::core::Once once;
    once.call([] {
        constexpr std::size_t plenty = 64 << 10;
        ::operator delete(::operator new(plenty));
        static_cast<void>(icu::Locale::getDefault());
    });
}

}  // namespace

std::vector<std::string> wordsOf(std::u16string_view text) {
    std::vector<std::string> words;
    const auto add = [&](std::u16string_view run) { words.push_back(searchForm(run)); };
    if (isAscii(text)) {
        forEachRunOfLetters(text, add);
        return words;
    }
    findOutDefaultLocale();
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> breaks(
        icu::BreakIterator::createWordInstance(icu::Locale("root"), status));
    // The rules are part of ICU: they are missing only where there is no memory for them. Other
    // words would be wrong in an image from then on.
    if (U_FAILURE(status) != 0)
        throw std::bad_alloc();
    // An alias of the text, which is not copied.
    const icu::UnicodeString whole(false, text.data(), static_cast<std::int32_t>(text.size()));
    breaks->setText(whole);
    for (std::int32_t begin = breaks->first(), end = breaks->next();
         end != icu::BreakIterator::DONE; begin = end, end = breaks->next())
        forEachRunOfLetters(
            text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)),
            add);
    return words;
}

bool isStopWord(std::string_view word) noexcept {
    return std::binary_search(std::begin(stopWords), std::end(stopWords), word);
}

}  // namespace reference::docimage
