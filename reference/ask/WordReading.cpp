#include "reference/ask/WordReading.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "docimage/nameParts.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"
#include "reference/ask/keyLists.hpp"
#include "reference/ask/nearWords.hpp"
#include "reference/ask/thesaurus.hpp"

namespace reference::ask {

using docimage::Lexicon;

namespace {

bool isNumber(std::string_view word) {
    return std::ranges::all_of(word, [](char unit) { return unit >= '0' && unit <= '9'; });
}

// In a sentence a word that no documentation has is more likely another word than a slip.
std::uint32_t slipsInSentence(std::size_t length) {
    constexpr std::size_t shortWord = 6;
    constexpr std::size_t longWord = 9;
    return length < shortWord ? 0 : length < longWord ? 1 : 2;
}

}  // namespace

WordReading::WordReading(const docimage::QuestionIndex& questions, std::span<const Term> terms,
                         Candidates& candidates)
    : m_questions(questions),
      m_candidates(candidates),
      m_isQualifiedName(terms.size() == 1 && terms.front().components.size() > 1) {
    for (const Term& term : terms)
        for (const auto& component : term.components)
            addWord(component);
    if (std::ranges::all_of(m_words, &Word::isStop))
        for (Word& word : m_words)
            word.isStop = false;
}

void WordReading::addWord(std::u16string_view component) {
    const auto parts = docimage::nameParts(component);
    Word word;
    word.text = component;
    for (const auto& part : parts) {
        word.form += part;
        word.stems.emplace_back(m_stemmer.stem(part));
    }
    const auto has = [&](const Lexicon& lexicon) {
        bool isThere = false;
        lexicon.forEachWordWith({.letters = word.form, .isStart = true, .isEnd = true},
                                [&](std::uint32_t /*number*/) { isThere = true; });
        return isThere;
    };
    if (word.form.empty())
        return;
    if (parts.size() > 1 && !has(m_questions.lastParts()) && !has(m_questions.outerParts())) {
        for (const auto& part : parts)
            add({.form = part,
                 .text = docimage::fromUnitBytes(part),
                 .stems = {std::string(m_stemmer.stem(part))}});
        return;
    }
    word.isStop = docimage::isStopWord(word.form);
    add(std::move(word));
}

// A phrase may have more words, and a component more parts, than a person types.
void WordReading::add(Word word) {
    if (m_words.size() < Question::maxTerms)
        m_words.push_back(std::move(word));
}

WordReading::WordKeys WordReading::keysOfWord(std::size_t number) const {
    const Word& word = m_words[number];
    WordKeys keys;
    if (!word.isStop) {
        keys.last = keysOf(m_questions.lastParts(), word.form);
        if (m_words.size() > 1)
            keys.outer = keysOf(m_questions.outerParts(), word.form);
    }
    const auto join = [&](std::size_t first) {
        const std::string form = m_words[first].form + m_words[first + 1].form;
        const Keys joined = keysOf(m_questions.lastParts(), form);
        if (joined.empty() && !word.isStop)
            return;
        unite(keys.joined, joined);
        keys.joinedLength = form.size();
        if (!word.isStop)
            unite(keys.outer, keysOf(m_questions.outerParts(), form));
    };
    if (number > 0)
        join(number - 1);
    if (number + 1 < m_words.size())
        join(number);
    unite(keys.last, keys.joined);
    return keys;
}

// Whether the words stand in the name in the order in which they were typed.
bool WordReading::standsInOrder(std::uint32_t key) const {
    std::string letters;
    for (const char byte : docimage::searchForm(docimage::fromUnitBytes(m_candidates.textOf(key))))
        if (docimage::isWordByte(byte) && byte != '_')
            letters += byte;
    std::size_t at = 0;
    for (const Word& word : m_words) {
        const std::size_t found = letters.find(word.form, at);
        if (found != std::string::npos)
            at = found + word.form.size();
        else if (!word.isStop)
            return false;
    }
    return true;
}

// Among the names that have all words, those are near of whose last component little is left over,
// that have the words in the last component, and in the order in which they were typed.
void WordReading::findParts() {
    constexpr std::size_t mostWords = 16;
    if (m_words.empty() || m_words.size() > mostWords)
        return;
    std::vector<WordKeys> lists;
    lists.reserve(m_words.size());
    for (std::size_t number = 0; number < m_words.size(); ++number) {
        lists.push_back(keysOfWord(number));
        if (lists.back().size() == 0 && !m_words[number].isStop)
            return;
    }
    const WordKeys* rarest = nullptr;
    for (std::size_t number = 0; number < m_words.size(); ++number)
        if (!m_words[number].isStop && (rarest == nullptr || lists[number].size() < rarest->size()))
            rarest = &lists[number];
    if (rarest == nullptr)
        return;
    Keys keys = rarest->last;
    unite(keys, rarest->outer);
    for (std::size_t number = 0; number < m_words.size(); ++number)
        if (const WordKeys& list = lists[number]; &list != rarest && !m_words[number].isStop)
            std::erase_if(keys, [&](std::uint32_t key) {
                return !holds(list.last, key) && !holds(list.outer, key);
            });
    for (const std::uint32_t key : keys) {
        if (m_candidates.has(key))
            continue;
        std::size_t covered = 0;
        std::uint32_t apart = 0;
        bool isInLast = false;
        for (std::size_t number = 0; number < m_words.size(); ++number) {
            const bool isJoined = holds(lists[number].joined, key);
            if (isJoined && m_words[number].isStop)
                covered += m_words[number].form.size();
            else if (m_words[number].isStop && !lists[number].joined.empty())
                apart += 4;
            if (m_words[number].isStop)
                continue;
            if (holds(lists[number].last, key)) {
                covered += m_words[number].form.size();
                isInLast = true;
            } else {
                ++apart;
            }
        }
        if (!isInLast)
            continue;
        const std::size_t length = m_questions.facts(key).lastLength;
        if (m_words.size() > 1 && !standsInOrder(key))
            apart += 2;
        const std::size_t left = length > covered ? length - covered : 0;
        m_candidates.add({.key = key,
                          .rung = Rung::Parts,
                          .distance = static_cast<std::uint32_t>(left) + apart,
                          .change = m_change});
    }
}

bool WordReading::isKnown(const Word& word) const {
    if (!keysOf(m_questions.lastParts(), word.form).empty() ||
        !keysOf(m_questions.outerParts(), word.form).empty())
        return true;
    return std::ranges::all_of(word.stems, [&](const std::string& stem) {
        return isNumber(stem) || !keysOf(m_questions.purposes(), stem).empty() ||
               !keysOf(m_questions.partStems(), stem).empty();
    });
}

// Of several words that are equally near, the one that occurs in most places.
bool WordReading::correctSpelling() {
    constexpr std::size_t fewWords = 3;
    const bool isSentence =
        std::ranges::count(m_words, false, &Word::isStop) > static_cast<std::ptrdiff_t>(fewWords);
    auto allStems = stems();
    allStems.resize(std::min(allStems.size(), mostMeant));
    std::uint64_t meant = 0;
    for (const Meaning& meaning : meaningsOf(allStems, m_stemmer))
        meant |= meaning.stems;
    const auto isMeant = [&](const std::string& stem) {
        const auto found = std::ranges::find(allStems, stem);
        return found != allStems.end() && (meant >> (found - allStems.begin()) & 1U) != 0;
    };
    constexpr std::size_t mostUnknown = 8;
    std::size_t unknown = 0;
    std::u16string change;
    for (Word& word : m_words) {
        if (word.isStop || isKnown(word) || std::ranges::all_of(word.stems, isMeant))
            continue;
        // Who types so many words that nothing has did not misspell them.
        if (++unknown > mostUnknown)
            break;
        std::uint32_t admitted =
            isSentence ? slipsInSentence(word.form.size()) : admittedSlips(word.form.size());
        // The package that it was looked for in did not have it.
        if (m_isQualifiedName)
            admitted = std::min(admitted, 1U);
        std::uint32_t fewest = admitted + 1;
        std::size_t heaviest = 0;
        std::string best;
        for (const Lexicon* const lexicon :
             {&m_questions.lastParts(), &m_questions.outerParts(), &m_questions.purposes()})
            for (const NearWord& near : nearWords(*lexicon, word.form, admitted)) {
                const std::size_t weight = lexicon->weightOf(near.word);
                if (near.slips > fewest || (near.slips == fewest && weight <= heaviest))
                    continue;
                fewest = near.slips;
                heaviest = weight;
                best = lexicon->word(near.word);
            }
        if (best.empty())
            continue;
        word.form = best;
        word.stems = {std::string(m_stemmer.stem(best))};
        change += (change.empty() ? u"spelling: " : u", ") + docimage::fromUnitBytes(best);
    }
    if (change.empty())
        return false;
    m_change = m_candidates.addChange(std::move(change));
    return true;
}

std::vector<std::string> WordReading::stems() const {
    std::vector<std::string> stems;
    for (const Word& word : m_words)
        for (const auto& stem : word.stems)
            if (!word.isStop && std::ranges::find(stems, stem) == stems.end())
                stems.push_back(stem);
    return stems;
}

}  // namespace reference::ask
