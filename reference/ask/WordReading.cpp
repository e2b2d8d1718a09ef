#include "reference/ask/WordReading.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

#include "docimage/nameParts.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/searchedTexts.hpp"
#include "docimage/unitBytes.hpp"
#include "docparser/DocParserException.hpp"
#include "reference/ask/nearWords.hpp"
#include "reference/ask/thesaurus.hpp"

namespace reference::ask {

using docimage::KeyFacts;
using docimage::Lexicon;
using property::RefEntityType;
using search::JoinedPages;
using search::LookupIndex;

namespace {

// Stems of words that most questions could have, whatever they ask for: found, they count a little;
// missing, they do not matter. Sorted.
constexpr std::string_view weakStems[] = {
    "allow",  "calcul",  "class",  "code",    "comput", "creat",  "exampl", "find", "function",
    "get",    "given",   "give",   "librari", "make",   "method", "modul",  "new",  "object",
    "packag", "perform", "return", "support", "take",   "use",    "valu",   "work"};

constexpr std::uint32_t noKey = std::numeric_limits<std::uint32_t>::max();
constexpr float weakShare = 0.25F;

bool isWeakStem(std::string_view stem) {
    return std::ranges::find(weakStems, stem) != std::end(weakStems);
}

bool isNumber(std::string_view word) {
    return std::ranges::all_of(word, [](char unit) { return unit >= '0' && unit <= '9'; });
}

// In a sentence a word that no documentation has is more likely another word than a slip.
std::uint32_t slipsInSentence(std::size_t length) {
    constexpr std::size_t shortWord = 6;
    constexpr std::size_t longWord = 9;
    return length < shortWord ? 0 : length < longWord ? 1 : 2;
}

bool holds(const std::vector<std::uint32_t>& sorted, std::uint32_t number) {
    return std::ranges::binary_search(sorted, number);
}

void unite(std::vector<std::uint32_t>& all, const std::vector<std::uint32_t>& more) {
    if (more.empty())
        return;
    std::vector<std::uint32_t> united;
    united.reserve(all.size() + more.size());
    std::ranges::set_union(all, more, std::back_inserter(united));
    all = std::move(united);
}

}  // namespace

WordReading::WordReading(const search::Snapshot& snapshot, std::span<const Term> terms,
                         Candidates& candidates)
    : m_snapshot(snapshot),
      m_index(*snapshot.index()),
      m_questions(m_index.questions()),
      m_candidates(candidates) {
    for (const Term& term : terms)
        for (const auto& component : term.components)
            addWord(component);
    if (std::ranges::all_of(m_words, &Word::isStop))
        for (Word& word : m_words)
            word.isStop = false;
}

WordReading::Keys WordReading::keysOf(const Lexicon& lexicon, std::string_view word) {
    Keys keys;
    if (word.empty())
        return keys;
    lexicon.forEachWordWith(
        {.letters = word, .isStart = true, .isEnd = true}, [&](std::uint32_t number) {
            lexicon.forEachTextWith(number, [&](std::uint32_t key) { keys.push_back(key); });
        });
    return keys;
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
            m_words.push_back({.form = part,
                               .text = docimage::fromUnitBytes(part),
                               .stems = {std::string(m_stemmer.stem(part))}});
        return;
    }
    word.isStop = docimage::isStopWord(word.form);
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

bool WordReading::isKnown(const Word& word) {
    if (!keysOf(m_questions.lastParts(), word.form).empty() ||
        !keysOf(m_questions.outerParts(), word.form).empty())
        return true;
    return std::ranges::all_of(word.stems, [&](const std::string& stem) {
        return isNumber(stem) || !synonymsOf(stem).empty() ||
               !keysOf(m_questions.purposes(), stem).empty() ||
               !keysOf(m_questions.partStems(), stem).empty();
    });
}

// Of several words that are equally near, the one that occurs in most places.
bool WordReading::correctSpelling() {
    constexpr std::size_t fewWords = 3;
    const bool isSentence =
        std::ranges::count(m_words, false, &Word::isStop) > static_cast<std::ptrdiff_t>(fewWords);
    std::u16string change;
    for (Word& word : m_words) {
        if (word.isStop || isKnown(word))
            continue;
        const std::uint32_t admitted =
            isSentence ? slipsInSentence(word.form.size()) : admittedSlips(word.form.size());
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
    m_stems.clear();
    m_weights.clear();
    return true;
}

WordReading::Keys WordReading::formsOf(const Lexicon& lexicon, const std::string& stem) const {
    Keys all;
    for (const std::uint32_t part : keysOf(m_questions.partStems(), stem))
        unite(all, keysOf(lexicon, m_questions.partWords()[part]));
    return all;
}

void WordReading::makeStems() {
    if (!m_stems.empty())
        return;
    constexpr std::size_t mostStems = 64;
    for (const Word& word : m_words)
        for (const auto& stem : word.stems) {
            if (word.isStop || m_stems.size() == mostStems ||
                std::ranges::find(m_stems, stem, &Stem::text) != m_stems.end())
                continue;
            Stem made{.text = stem,
                      .isWeak = isWeakStem(stem),
                      .last = formsOf(m_questions.lastParts(), stem),
                      .outer = formsOf(m_questions.outerParts(), stem),
                      .purpose = keysOf(m_questions.purposes(), stem)};
            made.any = made.last;
            unite(made.any, made.outer);
            unite(made.any, made.purpose);
            for (const auto& synonym : synonymsOf(stem)) {
                unite(made.synonym, formsOf(m_questions.lastParts(), synonym));
                unite(made.synonym, keysOf(m_questions.purposes(), synonym));
            }
            unite(made.any, made.synonym);
            m_stems.push_back(std::move(made));
        }
    m_weights.resize(m_index.products().size());
}

// Where all are weak, all are required.
std::uint64_t WordReading::requiredStems() const {
    std::uint64_t required = 0;
    for (std::size_t at = 0; at < m_stems.size(); ++at)
        if (!m_stems[at].isWeak)
            required |= std::uint64_t{1} << at;
    if (required == 0 && !m_stems.empty())
        required = ~std::uint64_t{0} >> (64 - m_stems.size());
    return required;
}

WordReading::Places WordReading::placesOf(std::uint32_t key) const {
    Places places;
    for (std::size_t at = 0; at < m_stems.size(); ++at) {
        const std::uint64_t bit = std::uint64_t{1} << at;
        if (holds(m_stems[at].last, key))
            places.last |= bit;
        if (holds(m_stems[at].outer, key))
            places.outer |= bit;
        if (holds(m_stems[at].purpose, key))
            places.purpose |= bit;
        if (holds(m_stems[at].synonym, key))
            places.synonym |= bit;
    }
    return places;
}

// A rare word says more than a frequent one. How rare it is is counted in each product by itself,
// so that the order of a product's hits does not depend on what else is installed.
const std::vector<float>& WordReading::weightsIn(std::uint32_t product) {
    auto& weights = m_weights[product];
    if (!weights.empty())
        return weights;
    const std::uint32_t first = m_questions.firstKeys()[product];
    const std::uint32_t end = m_questions.firstKeys()[product + 1];
    for (const Stem& stem : m_stems) {
        const auto found =
            std::ranges::lower_bound(stem.any, end) - std::ranges::lower_bound(stem.any, first);
        const float weight =
            std::log(1.0F + static_cast<float>(end - first) / (1.0F + static_cast<float>(found)));
        weights.push_back(stem.isWeak ? weight * weakShare : weight);
    }
    return weights;
}

float WordReading::shareOf(std::uint64_t stems, std::uint32_t product) {
    const auto& weights = weightsIn(product);
    float all = 0;
    float found = 0;
    for (std::size_t at = 0; at < weights.size(); ++at) {
        all += weights[at];
        if ((stems >> at & 1U) != 0)
            found += weights[at];
    }
    return all > 0 ? found / all : 0;
}

std::uint32_t WordReading::distanceOf(std::uint32_t key, const Places& places) {
    constexpr float inLast = 1.0F;
    constexpr float inPurpose = 0.8F;
    constexpr float inOuter = 0.6F;
    constexpr float inSynonym = 0.5F;
    constexpr float inPassage = 0.4F;
    constexpr float inText = 0.2F;
    constexpr float bySynonym = 0.6F;
    constexpr float twice = 0.15F;
    constexpr float forRest = 0.04F;
    const auto& weights = weightsIn(m_candidates.productOf(key));
    float all = 0;
    float found = 0;
    for (std::size_t at = 0; at < weights.size(); ++at) {
        const std::uint64_t bit = std::uint64_t{1} << at;
        all += weights[at];
        float share = 0;
        if ((places.last & bit) != 0)
            share = inLast;
        else if ((places.purpose & bit) != 0)
            share = inPurpose;
        else if ((places.outer & bit) != 0)
            share = inOuter;
        else if ((places.synonym & bit) != 0)
            share = inSynonym;
        else if ((places.passage.words & bit) != 0)
            share = inPassage;
        else if ((places.passage.synonyms & bit) != 0)
            share = inPassage * bySynonym;
        else if ((places.text.words & bit) != 0)
            share = inText;
        else if ((places.text.synonyms & bit) != 0)
            share = inText * bySynonym;
        if ((places.last & places.purpose & bit) != 0)
            share += twice;
        found += weights[at] * share;
    }
    const KeyFacts& facts = m_questions.facts(key);
    const auto left = [](std::uint8_t size, std::uint64_t covered) {
        const int rest = int{size} - std::popcount(covered);
        return static_cast<float>(std::max(rest, 0));
    };
    const float rest = left(facts.lastParts, places.last) +
                       std::min(left(facts.purposeWords, places.purpose), 12.0F) / 2;
    // Who asks in words looks for what can be called more often than for a value or a term.
    constexpr std::uint32_t callable =
        docimage::typeBit(RefEntityType::Function) | docimage::typeBit(RefEntityType::Class) |
        docimage::typeBit(RefEntityType::Package) | docimage::typeBit(RefEntityType::Method) |
        docimage::typeBit(RefEntityType::Constructor) | docimage::typeBit(RefEntityType::Command);
    constexpr float forOtherKind = 0.88F;
    const float byKind = (facts.types & callable) != 0 ? 1.0F : forOtherKind;
    const float nearness = all > 0 ? byKind * found / all / (1 + forRest * rest) : 0;
    constexpr float perUnit = 10000;
    return static_cast<std::uint32_t>(std::lround(std::max(0.0F, 1.5F - nearness) * perUnit));
}

void WordReading::addByPlaces(const Keys& keys, Rung rung) {
    for (const std::uint32_t key : keys)
        if (!m_candidates.has(key))
            m_candidates.add({.key = key,
                              .rung = rung,
                              .distance = distanceOf(key, placesOf(key)),
                              .change = m_change});
}

void WordReading::findWords(bool isPurposeWanted) {
    makeStems();
    const std::uint64_t required = requiredStems();
    std::vector<const Keys*> lists;
    for (std::size_t at = 0; at < m_stems.size(); ++at)
        if ((required >> at & 1U) != 0)
            lists.push_back(isPurposeWanted ? &m_stems[at].purpose : &m_stems[at].any);
    if (lists.empty())
        return;
    std::ranges::sort(lists, {}, [](const Keys* keys) { return keys->size(); });
    Keys keys = *lists.front();
    for (std::size_t at = 1; at < lists.size() && !keys.empty(); ++at)
        std::erase_if(keys, [&](std::uint32_t key) { return !holds(*lists[at], key); });
    addByPlaces(keys, Rung::Words);
}

std::vector<WordReading::TextWord> WordReading::textWordsOf(const Lexicon& lexicon) {
    std::vector<TextWord> words;
    const auto addAll = [&](const std::string& stem, std::size_t number, bool isSynonym) {
        // A stem may end in another letter than the word: "categori".
        constexpr std::size_t shortStem = 3;
        const std::string beginning =
            stem.size() > shortStem ? stem.substr(0, stem.size() - 1) : stem;
        lexicon.forEachWordWith({.letters = beginning, .isStart = true}, [&](std::uint32_t word) {
            if (m_stemmer.stem(lexicon.word(word)) == stem)
                words.push_back({.word = word,
                                 .stem = static_cast<std::uint8_t>(number),
                                 .isSynonym = isSynonym});
        });
    };
    for (std::size_t number = 0; number < m_stems.size(); ++number) {
        addAll(m_stems[number].text, number, false);
        for (const auto& synonym : synonymsOf(m_stems[number].text))
            addAll(synonym, number, true);
    }
    return words;
}

// The name by which an item is found; noKey where it has none.
std::uint32_t WordReading::keyOfItem(std::uint32_t product, const JoinedPages& joined,
                                     std::uint32_t item) const {
    const auto& lookup = m_index.lookup(product);
    const property::RefItem data = joined.pages().item(item);
    for (const auto& entity : data.getRefEntities()) {
        const std::string name = docimage::toUnitBytes(entity.getName());
        std::size_t low = 0;
        std::size_t high = lookup.keyCount();
        while (low < high) {
            const std::size_t middle = low + (high - low) / 2;
            if (lookup.key(middle) < name)
                low = middle + 1;
            else
                high = middle;
        }
        if (low < lookup.keyCount() && lookup.key(low) == name)
            return m_questions.firstKeys()[product] + static_cast<std::uint32_t>(low);
    }
    return noKey;
}

void WordReading::findTexts(bool alsoMostWords) {
    makeStems();
    std::vector<const JoinedPages*> pages(m_index.products().size());
    for (std::uint32_t product = 0; product < pages.size(); ++product) {
        try {
            pages[product] = m_snapshot.pagesOf(product);
        } catch (const docparser::DocParserException&) {
            continue;  // the other products are still searched
        }
        if (pages[product] != nullptr)
            findTextsOf(product, *pages[product], alsoMostWords);
    }
    if (!alsoMostWords || m_candidates.size() > 0)
        return;
    for (const LikelyItem& item : m_likely)
        if (!m_candidates.has(item.key))
            addLikely(item.key, item.places);
    // What has no item of its own, such as the properties of a class.
    Keys keys;
    for (const Stem& stem : m_stems)
        unite(keys, stem.any);
    for (const std::uint32_t key : keys)
        if (!m_candidates.has(key))
            addLikely(key, placesOf(key));
}

void WordReading::addLikely(std::uint32_t key, const Places& places) {
    constexpr float most = 0.5F;
    if (shareOf(places.any(), m_candidates.productOf(key)) >= most)
        m_candidates.add({.key = key,
                          .rung = Rung::MostWords,
                          .distance = distanceOf(key, places),
                          .change = m_change});
}

// Words that are scattered over a long page say nothing together, so that the items with most words
// are read, and the passage counts that has most of them.
void WordReading::findTextsOf(std::uint32_t product, const JoinedPages& joined,
                              bool alsoMostWords) {
    constexpr float worthReading = 0.4F;
    constexpr std::size_t mostItems = 60;
    const std::uint64_t required = requiredStems();
    const search::ProductPages& pages = joined.pages();
    const Lexicon& lexicon = pages.words();
    const auto textWords = textWordsOf(lexicon);
    std::vector<WordBits> bits(pages.itemCount());
    for (const TextWord& word : textWords)
        lexicon.forEachTextWith(word.word, [&](std::uint32_t item) {
            (word.isSynonym ? bits.at(item).synonyms : bits.at(item).words) |= std::uint64_t{1}
                                                                               << word.stem;
        });
    struct Item {
        std::uint32_t number;
        float share;
    };
    std::vector<Item> items;
    for (std::uint32_t item = 0; item < bits.size(); ++item) {
        if (bits[item].any() == 0 || (!alsoMostWords && (bits[item].words & required) != required))
            continue;
        const float share =
            (shareOf(bits[item].any(), product) + shareOf(bits[item].words, product)) / 2;
        if (share >= worthReading)
            items.push_back({.number = item, .share = share});
    }
    const std::size_t count = std::min(mostItems, items.size());
    std::ranges::partial_sort(items, items.begin() + static_cast<std::ptrdiff_t>(count),
                              [](const Item& a, const Item& b) {
                                  return std::pair(-a.share, a.number) <
                                         std::pair(-b.share, b.number);
                              });
    items.resize(count);
    PassageFinder finder(weightsIn(product));
    for (const TextWord& word : textWords)
        finder.addWord(lexicon.word(word.word), word.stem, word.isSynonym);
    for (const Item& item : items) {
        const std::uint32_t key = keyOfItem(product, joined, item.number);
        if (key == noKey || m_candidates.has(key))
            continue;
        finder.clear();
        const auto look = [&](std::string_view text) {
            finder.look(text);
            return false;
        };
        if (const docimage::PageImage* const image = pages.image())
            static_cast<void>(image->anySearchedText(item.number, look));
        else
            docimage::anySearchedText(pages.item(item.number), [&](const std::u16string& text) {
                return look(docimage::toUnitBytes(text));
            });
        Places places = placesOf(key);
        places.passage = finder.best();
        places.text = bits[item.number];
        if ((places.passage.words & required) == required)
            m_candidates.add({.key = key,
                              .rung = Rung::Text,
                              .distance = distanceOf(key, places),
                              .change = m_change});
        else
            m_likely.push_back({.key = key, .places = places});
    }
}

}  // namespace reference::ask
