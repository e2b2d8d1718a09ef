#include "reference/ask/MeaningReading.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string_view>
#include <utility>

#include "property/RefEntityType.hpp"
#include "reference/ask/shares.hpp"

namespace reference::ask {

using docimage::KeyFacts;
using docimage::typeBit;
using property::RefEntityType;

namespace {

// Names and items that are looked at closely.
const std::size_t mostLikely = static_cast<std::size_t>(share::pool);

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
      m_stems(m_index, stems, share::weak),
      m_texts(snapshot, m_stems) {}

float MeaningReading::nearnessOf(std::uint32_t key, const StemKeys::Places& places,
                                 const ItemTexts::Said& said) {
    constexpr float usualSize = 2000;
    const float length =
        1 + share::forLength * std::log2(1 + static_cast<float>(said.size) / usualSize);
    const auto& [text, passage] = said.texts;
    float all = 0;
    float found = 0;
    std::uint64_t bit = 1;
    for (const float weight : m_stems.weightsIn(m_candidates.productOf(key))) {
        const auto has = [bit](std::uint64_t bits) { return (bits & bit) != 0; };
        float counts = 0;
        if (has(places.last))
            counts = share::last;
        else if (has(places.purpose))
            counts = share::purpose;
        else if (has(places.outer))
            counts = share::outer;
        else if (has(places.synonym))
            counts = share::synonym;
        else if (has(places.compound))
            counts = share::compound;
        else if (has(passage.words))
            counts = share::passage / length;
        else if (has(passage.synonyms))
            counts = share::passage * share::textSynonym / length;
        else if (has(text.words))
            counts = share::text / length;
        else if (has(text.synonyms))
            counts = share::text * share::textSynonym / length;
        if (has(places.last & places.purpose))
            counts += share::twice;
        all += weight;
        found += weight * counts;
        bit <<= 1U;
    }
    if (all == 0)
        return 0;

    const KeyFacts& facts = m_questions.facts(key);
    const auto left = [](std::uint8_t size, std::uint64_t covered) {
        return static_cast<float>(std::max(int{size} - std::popcount(covered), 0));
    };
    constexpr float longPurpose = 12;
    const float rest = left(facts.lastParts, places.last) +
                       std::min(left(facts.purposeWords, places.purpose), longPurpose) / 2;
    float nearness = found / all / (1 + share::forRest * rest);
    if ((facts.types & callable) == 0)
        nearness *=
            facts.types == typeBit(RefEntityType::Package) ? share::forPackage : share::forOther;
    return isPrivate(m_candidates.textOf(key)) ? nearness * share::forPrivate : nearness;
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

// The names that have most of the words by what the indexes say, and those of the items whose texts
// do, are looked at closely: words that are scattered over a long page say little together.
void MeaningReading::findTexts(bool alsoMostWords) {
    if (m_stems.stems().empty())
        return;
    const FieldShares shares{share::last, share::purpose, share::synonym, share::compound,
                             share::outer};
    const auto isFound = [this](std::uint32_t key) { return m_candidates.has(key); };
    std::vector<std::uint32_t> keys;
    for (const auto& name : m_stems.likeliest(mostLikely, shares, isFound))
        keys.push_back(name.key);
    for (const std::uint32_t key : m_texts.likeliestKeys(mostLikely))
        if (!isFound(key))
            keys.push_back(key);
    // In order, so that each product is read once.
    std::ranges::sort(keys);
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());

    std::vector<std::pair<float, std::uint32_t>> likely;
    for (const std::uint32_t key : keys) {
        const auto places = m_stems.placesOf(key);
        const auto said = m_texts.read(key);
        const float nearness =
            nearnessOf(key, places, said) * (1 + share::forMention * m_texts.prominenceOf(key));
        if ((said.texts.passage.words & m_stems.required()) == m_stems.required())
            add(key, Rung::Text, nearness);
        else if (alsoMostWords && shareOf(key, places.any() | said.texts.all.any()) >= share::least)
            likely.emplace_back(nearness, key);
    }
    if (likely.empty())
        return;
    const float best = std::ranges::max_element(likely)->first;
    for (const auto& [nearness, key] : likely)
        if (nearness >= best * share::ofBest)
            add(key, Rung::MostWords, nearness);
}

}  // namespace reference::ask
