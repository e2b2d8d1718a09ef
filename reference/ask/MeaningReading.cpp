#include "reference/ask/MeaningReading.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <tuple>
#include <utility>

#include "docimage/componentForms.hpp"
#include "docimage/nameParts.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/searchedTexts.hpp"
#include "docimage/unitBytes.hpp"
#include "docparser/DocParserException.hpp"
#include "property/RefEntityType.hpp"
#include "reference/ask/keyLists.hpp"
#include "reference/ask/thesaurus.hpp"

namespace reference::ask {

using docimage::KeyFacts;
using docimage::Lexicon;
using docimage::typeBit;
using property::RefEntityType;
using search::JoinedPages;

namespace {

// What a word counts by where it stands, and what a name loses and gains. These numbers were chosen
// by trying: they are those with which most of the questions of bench/relevance/ that anybody may
// look at find what they ask for.
namespace share {

constexpr float last = 1.0F;
constexpr float purpose = 0.95F;
constexpr float synonym = 1.0F;
constexpr float outer = 0.8F;
constexpr float passage = 0.8F;
constexpr float text = 0.35F;
constexpr float textSynonym = 0.6F;  // of what the word itself would count there
constexpr float twice = 0.05F;       // more, for a word in name and purpose
constexpr float weak = 0.35F;        // of what another word as rare would count

constexpr float forRest = 0.05F;     // for each word of name and purpose that is not asked for
constexpr float forLength = 0.025F;  // each time that the text is twice as long
constexpr float forPrivate = 0.9F;
constexpr float forPackage = 0.6F;  // a package, where what is in it could be meant
constexpr float forOther = 0.6F;    // what cannot be called
constexpr float forMention = 0.1F;  // each time that the name is mentioned tenfold
// What has less than this of what the best has is noise.
constexpr float ofBest = 0.6F;
// What has less of the words, by their weight, is not likely to be meant.
constexpr float least = 0.4F;

}  // namespace share

// A word that so few names have is as rare as one that a single name has.
constexpr float rare = 28;
// Names and items that are looked at closely.
constexpr std::size_t mostLikely = 16;

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

// Stems of words that most questions could have, whatever they ask for: found, they count a little;
// missing, they do not matter.
constexpr std::string_view weakStems[] = {
    "allow",  "calcul",  "class",  "code",    "comput", "creat",  "exampl", "find", "function",
    "get",    "given",   "give",   "librari", "make",   "method", "modul",  "new",  "object",
    "packag", "perform", "return", "support", "take",   "use",    "valu",   "work"};

bool isWeakStem(std::string_view stem) {
    return std::ranges::find(weakStems, stem) != std::end(weakStems) ||
           std::ranges::all_of(stem, [](char unit) { return unit >= '0' && unit <= '9'; });
}

constexpr std::uint64_t bitOf(std::size_t number) noexcept {
    return std::uint64_t{1} << number;
}

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

}  // namespace

MeaningReading::MeaningReading(const search::Snapshot& snapshot,
                               const std::vector<std::string>& stems, std::uint32_t change,
                               Candidates& candidates)
    : m_snapshot(snapshot),
      m_index(*snapshot.index()),
      m_questions(m_index.questions()),
      m_change(change),
      m_candidates(candidates) {
    constexpr std::size_t mostStems = 64;
    for (const auto& stem : stems) {
        if (m_stems.size() == mostStems)
            break;
        Stem made{.text = stem, .isWeak = isWeakStem(stem), .parts = partsOf(stem)};
        const auto synonyms = synonymsOf(stem);
        made.synonyms.assign(synonyms.begin(), synonyms.end());
        for (const auto& synonym : made.synonyms)
            std::ranges::copy(partsOf(synonym), std::back_inserter(made.synonymParts));
        m_strongStems += made.isWeak ? 0 : 1;
        m_stems.push_back(std::move(made));
    }
}

std::vector<std::string_view> MeaningReading::partsOf(std::string_view stem) const {
    std::vector<std::string_view> parts;
    for (const std::uint32_t part : keysOf(m_questions.partStems(), stem))
        parts.push_back(m_questions.partWords()[part]);
    return parts;
}

// A key may be visited more than once.
void MeaningReading::forEachKeyWith(std::size_t number, Field field, const VisitKey& visit) const {
    const Stem& stem = m_stems[number];
    const auto visitAll = [&](const Lexicon& lexicon, std::string_view word) {
        lexicon.forEachWordWith({.letters = word, .isStart = true, .isEnd = true},
                                [&](std::uint32_t found) {
                                    lexicon.forEachTextWith(found, [&](std::uint32_t key) {
                                        if (key >= m_questions.keyCount())
                                            throw docimage::DamagedImage(
                                                "An image refers to a name that it does not have.");
                                        visit(key);
                                    });
                                });
    };
    switch (field) {
        case Field::Last:
            for (const auto part : stem.parts)
                visitAll(m_questions.lastParts(), part);
            break;
        case Field::Purpose:
            visitAll(m_questions.purposes(), stem.text);
            break;
        case Field::Synonym:
            for (const auto& synonym : stem.synonyms)
                visitAll(m_questions.purposes(), synonym);
            for (const auto part : stem.synonymParts)
                visitAll(m_questions.lastParts(), part);
            break;
        case Field::Outer:
            for (const auto part : stem.parts)
                visitAll(m_questions.outerParts(), part);
            break;
    }
}

MeaningReading::Keys MeaningReading::keysWith(std::size_t stem, bool isPurposeWanted) const {
    Keys keys;
    const auto add = [&keys](std::uint32_t key) { keys.push_back(key); };
    forEachKeyWith(stem, Field::Purpose, add);
    if (!isPurposeWanted) {
        forEachKeyWith(stem, Field::Last, add);
        forEachKeyWith(stem, Field::Outer, add);
    }
    std::ranges::sort(keys);
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    return keys;
}

// Where all are weak, all are required.
std::uint64_t MeaningReading::requiredStems() const {
    std::uint64_t required = 0;
    for (std::size_t at = 0; at < m_stems.size(); ++at)
        if (!m_stems[at].isWeak || m_strongStems == 0)
            required |= bitOf(at);
    return required;
}

// A rare word says more than a frequent one. How rare it is is counted in each product by itself,
// so that the order of a product's hits does not depend on what else is installed.
void MeaningReading::weigh() {
    if (!m_weights.empty())
        return;
    const auto& first = m_questions.firstKeys();
    const std::size_t products = m_index.products().size();
    m_weights.resize(products * m_stems.size());
    for (std::size_t stem = 0; stem < m_stems.size(); ++stem)
        for (const Field field : {Field::Last, Field::Purpose, Field::Outer}) {
            std::size_t product = 0;
            forEachKeyWith(stem, field, [&](std::uint32_t key) {
                // Keys ascend, but for each form of the word anew.
                if (key < first[product])
                    product = 0;
                while (key >= first[product + 1])
                    ++product;
                m_weights[product * m_stems.size() + stem] += 1;
            });
        }
    for (std::size_t product = 0; product < products; ++product) {
        const auto names = static_cast<float>(first[product + 1] - first[product]);
        for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
            float& weight = m_weights[product * m_stems.size() + stem];
            weight = std::log(1 + names / (rare + weight));
            if (m_stems[stem].isWeak)
                weight *= share::weak;
        }
    }
}

std::span<const float> MeaningReading::weightsIn(std::uint32_t product) const {
    return std::span(m_weights).subspan(product * m_stems.size(), m_stems.size());
}

// `keys` are in order.
std::vector<MeaningReading::Places> MeaningReading::placesOf(const Keys& keys) const {
    std::vector<Places> places(keys.size());
    for (std::size_t stem = 0; stem < m_stems.size(); ++stem)
        for (const Field field : fields) {
            std::uint64_t Places::*const member = field == Field::Last      ? &Places::last
                                                  : field == Field::Purpose ? &Places::purpose
                                                  : field == Field::Synonym ? &Places::synonym
                                                                            : &Places::outer;
            forEachKeyWith(stem, field, [&](std::uint32_t key) {
                const auto found = std::ranges::lower_bound(keys, key);
                if (found != keys.end() && *found == key)
                    places[static_cast<std::size_t>(found - keys.begin())].*member |= bitOf(stem);
            });
        }
    return places;
}

// How often the texts of the product mention the name: what everybody uses is mentioned often.
// Names with the same last component share its mentions.
float MeaningReading::prominenceOf(std::uint32_t key) const {
    const std::uint32_t product = m_candidates.productOf(key);
    const JoinedPages* const joined = pagesOf(product);
    if (joined == nullptr)
        return 0;
    const auto name = docimage::fromUnitBytes(docimage::lastComponent(m_candidates.textOf(key)));
    const Lexicon& words = joined->pages().words();
    std::size_t mentions = 0;
    const std::string form = docimage::searchForm(name);
    words.forEachWordWith({.letters = form, .isStart = true, .isEnd = true},
                          [&](std::uint32_t word) { mentions = words.weightOf(word); });
    const auto& first = m_questions.firstKeys();
    const auto bearers = keysOf(m_questions.lastNames(), docimage::joinedParts(name));
    const auto own = std::ranges::lower_bound(bearers, first[product + 1]) -
                     std::ranges::lower_bound(bearers, first[product]);
    return std::log10(1 + static_cast<float>(mentions) /
                              static_cast<float>(std::max<std::ptrdiff_t>(own, 1)));
}

float MeaningReading::nearnessOf(std::uint32_t key, const Places& places) const {
    const auto weights = weightsIn(m_candidates.productOf(key));
    constexpr float usualSize = 2000;
    const float length =
        1 + share::forLength * std::log2(1 + static_cast<float>(places.size) / usualSize);
    float all = 0;
    float found = 0;
    std::uint64_t bit = 1;
    for (const float weight : weights) {
        const auto has = [bit](std::uint64_t bits) { return (bits & bit) != 0; };
        const auto& [text, passage] = places.texts;
        float counts = 0;
        if (has(places.last))
            counts = share::last;
        else if (has(places.purpose))
            counts = share::purpose;
        else if (has(places.outer))
            counts = share::outer;
        else if (has(places.synonym))
            counts = share::synonym;
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
    // Who asks in words looks for what can be called more often than for a value or a term.
    constexpr std::uint32_t callable =
        typeBit(RefEntityType::Function) | typeBit(RefEntityType::Class) |
        typeBit(RefEntityType::Method) | typeBit(RefEntityType::Constructor) |
        typeBit(RefEntityType::Command);
    float nearness = found / all / (1 + share::forRest * rest);
    if ((facts.types & callable) == 0)
        nearness *=
            facts.types == typeBit(RefEntityType::Package) ? share::forPackage : share::forOther;
    return isPrivate(m_candidates.textOf(key)) ? nearness * share::forPrivate : nearness;
}

// The share of the words that a name has anywhere, by their weight.
float MeaningReading::shareOf(std::uint32_t key, const Places& places) const {
    const std::uint64_t any =
        places.last | places.outer | places.purpose | places.synonym | places.texts.all.any();
    const auto weights = weightsIn(m_candidates.productOf(key));
    float all = 0;
    float found = 0;
    for (std::size_t stem = 0; stem < weights.size(); ++stem) {
        all += weights[stem];
        found += (any >> stem & 1U) != 0 ? weights[stem] : 0;
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
    const std::uint64_t required = requiredStems();
    std::vector<Keys> lists;
    for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
        if ((required >> stem & 1U) == 0)
            continue;
        lists.push_back(keysWith(stem, isPurposeWanted));
        if (lists.back().empty())
            return;
    }
    if (lists.empty())
        return;
    std::ranges::sort(lists, {}, &Keys::size);
    Keys keys = lists.front();
    for (std::size_t at = 1; at < lists.size() && !keys.empty(); ++at)
        std::erase_if(keys, [&](std::uint32_t key) { return !holds(lists[at], key); });
    std::erase_if(keys, [this](std::uint32_t key) { return m_candidates.has(key); });
    if (keys.empty())
        return;
    weigh();
    const auto places = placesOf(keys);
    for (std::size_t at = 0; at < keys.size(); ++at)
        add(keys[at], Rung::Words, nearnessOf(keys[at], places[at]));
}

const JoinedPages* MeaningReading::pagesOf(std::uint32_t product) const {
    try {
        return m_snapshot.pagesOf(product);
    } catch (const docparser::DocParserException&) {
        return nullptr;  // the other products are still searched
    }
}

// The best by a score, in an order that does not depend on how they were found.
template <typename Scored>
void keepBest(std::vector<Scored>& scored, std::size_t count) {
    count = std::min(count, scored.size());
    std::ranges::partial_sort(
        scored, scored.begin() + static_cast<std::ptrdiff_t>(count), {},
        [](const Scored& one) { return std::tuple(-one.score, one.product, one.number); });
    scored.resize(count);
}

// Fields are gone through from the one that says most, so that the first mark of a word in a name
// is the one that counts.
std::vector<MeaningReading::Scored> MeaningReading::likelyNames() const {
    std::vector<float> scores(m_questions.keyCount());
    std::vector<std::uint8_t> marks(m_questions.keyCount());
    std::vector<std::uint32_t> found;
    const auto& first = m_questions.firstKeys();
    for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
        const auto mark = static_cast<std::uint8_t>(stem + 1);
        for (const Field field : fields) {
            const float counts = field == Field::Last      ? share::last
                                 : field == Field::Purpose ? share::purpose
                                 : field == Field::Synonym ? share::synonym
                                                           : share::outer;
            std::size_t product = 0;
            forEachKeyWith(stem, field, [&](std::uint32_t key) {
                if (marks[key] == mark)
                    return;
                if (key < first[product])
                    product = 0;
                while (key >= first[product + 1])
                    ++product;
                if (marks[key] == 0)
                    found.push_back(key);
                marks[key] = mark;
                scores[key] += m_weights[product * m_stems.size() + stem] * counts;
            });
        }
    }
    // What each product's words weigh together.
    std::vector<float> all(m_index.products().size());
    for (std::uint32_t product = 0; product < all.size(); ++product)
        for (const float weight : weightsIn(product))
            all[product] += weight;
    std::vector<Scored> names;
    names.reserve(found.size());
    for (const std::uint32_t key : found) {
        const std::uint32_t product = m_candidates.productOf(key);
        if (!m_candidates.has(key))
            names.push_back(
                {.score = scores[key] / all[product], .product = product, .number = key});
    }
    keepBest(names, mostLikely);
    return names;
}

std::vector<MeaningReading::Scored> MeaningReading::likelyItems() {
    constexpr float worthReading = 0.3F;
    std::vector<Scored> items;
    std::vector<float> scores;
    std::vector<std::uint8_t> marks;
    for (std::uint32_t product = 0; product < m_index.products().size(); ++product) {
        const JoinedPages* const joined = pagesOf(product);
        if (joined == nullptr)
            continue;
        const Lexicon& words = joined->pages().words();
        const Lexicon& stems = joined->pages().wordStems();
        scores.assign(joined->pages().itemCount(), 0);
        marks.assign(joined->pages().itemCount(), 0);
        const auto weights = weightsIn(product);
        float all = 0;
        for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
            const auto score = [&](const std::string& text, float weight) {
                for (const std::uint32_t word : keysOf(stems, text))
                    words.forEachTextWith(word, [&](std::uint32_t item) {
                        if (std::exchange(marks.at(item), static_cast<std::uint8_t>(stem + 1)) !=
                            stem + 1)
                            scores[item] += weight;
                    });
            };
            score(m_stems[stem].text, weights[stem]);
            for (const auto& synonym : m_stems[stem].synonyms)
                score(synonym, weights[stem] * share::textSynonym);
            all += weights[stem];
        }
        for (std::uint32_t item = 0; item < scores.size(); ++item)
            if (scores[item] > worthReading * all)
                items.push_back({.score = scores[item] / all, .product = product, .number = item});
    }
    keepBest(items, mostLikely);
    return items;
}

// The name by which an item is found; `none` where it has none.
std::uint32_t MeaningReading::keyOfItem(std::uint32_t product, std::uint32_t item) const {
    const auto& lookup = m_index.lookup(product);
    const property::RefItem data = pagesOf(product)->pages().item(item);
    for (const auto& entity : data.getRefEntities())
        if (const auto key = lookup.findKey(docimage::toUnitBytes(entity.getName())))
            return m_questions.firstKeys()[product] + *key;
    return none;
}

// The item that documents a name; `none` where it has none of its own, as a property of a class.
std::uint32_t MeaningReading::itemOfKey(std::uint32_t key) const {
    const std::uint32_t product = m_candidates.productOf(key);
    const JoinedPages* const joined = pagesOf(product);
    if (joined == nullptr)
        return none;
    const auto& lookup = m_index.lookup(product);
    const std::uint32_t number = key - m_questions.firstKeys()[product];
    const std::uint32_t page =
        joined->pageOfHref(lookup.record(lookup.recordsOfKey(number).first).href);
    if (page == JoinedPages::none)
        return none;
    const std::u16string name = docimage::fromUnitBytes(lookup.key(number));
    const auto [first, last] = joined->pages().itemsOfPage(page);
    for (std::uint32_t item = first; item < last; ++item) {
        const property::RefItem data = joined->pages().item(item);
        if (std::ranges::any_of(data.getRefEntities(),
                                [&](const auto& entity) { return entity.getName() == name; }))
            return item;
    }
    return none;
}

// `keys` are in order, so that each product is taken once.
void MeaningReading::readTexts(const Keys& keys, std::vector<Places>& places) const {
    std::uint32_t product = none;
    PassageFinder finder{{}};
    for (std::size_t at = 0; at < keys.size(); ++at) {
        const std::uint32_t item = itemOfKey(keys[at]);
        if (item == none)
            continue;
        const std::uint32_t owner = m_candidates.productOf(keys[at]);
        const search::ProductPages& pages = pagesOf(owner)->pages();
        if (owner != product) {
            product = owner;
            finder = PassageFinder(weightsIn(owner));
            const auto addWords = [&](const std::string& text, std::size_t stem, bool isSynonym) {
                for (const std::uint32_t word : keysOf(pages.wordStems(), text))
                    finder.addWord(pages.words().word(word), stem, isSynonym);
            };
            for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
                addWords(m_stems[stem].text, stem, false);
                for (const auto& synonym : m_stems[stem].synonyms)
                    addWords(synonym, stem, true);
            }
        }
        finder.clear();
        if (const docimage::PageImage* const image = pages.image())
            static_cast<void>(image->anySearchedText(
                item, [&](std::string_view text) { return finder.look(text); }));
        else
            docimage::anySearchedText(pages.item(item), [&](const std::u16string& text) {
                return finder.look(docimage::toUnitBytes(text));
            });
        places[at].texts = finder.found();
        places[at].size = pages.sizeOfItem(item);
    }
}

// The names that have most of the words by what the indexes say, and those of the items whose texts
// do, are looked at closely: words that are scattered over a long page say little together.
void MeaningReading::findTexts(bool alsoMostWords) {
    if (m_stems.empty())
        return;
    weigh();
    Keys keys;
    for (const Scored& name : likelyNames())
        keys.push_back(name.number);
    for (const Scored& item : likelyItems())
        if (const std::uint32_t key = keyOfItem(item.product, item.number);
            key != none && !m_candidates.has(key))
            keys.push_back(key);
    std::ranges::sort(keys);
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    auto places = placesOf(keys);
    readTexts(keys, places);

    const std::uint64_t required = requiredStems();
    std::vector<std::pair<float, std::uint32_t>> likely;
    for (std::size_t at = 0; at < keys.size(); ++at) {
        const float nearness =
            nearnessOf(keys[at], places[at]) * (1 + share::forMention * prominenceOf(keys[at]));
        if ((places[at].texts.passage.words & required) == required)
            add(keys[at], Rung::Text, nearness);
        else if (alsoMostWords && shareOf(keys[at], places[at]) >= share::least)
            likely.emplace_back(nearness, keys[at]);
    }
    if (likely.empty())
        return;
    const float best = std::ranges::max_element(likely)->first;
    for (const auto& [nearness, key] : likely)
        if (nearness >= best * share::ofBest)
            add(key, Rung::MostWords, nearness);
}

}  // namespace reference::ask
