#include "reference/search/JoinedLexicon.hpp"

#include <algorithm>
#include <utility>

namespace reference::search {

using docimage::Lexicon;

JoinedLexicon::~JoinedLexicon() {
    delete m_joined.load(std::memory_order_relaxed);
}

std::vector<JoinedLexicon::Found> JoinedLexicon::wordsOf(const TextQuery& query, std::size_t count,
                                                         const LexiconOf& lexiconOf) const {
    if (const Joined* const all = joined(count, lexiconOf))
        return wordsOf(query, *all, lexiconOf);
    std::vector<Found> found;
    for (std::uint32_t number = 0; number < count; ++number)
        if (auto words = query.wordsOf(lexiconOf(number)); !words.empty())
            found.push_back({.lexicon = number, .words = std::move(words)});
    return found;
}

// The words of each part lexicon by lexicon, and then what is there for all parts.
std::vector<JoinedLexicon::Found> JoinedLexicon::wordsOf(const TextQuery& query,
                                                         const Joined& joined,
                                                         const LexiconOf& lexiconOf) {
    std::vector<Found> found;
    std::vector<std::uint32_t> numbers;
    for (std::size_t part = 0; part < query.partCount(); ++part) {
        numbers.clear();
        joined.lexicon.forEachWordWith(query.part(part), [&](std::uint32_t word) {
            joined.lexicon.forEachTextWith(
                word, [&](std::uint32_t number) { numbers.push_back(number); });
        });
        std::ranges::sort(numbers);

        std::vector<Found> withPart;
        auto before = found.begin();
        auto next = numbers.begin();
        while (next != numbers.end()) {
            const auto after = std::ranges::upper_bound(joined.firstWords, *next);
            const auto lexicon = static_cast<std::uint32_t>(after - joined.firstWords.begin()) - 1;
            TextQuery::PartWords words;
            for (; next != numbers.end() && (after == joined.firstWords.end() || *next < *after);
                 ++next) {
                words.words.push_back(*next - joined.firstWords[lexicon]);
                words.weight += lexiconOf(lexicon).weightOf(words.words.back());
            }
            while (before != found.end() && before->lexicon < lexicon)
                ++before;
            if (part > 0 && (before == found.end() || before->lexicon != lexicon))
                continue;
            Found& one = withPart.emplace_back();
            one.lexicon = lexicon;
            if (part > 0)
                one.words = std::move(before->words);
            one.words.push_back(std::move(words));
        }
        found = std::move(withPart);
    }
    return found;
}

// Null while there is none. Counts the question.
const JoinedLexicon::Joined* JoinedLexicon::joined(std::size_t count,
                                                   const LexiconOf& lexiconOf) const {
    const Joined* const known = m_joined.load(std::memory_order_acquire);
    if (known != nullptr || count < 2)
        return known;
    // A lexicon is asked in about the time in which a few of its words are joined.
    constexpr std::size_t wordsJoinedMeanwhile = 4;
    const std::size_t asked =
        count * wordsJoinedMeanwhile * (1 + m_questions.fetch_add(1, std::memory_order_relaxed));
    std::size_t words = 0;
    for (std::uint32_t number = 0; number < count; ++number)
        words += lexiconOf(number).wordCount();
    if (asked < words || words > UINT32_MAX || m_isBeingMade.test_and_set())
        return nullptr;
    // One thread makes it, once; the others go on asking each lexicon, as all do if it fails.
    try {
        m_joined.store(join(count, lexiconOf).release(), std::memory_order_release);
    } catch (...) {
        return nullptr;
    }
    return m_joined.load(std::memory_order_relaxed);
}

std::unique_ptr<const JoinedLexicon::Joined> JoinedLexicon::join(std::size_t count,
                                                                 const LexiconOf& lexiconOf) {
    docimage::LexiconBuilder builder;
    auto made = std::make_unique<Joined>();
    std::uint32_t next = 0;
    for (std::uint32_t number = 0; number < count; ++number) {
        const Lexicon& lexicon = lexiconOf(number);
        made->firstWords.push_back(next);
        for (std::size_t word = 0; word < lexicon.wordCount(); ++word)
            builder.addWord(lexicon.word(word), next++);
    }
    docimage::ImageWriter writer;
    constexpr std::uint32_t firstSection = 0;
    builder.writeTo(writer, firstSection);
    made->image = writer.finish();
    made->lexicon = Lexicon(*made->image, firstSection);
    return made;
}

}  // namespace reference::search
