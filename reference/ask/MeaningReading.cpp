#include "reference/ask/MeaningReading.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <string_view>
#include <utility>

#include "property/RefEntityType.hpp"
#include "reference/ask/shares.hpp"

namespace reference::ask {

using docimage::KeyFacts;
using docimage::typeBit;
using property::RefEntityType;

namespace {

// A component that begins with an underscore is not for others to use, unless two of them stand at
// its beginning and at its end.
bool isPrivate(std::string_view name) noexcept {
    for (std::size_t at = name.find('_'); at != std::string_view::npos;
         at = name.find('_', at + 1)) {
        if (at > 0 && name[at - 1] != '.')
            continue;
        const std::string_view component = name.substr(at, name.find('.', at) - at);
        if (!component.starts_with("__") || !component.ends_with("__"))
            return true;
    }
    return false;
}

}  // namespace

MeaningReading::MeaningReading(const search::Snapshot& snapshot,
                               const std::vector<std::string>& stems, std::uint32_t change,
                               Candidates& candidates)
    : m_index(*snapshot.index()),
      m_questions(m_index.questions()),
      m_change(change),
      m_candidates(candidates),
      m_stems(m_index, stems),
      m_texts(snapshot, m_stems) {}

// A word that stands in several places counts by the one that says most. A long text says less of
// each of its words.
float MeaningReading::countOf(std::uint64_t stem, const StemKeys::Places& places,
                              const Texts& texts) {
    const auto has = [stem](std::uint64_t stems) { return (stems & stem) != 0; };
    const float twice = has(places.last & places.purpose) ? share::twice : 0;
    if (has(places.last))
        return share::last + twice;
    if (has(places.purpose))
        return share::purpose;
    if (has(places.phrase))
        return share::phrase;
    if (has(places.synonym))
        return share::synonym;
    if (has(places.compound))
        return share::compound;
    constexpr float usualSize = 2000;
    const float length =
        1 + share::forLength * std::log2(1 + static_cast<float>(texts.size) / usualSize);
    if (has(texts.passage.words))
        return std::max(share::passage / length, has(places.outer) ? share::outer : 0);
    if (has(places.outer))
        return share::outer;
    if (has(texts.passage.synonyms))
        return share::passage * share::textSynonym / length;
    if (has(texts.all.words))
        return share::text / length;
    return has(texts.all.synonyms) ? share::text * share::textSynonym / length : 0;
}

// What a name keeps, whatever is asked: who asks in words looks for what everybody uses, and for
// what can be called more often than for a value or a term.
float MeaningReading::likelihoodOf(std::uint32_t key) const {
    constexpr std::uint32_t callable =
        typeBit(RefEntityType::Function) | typeBit(RefEntityType::Class) |
        typeBit(RefEntityType::Method) | typeBit(RefEntityType::Constructor) |
        typeBit(RefEntityType::Command);
    const KeyFacts& facts = m_questions.facts(key);
    float likelihood =
        1 /
        (1 + share::forDepth * std::max(static_cast<float>(facts.depth) - share::usualDepth, 0.0F));
    likelihood *=
        1 + share::mention * std::log2(1 + std::min(static_cast<float>(m_texts.mentionsOf(key)),
                                                    share::mostMentions));
    if ((facts.types & typeBit(RefEntityType::Class)) != 0)
        likelihood *= share::forClass;
    if ((facts.types & callable) == 0)
        likelihood *=
            facts.types == typeBit(RefEntityType::Package) ? share::forPackage : share::forOther;
    return isPrivate(m_candidates.textOf(key)) ? likelihood * share::forPrivate : likelihood;
}

float MeaningReading::nearnessOf(std::uint32_t key, const StemKeys::Places& places,
                                 const Texts& texts) {
    float all = 0;
    float found = 0;
    std::uint64_t stem = 1;
    for (const float weight : m_stems.weightsIn(m_candidates.productOf(key))) {
        all += weight;
        found += weight * countOf(stem, places, texts);
        stem <<= 1U;
    }
    if (all == 0)
        return 0;
    const KeyFacts& facts = m_questions.facts(key);
    const auto left = [](std::uint8_t size, std::uint64_t covered) {
        return static_cast<float>(std::max(int{size} - std::popcount(covered), 0));
    };
    const float rest = share::forNameRest * left(facts.lastParts, places.last) +
                       share::forPurposeRest *
                           std::min(left(facts.purposeWords, places.purpose), share::longPurpose);
    return std::pow(found / all, share::forMissing) / (1 + rest) * likelihoodOf(key);
}

// The share of the words, by their weight.
float MeaningReading::shareOf(std::uint32_t key, std::uint64_t words) {
    float all = 0;
    float found = 0;
    for (const float weight : m_stems.weightsIn(m_candidates.productOf(key))) {
        all += weight;
        found += (words & 1U) != 0 ? weight : 0;
        words >>= 1U;
    }
    return all > 0 ? found / all : 0;
}

void MeaningReading::add(std::uint32_t key, Rung rung, float nearness) {
    constexpr float perUnit = 10000;
    constexpr float nearest = 3;
    m_candidates.add({.key = key,
                      .rung = rung,
                      .distance = static_cast<std::uint32_t>(
                          std::lround(std::max(0.0F, nearest - nearness) * perUnit)),
                      .change = m_change});
}

void MeaningReading::findWords(bool isPurposeWanted) {
    for (const std::uint32_t key : m_stems.keysWithAll(isPurposeWanted))
        if (!m_candidates.has(key))
            add(key, Rung::Words, nearnessOf(key, m_stems.placesOf(key), {}));
}

// The names that have most of the words by what the indexes say, and the items whose texts do, by
// the best that each can be: all words of its texts may stand together.
std::vector<MeaningReading::Likely> MeaningReading::likelyEntries() {
    constexpr FieldShares shares{share::last,    share::purpose,  share::phrase,
                                 share::synonym, share::compound, share::outer};
    std::vector<std::uint32_t> names;
    for (const auto& name : m_stems.likeliest(share::mostLikely, shares, [this](std::uint32_t key) {
             return m_candidates.has(key);
         }))
        names.push_back(name.key);
    std::ranges::sort(names);
    std::vector<Likely> likely;
    for (const auto& entry : m_texts.entriesOf(names, share::mostLikely)) {
        if (m_candidates.has(entry.key))
            continue;
        Likely one{.entry = entry, .places = m_stems.placesOf(entry.key)};
        one.nearness = nearnessOf(entry.key, one.places,
                                  {.all = entry.words, .passage = entry.words, .size = entry.size});
        likely.push_back(one);
    }
    std::ranges::stable_sort(likely, std::greater(), &Likely::nearness);
    return likely;
}

// Those that can be best are read first. What cannot come near the best, and what the index has
// told all about, is not read at all.
void MeaningReading::readFirst(std::vector<Likely>& likely) {
    float best = 0;
    std::size_t read = 0;
    for (Likely& one : likely) {
        if (one.nearness < best * share::ofBest)
            return;  // nor can those after it
        if ((one.entry.words.any() & ~one.places.any()) != 0) {
            // Without its passage its place would be too low, and how many are read before it
            // depends on other products. It is left out.
            if (read++ >= share::mostRead) {
                one.nearness = 0;
                continue;
            }
            one.passage = m_texts.passageOf(one.entry);
            one.nearness = nearnessOf(
                one.entry.key, one.places,
                {.all = one.entry.words, .passage = one.passage, .size = one.entry.size});
        }
        best = std::max(best, one.nearness);
    }
}

void MeaningReading::findInTexts() {
    if (m_stems.stems().empty())
        return;
    for (const Likely& one : likelyEntries()) {
        const WordBits passage = m_texts.passageOf(one.entry);
        if ((passage.words & m_stems.required()) == m_stems.required())
            add(one.entry.key, Rung::Text,
                nearnessOf(one.entry.key, one.places,
                           {.all = one.entry.words, .passage = passage, .size = one.entry.size}));
    }
}

void MeaningReading::findMostWords() {
    if (m_stems.stems().empty())
        return;
    auto likely = likelyEntries();
    if (likely.empty())
        return;
    readFirst(likely);
    const float best = std::ranges::max_element(likely, {}, &Likely::nearness)->nearness;
    for (const auto& [entry, places, nearness, passage] : likely) {
        if (nearness < best * share::ofBest ||
            shareOf(entry.key, places.any() | entry.words.any()) < share::least)
            continue;
        const std::uint64_t words = places.last | places.purpose | places.outer | passage.words;
        const bool isAll = (words & m_stems.required()) == m_stems.required();
        add(entry.key, isAll && nearness >= best * share::asText ? Rung::Text : Rung::MostWords,
            nearness);
    }
}

}  // namespace reference::ask
