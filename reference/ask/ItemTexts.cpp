#include "reference/ask/ItemTexts.hpp"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "docimage/componentForms.hpp"
#include "docimage/nameParts.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/searchedTexts.hpp"
#include "docimage/unitBytes.hpp"
#include "docparser/DocParserException.hpp"
#include "reference/ask/Likeliest.hpp"
#include "reference/ask/keyLists.hpp"
#include "reference/ask/shares.hpp"

namespace reference::ask {

using docimage::Lexicon;
using search::JoinedPages;

namespace {

// What the items of a product have of the stems, counted stem by stem.
class ItemScores {
  public:
    void begin(std::size_t items) {
        for (const std::uint32_t item : m_found)
            m_scores[item] = {};
        m_found.clear();
        if (m_scores.size() < items)
            m_scores.resize(items);
        m_items = items;
    }

    // Counts the item once for a stem; `stem` is counted from 1.
    void count(std::uint32_t item, std::uint8_t stem, float score) {
        if (item >= m_items)
            throw docimage::DamagedImage("An image refers to an item that it does not have.");
        Score& counted = m_scores[item];
        if (counted.stem == stem)
            return;
        if (counted.stem == 0)
            m_found.push_back(item);
        counted.stem = stem;
        counted.score += score;
    }

    // Calls `visit(item, score)` for the items that were counted.
    template <typename Visit>
    void forEach(Visit visit) const {
        for (const std::uint32_t item : m_found)
            visit(item, m_scores[item].score);
    }

  private:
    struct Score {
        float score = 0;
        std::uint8_t stem = 0;  // the last that was counted
    };
    std::vector<Score> m_scores;
    std::vector<std::uint32_t> m_found;
    std::size_t m_items = 0;
};

}  // namespace

ItemTexts::ItemTexts(const search::Snapshot& snapshot, StemKeys& stems)
    : m_snapshot(snapshot),
      m_index(*snapshot.index()),
      m_questions(m_index.questions()),
      m_stems(stems),
      m_finder({}) {}

const JoinedPages* ItemTexts::pagesOf(std::uint32_t product) const {
    try {
        return m_snapshot.pagesOf(product);
    } catch (const docparser::DocParserException&) {
        return nullptr;  // the other products are still searched
    }
}

std::vector<ItemTexts::Item> ItemTexts::likeliestItems(std::size_t count) {
    Likeliest<Item> best(count);
    ItemScores scores;
    for (std::uint32_t product = 0; product < m_index.products().size(); ++product) {
        const JoinedPages* const joined = pagesOf(product);
        if (joined == nullptr)
            continue;
        const Lexicon& words = joined->pages().words();
        const Lexicon& wordStems = joined->pages().wordStems();
        scores.begin(joined->pages().itemCount());
        const auto weights = m_stems.weightsIn(product);
        float all = 0;
        std::uint8_t number = 0;
        for (const StemKeys::Stem& stem : m_stems.stems()) {
            const float weight = weights[number++];
            all += weight;
            const auto add = [&](const std::string& text, float score) {
                for (const std::uint32_t word : keysOf(wordStems, text))
                    words.forEachTextWith(
                        word, [&](std::uint32_t item) { scores.count(item, number, score); });
            };
            add(stem.text, weight);
            for (const auto& synonym : stem.synonyms)
                add(synonym, weight * share::textSynonym);
        }
        scores.forEach([&](std::uint32_t item, float score) {
            if (score > share::worthReading * all)
                best.add({.product = product, .number = item, .score = score / all});
        });
    }
    return best.take();
}

std::vector<std::uint32_t> ItemTexts::likeliestKeys(std::size_t count) {
    std::vector<std::uint32_t> keys;
    for (const Item& item : likeliestItems(count))
        if (const auto key = keyOfItem(item))
            keys.push_back(*key);
    return keys;
}

std::optional<std::uint32_t> ItemTexts::keyOfItem(const Item& item) const {
    const auto& lookup = m_index.lookup(item.product);
    const property::RefItem data = pagesOf(item.product)->pages().item(item.number);
    for (const auto& entity : data.getRefEntities())
        if (const auto key = lookup.findKey(docimage::toUnitBytes(entity.getName())))
            return m_questions.firstKeys()[item.product] + *key;
    return std::nullopt;
}

std::optional<std::uint32_t> ItemTexts::itemOfKey(std::uint32_t key) const {
    const std::uint32_t product = m_questions.productOf(key);
    const JoinedPages* const joined = pagesOf(product);
    if (joined == nullptr)
        return std::nullopt;
    const auto& lookup = m_index.lookup(product);
    const std::uint32_t number = key - m_questions.firstKeys()[product];
    const std::uint32_t page =
        joined->pageOfHref(lookup.record(lookup.recordsOfKey(number).first).href);
    if (page == JoinedPages::none)
        return std::nullopt;
    const std::u16string name = docimage::fromUnitBytes(lookup.key(number));
    const auto [first, last] = joined->pages().itemsOfPage(page);
    for (std::uint32_t item = first; item < last; ++item) {
        const property::RefItem data = joined->pages().item(item);
        if (std::ranges::any_of(data.getRefEntities(),
                                [&](const auto& entity) { return entity.getName() == name; }))
            return item;
    }
    return std::nullopt;
}

// The words of a product's texts that have the stems.
void ItemTexts::readProduct(std::uint32_t product) {
    if (m_product == product)
        return;
    m_product = product;
    m_finder = PassageFinder(m_stems.weightsIn(product));
    const search::ProductPages& pages = pagesOf(product)->pages();
    std::size_t number = 0;
    for (const StemKeys::Stem& stem : m_stems.stems()) {
        const auto add = [&](const std::string& text, bool isSynonym) {
            for (const std::uint32_t word : keysOf(pages.wordStems(), text))
                m_finder.addWord(pages.words().word(word), number, isSynonym);
        };
        add(stem.text, false);
        for (const auto& synonym : stem.synonyms)
            add(synonym, true);
        ++number;
    }
}

ItemTexts::Said ItemTexts::read(std::uint32_t key) {
    const auto item = itemOfKey(key);
    if (!item)
        return {};
    const std::uint32_t product = m_questions.productOf(key);
    readProduct(product);
    m_finder.clear();
    const search::ProductPages& pages = pagesOf(product)->pages();
    if (const docimage::PageImage* const image = pages.image())
        static_cast<void>(image->anySearchedText(
            *item, [&](std::string_view text) { return m_finder.look(text); }));
    else
        docimage::anySearchedText(pages.item(*item), [&](const std::u16string& text) {
            return m_finder.look(docimage::toUnitBytes(text));
        });
    return {.texts = m_finder.found(), .size = pages.sizeOfItem(*item)};
}

float ItemTexts::prominenceOf(std::uint32_t key) const {
    const std::uint32_t product = m_questions.productOf(key);
    const JoinedPages* const joined = pagesOf(product);
    if (joined == nullptr)
        return 0;
    const auto& first = m_questions.firstKeys();
    const auto name = docimage::fromUnitBytes(
        docimage::lastComponent(m_index.lookup(product).key(key - first[product])));
    const Lexicon& words = joined->pages().words();
    std::size_t mentions = 0;
    const std::string form = docimage::searchForm(name);
    words.forEachWordWith({.letters = form, .isStart = true, .isEnd = true},
                          [&](std::uint32_t word) { mentions = words.weightOf(word); });
    const auto bearers = keysOf(m_questions.lastNames(), docimage::joinedParts(name));
    const auto own = std::ranges::lower_bound(bearers, first[product + 1]) -
                     std::ranges::lower_bound(bearers, first[product]);
    return std::log10(1 + static_cast<float>(mentions) /
                              static_cast<float>(std::max<std::ptrdiff_t>(own, 1)));
}

}  // namespace reference::ask
