#include "sphinx/Sentence.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

constexpr std::array abbreviations = std::to_array<std::string_view>({
    "al",  "approx", "ca",   "cf", "dr",  "e.g",  "eg",   "eq",  "eqn", "eqs",   "fig", "figs",
    "i.e", "ie",     "incl", "mr", "mrs", "prof", "resp", "viz", "vs",  "w.r.t", "wrt",
});

// Before a number or a bracket these, too, are abbreviations ("No. 5", "Ref. [2]").
constexpr std::array numberAbbreviations = std::to_array<std::string_view>({
    "art",
    "ch",
    "chap",
    "line",
    "max",
    "min",
    "no",
    "nos",
    "p",
    "pp",
    "ref",
    "refs",
    "sec",
    "sect",
    "st",
    "ver",
    "vol",
});

// A single capital before one of these ends a sentence ("… of the matrix A. If …"); before any
// other word it is taken for an initial ("J. Smith").
constexpr std::array sentenceStarters = std::to_array<std::string_view>({
    "A",    "All",   "An",        "Any",    "As",      "At",   "Both",   "By",    "Each",
    "For",  "Here",  "If",        "In",     "It",      "Its",  "Must",   "No",    "Not",
    "Note", "Only",  "Otherwise", "Return", "Returns", "See",  "Should", "Since", "The",
    "Then", "There", "These",     "They",   "This",    "Thus", "To",     "Use",   "Used",
    "We",   "When",  "Where",     "Which",  "With",    "You",
});

bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
bool isLower(char c) {
    return c >= 'a' && c <= 'z';
}
template <std::size_t Count>
bool contains(const std::array<std::string_view, Count>& sorted, std::string_view word) {
    return std::ranges::binary_search(sorted, word);
}

// The word that ends at `end`, without opening brackets and quotes.
std::string_view wordBefore(std::string_view text, std::size_t end) {
    const std::size_t space = text.find_last_of(" (", end == 0 ? 0 : end - 1);
    const std::size_t begin = space == std::string_view::npos ? 0 : space + 1;
    std::string_view word = begin < end ? text.substr(begin, end - begin) : std::string_view();
    while (!word.empty() && std::string_view("([{\"'").find(word.front()) != std::string_view::npos)
        word.remove_prefix(1);
    return word;
}

std::string_view wordAt(std::string_view text, std::size_t begin) {
    return text.substr(begin, text.find_first_of(" ,.;:", begin) - begin);
}

bool isAbbreviation(std::string_view text, std::size_t period, std::size_t next) {
    const std::string_view word = wordBefore(text, period);
    const std::string lower = lowered(word);
    if (contains(abbreviations, lower))
        return true;
    const bool isNumber = isDigit(text[next]) || text[next] == '(' || text[next] == '[';
    if (isNumber && contains(numberAbbreviations, lower))
        return true;
    // "1. First …" at the very beginning numbers an item.
    if (word.size() == period && std::ranges::all_of(word, isDigit))
        return true;
    return word.size() == 1 && isUpper(word.front()) &&
           !contains(sentenceStarters, wordAt(text, next));
}

// Whether a sentence may begin at `at`: with a capital, a digit, a quote, a bracket, code, or with
// a letter outside ASCII. It cannot begin with a lower-case letter.
bool mayBegin(const InlineText& paragraph, std::size_t at) {
    const char c = paragraph.text()[at];
    if (!isLower(c) && c != ',' && c != ';' && c != ':' && c != '-')
        return true;
    const auto code = std::ranges::lower_bound(paragraph.code(), at, {}, &InlineText::Range::begin);
    return code != paragraph.code().end() && code->begin == at;
}

// The closing quotes and brackets after the mark at `at` still belong to the sentence.
std::size_t pastClosers(std::string_view text, std::size_t at) {
    for (;;) {
        if (at < text.size() && (text[at] == ')' || text[at] == '"' || text[at] == '\''))
            ++at;
        else if (text.substr(at).starts_with("\u201D") || text.substr(at).starts_with("\u2019"))
            at += 3;
        else
            return at;
    }
}

// Marks of scripts that put no space between sentences.
std::size_t fullWidthMark(std::string_view rest) {
    for (const std::string_view mark : {"\u3002", "\uFF01", "\uFF1F"})
        if (rest.starts_with(mark))
            return mark.size();
    return 0;
}

// How much deeper in round brackets the text is after the byte at `at`. A bracket that is never
// closed, because none closes after `lastCloser`, does not count.
int bracketChange(std::string_view text, std::size_t at, int depth, std::size_t lastCloser) {
    if (text[at] == '(')
        return lastCloser != std::string_view::npos && at < lastCloser ? 1 : 0;
    return text[at] == ')' && depth > 0 ? -1 : 0;
}

// Where the sentence that begins at `begin` ends. A sentence ends at ".", "!" or "?" where
//   1. the mark stands neither in code or a formula nor within round brackets,
//   2. white space follows, after closing quotes and brackets, or the paragraph ends,
//   3. what comes then may begin a sentence, and
//   4. a period is not that of an abbreviation, an initial or a free-standing ellipsis;
// and at a full-width mark outside code and brackets, whatever follows.
// `lastCloser`: where the text's last ")" stands.
std::size_t sentenceEnd(const InlineText& paragraph, std::size_t begin, std::size_t lastCloser) {
    const std::string_view text = paragraph.text();
    auto code = std::ranges::upper_bound(paragraph.code(), begin, {}, &InlineText::Range::end);
    int depth = 0;
    for (std::size_t at = begin; at < text.size(); ++at) {
        while (code != paragraph.code().end() && code->end <= at)
            ++code;
        if (code != paragraph.code().end() && code->begin <= at) {
            at = code->end - 1;
            continue;
        }
        depth += bracketChange(text, at, depth, lastCloser);
        if (depth > 0)
            continue;
        if (const std::size_t mark = fullWidthMark(text.substr(at)))
            return at + mark;
        const char c = text[at];
        if (c != '.' && c != '!' && c != '?')
            continue;
        const std::size_t end = pastClosers(text, at + 1);
        if (end == text.size())
            return end;
        if (text[end] != ' ' || end + 1 == text.size() || !mayBegin(paragraph, end + 1))
            continue;
        const bool isFreeEllipsis = c == '.' && at >= 3 && text.substr(at - 3, 4) == " ...";
        if (isFreeEllipsis || (c == '.' && isAbbreviation(text, at, end + 1)))
            continue;
        return end;
    }
    return text.size();
}

}  // namespace

std::size_t firstSentenceLength(const InlineText& paragraph) {
    return sentenceEnd(paragraph, 0, paragraph.text().rfind(')'));
}

std::size_t lastSentenceBegin(const InlineText& paragraph) {
    const std::string_view text = paragraph.text();
    const std::size_t lastCloser = text.rfind(')');
    std::size_t begin = 0;
    for (;;) {
        std::size_t next = sentenceEnd(paragraph, begin, lastCloser);
        while (next < text.size() && text[next] == ' ')
            ++next;
        if (next >= text.size())
            return begin;
        begin = next;
    }
}

}  // namespace reference::importers::sphinx
