#include "reference/ask/ItemTexts.hpp"

#include <algorithm>
#include <functional>
#include <numeric>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "docimage/componentForms.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/searchedTexts.hpp"
#include "docimage/unitBytes.hpp"
#include "docparser/DocParserException.hpp"
#include "reference/ask/Likeliest.hpp"
#include "reference/ask/keyLists.hpp"
#include "reference/ask/shares.hpp"

namespace reference::ask {

using search::JoinedPages;

namespace {

// What the items of a product have of the stems.
class ItemScores {
  public:
    // Forgets the items of the product before.
    void begin(std::size_t items) {
        for (const std::uint32_t item : m_found)
            m_scores[item] = {};
        m_found.clear();
        if (m_scores.size() < items)
            m_scores.resize(items);
        m_items = items;
    }

    // Counts the item from now on, whatever it has.
    void expect(std::uint32_t item) {
        if (!std::exchange(m_scores[item].isFound, true))
            m_found.push_back(item);
    }

    // Whether items that had none of the stems so far are passed over from now on.
    void passNew(bool isPassed) { m_isNewPassed = isPassed; }

    // Counts a stem of the item, once: first the word itself, then synonyms of it.
    void count(std::uint32_t item, std::uint64_t stem, bool isSynonym, float score) {
        if (item >= m_items)
            throw docimage::DamagedImage("An image refers to an item that it does not have.");
        Score& counted = m_scores[item];
        if (!counted.isFound) {
            if (m_isNewPassed)
                return;
            counted.isFound = true;
            m_found.push_back(item);
        }
        if ((counted.words.any() & stem) != 0)
            return;
        (isSynonym ? counted.words.synonyms : counted.words.words) |= stem;
        counted.score += score;
    }

    [[nodiscard]] const WordBits& wordsOf(std::uint32_t item) const { return m_scores[item].words; }

    // Calls `visit(item, words, score)` for the items that were counted.
    template <typename Visit>
    void forEach(Visit visit) const {
        for (const std::uint32_t item : m_found)
            visit(item, m_scores[item].words, m_scores[item].score);
    }

  private:
    struct Score {
        WordBits words;
        float score = 0;
        bool isFound = false;
    };
    std::vector<Score> m_scores;
    std::vector<std::uint32_t> m_found;
    std::size_t m_items = 0;
    bool m_isNewPassed = false;
};

// Whether so many texts have the word that it says nothing in place of another.
bool isCommon(const search::ProductPages& pages, std::uint32_t word) {
    return pages.words().weightOf(word) >
           std::max(pages.itemCount() / share::commonInTexts, share::neverCommon);
}

// The numbers of the weights, from the heaviest to the lightest.
std::vector<std::size_t> byWeight(std::span<const float> weights) {
    std::vector<std::size_t> order(weights.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater(),
                             [&](std::size_t number) { return weights[number]; });
    return order;
}

}  // namespace

ItemTexts::ItemTexts(const search::Snapshot& snapshot, StemKeys& stems)
    : m_snapshot(snapshot),
      m_index(*snapshot.index()),
      m_questions(m_index.questions()),
      m_stems(stems),
      m_pages(m_index.products().size()) {}

const JoinedPages* ItemTexts::pagesOf(std::uint32_t product) const {
    auto& pages = m_pages.at(product);
    if (!pages) {
        try {
            pages = m_snapshot.pagesOf(product);
        } catch (const docparser::DocParserException&) {
            pages = nullptr;  // the other products are still searched
        }
    }
    return *pages;
}

std::vector<ItemTexts::Entry> ItemTexts::entriesOf(const std::vector<std::uint32_t>& names,
                                                   std::size_t likeliest) {
    std::vector<Entry> entries;
    entries.reserve(names.size() + likeliest);
    Likeliest<Item> best(likeliest);
    ItemScores scores;
    auto name = names.begin();
    for (std::uint32_t product = 0; product < m_index.products().size(); ++product) {
        const JoinedPages* const joined = pagesOf(product);
        const std::uint32_t end = m_questions.firstKeys()[product + 1];
        if (joined == nullptr) {
            for (; name != names.end() && *name < end; ++name)
                entries.push_back({.key = *name, .item = std::nullopt, .words = {}});
            continue;
        }
        const search::ProductPages& pages = joined->pages();
        scores.begin(pages.itemCount());
        const std::size_t firstEntry = entries.size();
        for (; name != names.end() && *name < end; ++name) {
            const auto item = itemOfKey(*name);
            entries.push_back({.key = *name,
                               .item = item,
                               .words = {},
                               .size = item ? pages.sizeOfItem(*item) : 0});
            if (item)
                scores.expect(*item);
        }
        const auto weights = m_stems.weightsIn(product);
        const float all = std::accumulate(weights.begin(), weights.end(), 0.0F);
        float left = all;
        for (const std::size_t number : byWeight(weights)) {
            const StemKeys::Stem& stem = m_stems.stems()[number];
            const auto count = [&](const std::string& text, bool isSynonym, float score) {
                for (const std::uint32_t word : keysOf(pages.wordStems(), text)) {
                    if (isSynonym && isCommon(pages, word))
                        continue;
                    pages.words().forEachTextWith(word, [&](std::uint32_t item) {
                        scores.count(item, std::uint64_t{1} << number, isSynonym, score);
                    });
                }
            };
            // With no more than these it would not be worth reading, or be among the likeliest.
            scores.passNew(left <= share::worthReading * all || !best.isBetter(left / all));
            left -= weights[number];
            count(stem.text, false, weights[number]);
            for (const auto* synonyms : {&stem.phrases, &stem.synonyms})
                for (const StemKeys::Synonym& synonym : *synonyms)
                    count(synonym.stem, true, weights[number] * share::textSynonym);
        }
        for (auto entry = entries.begin() + static_cast<std::ptrdiff_t>(firstEntry);
             entry != entries.end(); ++entry)
            if (entry->item)
                entry->words = scores.wordsOf(*entry->item);
        scores.forEach([&](std::uint32_t item, const WordBits& words, float score) {
            if (score > share::worthReading * all && best.isBetter(score / all))
                best.add(
                    {.number = item, .score = score / all, .words = words, .product = product});
        });
    }
    for (const Item& item : best.take())
        if (const auto key = keyOfItem(item))
            entries.push_back({.key = *key,
                               .item = item.number,
                               .words = item.words,
                               .size = pagesOf(item.product)->pages().sizeOfItem(item.number)});
    std::ranges::stable_sort(entries, {}, &Entry::key);
    entries.erase(std::unique(entries.begin(), entries.end(),
                              [](const Entry& a, const Entry& b) { return a.key == b.key; }),
                  entries.end());
    return entries;
}

std::optional<std::uint32_t> ItemTexts::keyOfItem(const Item& item) const {
    const auto& lookup = m_index.lookup(item.product);
    const property::RefItem data = pagesOf(item.product)->pages().item(item.number);
    for (const auto& entity : data.getRefEntities())
        if (const auto key = lookup.findKey(docimage::toUnitBytes(entity.getName())))
            return m_questions.firstKeys()[item.product] + *key;
    return std::nullopt;
}

std::size_t ItemTexts::mentionsOf(std::uint32_t key) const {
    const std::uint32_t product = m_questions.productOf(key);
    const JoinedPages* const joined = pagesOf(product);
    if (joined == nullptr)
        return 0;
    const std::string_view name =
        m_index.lookup(product).key(key - m_questions.firstKeys()[product]);
    const std::string word =
        docimage::searchForm(docimage::fromUnitBytes(docimage::lastComponent(name)));
    const docimage::Lexicon& words = joined->pages().words();
    std::size_t mentions = 0;
    words.forEachWordWith({.letters = word, .isStart = true, .isEnd = true},
                          [&](std::uint32_t number) { mentions = words.weightOf(number); });
    return mentions;
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

// It knows the words of the product's texts that have the stems. Items are read the likeliest
// first, whichever product they are of.
PassageFinder& ItemTexts::finderFor(std::uint32_t product) {
    const auto [made, isNew] = m_finders.try_emplace(product, m_stems.weightsIn(product));
    PassageFinder& finder = made->second;
    if (!isNew)
        return finder;
    const search::ProductPages& pages = pagesOf(product)->pages();
    std::size_t number = 0;
    for (const StemKeys::Stem& stem : m_stems.stems()) {
        const auto add = [&](const std::string& text, bool isSynonym) {
            for (const std::uint32_t word : keysOf(pages.wordStems(), text))
                if (!isSynonym || !isCommon(pages, word))
                    finder.addWord(pages.words().word(word), number, isSynonym);
        };
        add(stem.text, false);
        for (const auto* synonyms : {&stem.phrases, &stem.synonyms})
            for (const StemKeys::Synonym& synonym : *synonyms)
                add(synonym.stem, true);
        ++number;
    }
    return finder;
}

WordBits ItemTexts::passageOf(const Entry& entry) {
    if (!entry.item)
        return {};
    const std::uint32_t product = m_questions.productOf(entry.key);
    PassageFinder& finder = finderFor(product);
    finder.clear();
    const search::ProductPages& pages = pagesOf(product)->pages();
    if (const docimage::PageImage* const image = pages.image())
        static_cast<void>(image->anySearchedText(
            *entry.item, [&](std::string_view text) { return finder.look(text); }));
    else
        docimage::anySearchedText(pages.item(*entry.item), [&](const std::u16string& text) {
            return finder.look(docimage::toUnitBytes(text));
        });
    return finder.passage();
}

}  // namespace reference::ask
