#include "reference/ask/thesaurus.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "docimage/searchForm.hpp"
#include "foundation/core/NeverDestroyed.hpp"
#include "reference/ask/thesaurusTexts.hpp"

namespace reference::ask {
namespace {

// Calls `visit(line)` for each line that is not empty.
template <typename Visit>
void forEachLine(std::string_view text, Visit visit) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (end > 0)
            visit(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::string_view firstWord(std::string_view text) {
    return text.substr(0, text.find(' '));
}

struct Line {
    std::string_view asked;  // a word or several
    std::string_view said;
};

// By what is asked. Words are not reduced to stems before a question has words that begin like
// them: few do, and a process may ask one question.
using Thesaurus = std::vector<Line>;

Thesaurus readLines() {
    Thesaurus thesaurus;
    for (const std::string_view text : thesaurusTexts())
        forEachLine(text, [&](std::string_view line) {
            const std::size_t colon = line.find(':');
            if (colon == std::string_view::npos)
                docimage::forEachWord(line, [&](std::string_view word) {
                    thesaurus.push_back({.asked = word, .said = line});
                });
            else
                thesaurus.push_back(
                    {.asked = line.substr(0, colon), .said = line.substr(colon + 1)});
        });
    std::ranges::stable_sort(thesaurus, {}, &Line::asked);
    return thesaurus;
}

// The lines whose first word may have the stem: stemming changes the end of a word.
std::span<const Line> linesNear(const Thesaurus& thesaurus, std::string_view stem) {
    constexpr std::size_t mostKept = 3;
    const std::string_view kept =
        stem.substr(0, std::min(mostKept, std::max<std::size_t>(stem.size(), 2) - 1));
    const auto beginning = [&kept](const Line& line) { return line.asked.substr(0, kept.size()); };
    return {std::ranges::lower_bound(thesaurus, kept, {}, beginning),
            std::ranges::upper_bound(thesaurus, kept, {}, beginning)};
}

// The bits of the words of a phrase, if the stems have all of them.
std::optional<std::uint64_t> bitsOf(std::string_view phrase, std::span<const std::string> stems,
                                    docimage::Stemmer& stemmer) {
    std::uint64_t bits = 0;
    bool hasAll = true;
    docimage::forEachWord(phrase, [&](std::string_view word) {
        const auto found = std::ranges::find(stems, stemmer.stem(word));
        hasAll = hasAll && found != stems.end();
        if (hasAll)
            bits |= std::uint64_t{1} << static_cast<std::size_t>(found - stems.begin());
    });
    return hasAll ? std::optional(bits) : std::nullopt;
}

}  // namespace

std::vector<Meaning> meaningsOf(std::span<const std::string> stems, docimage::Stemmer& stemmer) {
    static const foundation::core::NeverDestroyed<Thesaurus> thesaurus{readLines()};
    std::vector<Meaning> meanings;
    for (const std::string& stem : stems) {
        std::string_view last;
        bool hasStem = false;
        for (const Line& line : linesNear(*thesaurus, stem)) {
            if (firstWord(line.asked) != last) {
                last = firstWord(line.asked);
                hasStem = stemmer.stem(last) == stem;
            }
            if (!hasStem)
                continue;
            if (const auto bits = bitsOf(line.asked, stems, stemmer))
                meanings.push_back({.stems = *bits, .said = line.said});
        }
    }
    return meanings;
}

}  // namespace reference::ask
