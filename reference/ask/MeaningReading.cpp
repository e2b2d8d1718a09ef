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

// A component that begins with one underscore is not for others to use.
bool isPrivate(std::string_view name) noexcept {
    for (std::size_t at = name.find('_'); at != std::string_view::npos;
         at = name.find('_', at + 1)) {
        const bool isFirst = at == 0 || name[at - 1] == '.';
        if (isFirst && at + 1 < name.size() && name[at + 1] != '_')
            return true;
    }
    return false;
}

// Who asks in words looks for what can be called more often than for a value or a term.
constexpr std::uint32_t callable = typeBit(RefEntityType::Function) |
                                   typeBit(RefEntityType::Class) | typeBit(RefEntityType::Method) |
                                   typeBit(RefEntityType::Constructor) |
                                   typeBit(RefEntityType::Command);

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
    if (has(places.outer))
        return share::outer;
    if (has(places.synonym))
        return share::synonym;
    if (has(places.compound))
        return share::compound;
    constexpr float usualSize = 2000;
    const float length =
        1 + share::forLength * std::log2(1 + static_cast<float>(texts.size) / usualSize);
    if (has(texts.passage.words))
        return share::passage / length;
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

// The names that have most of the words by what the indexes say, and the items whose texts do, are
// looked at closely: words that are scattered over a long page say little together. The best that a
// name can be is known from the index: all words of its texts may stand together. Those that can be
// best are read first, and what cannot come near the best is not read at all.
void MeaningReading::findTexts(bool alsoMostWords) {
    if (m_stems.stems().empty())
        return;
    constexpr FieldShares shares{share::last, share::purpose, share::synonym, share::compound,
                                 share::outer};
    std::vector<std::uint32_t> names;
    for (const auto& name : m_stems.likeliest(share::mostLikely, shares, [this](std::uint32_t key) {
             return m_candidates.has(key);
         }))
        names.push_back(name.key);
    std::ranges::sort(names);

    struct Likely {
        ItemTexts::Entry entry;
        StemKeys::Places places;
        float nearness;
    };
    std::vector<Likely> likely;
    for (auto& entry : m_texts.entriesOf(names, share::mostLikely)) {
        if (m_candidates.has(entry.key))
            continue;
        const auto places = m_stems.placesOf(entry.key);
        const Texts texts{.all = entry.words, .passage = entry.words, .size = entry.size};
        likely.push_back(
            {.entry = entry, .places = places, .nearness = nearnessOf(entry.key, places, texts)});
    }
    std::ranges::stable_sort(likely, std::greater(), &Likely::nearness);
    float best = 0;
    std::size_t read = 0;
    for (Likely& one : likely) {
        if (one.nearness < best * share::ofBest)
            break;  // nor can those after it come near
        Texts texts{.all = one.entry.words, .passage = {}, .size = one.entry.size};
        if ((one.entry.words.any() & ~one.places.any()) != 0) {
            if (read++ < share::mostRead)
                texts.passage = m_texts.passageOf(one.entry);
            one.nearness = nearnessOf(one.entry.key, one.places, texts);
        }
        best = std::max(best, one.nearness);
    }
    for (const Likely& one : likely) {
        const std::uint32_t key = one.entry.key;
        const StemKeys::Places& places = one.places;
        const std::uint64_t said =
            places.last | places.purpose | places.outer | one.entry.words.words;
        const bool isAll = (said & m_stems.required()) == m_stems.required();
        if (isAll && (!alsoMostWords || one.nearness >= best * share::asText))
            add(key, Rung::Text, one.nearness);
        else if (alsoMostWords && one.nearness >= best * share::ofBest &&
                 shareOf(key, places.any() | one.entry.words.any()) >= share::least)
            add(key, Rung::MostWords, one.nearness);
    }
}

}  // namespace reference::ask
