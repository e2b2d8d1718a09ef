#include "reference/ask/Candidates.hpp"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "docimage/Stemmer.hpp"
#include "docimage/nameParts.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/ask/QuestionError.hpp"
#include "reference/ask/keyLists.hpp"
#include "reference/ask/productRank.hpp"

namespace reference::ask {

using docimage::KeyFacts;
using docimage::Lexicon;

namespace {

std::string productNames(const search::LookupIndex& index) {
    constexpr std::size_t mostNames = 20;
    std::string names;
    for (const auto& product : index.products()) {
        if (&product - index.products().data() == static_cast<std::ptrdiff_t>(mostNames))
            return names + ", …";
        names += (names.empty() ? "" : ", ") + fl::i18n::toUtf8(product.name);
    }
    return names;
}

}  // namespace

KeyFilter::KeyFilter(const search::LookupIndex& index, const Question* question,
                     const AskOptions& options, std::function<bool(std::uint32_t key)> confirm)
    : m_index(index), m_questions(index.questions()), m_confirm(std::move(confirm)) {
    if (question != nullptr)
        m_wantedTypes = question->types();
    std::ranges::copy(options.types, std::back_inserter(m_wantedTypes));
    for (const auto type : m_wantedTypes)
        m_types |= docimage::typeBit(type);
    if (!options.products.empty() || (question != nullptr && !question->products().empty()))
        m_products.resize(index.products().size());
    for (const auto& name : options.products)
        if (const auto product = index.find(name))
            m_products[*product] = true;
    if (question == nullptr)
        return;
    for (const WantedProduct& wanted : question->products()) {
        const auto product = index.find(wanted.name);
        if (!product)
            throw QuestionError("No product \"" + fl::i18n::toUtf8(wanted.name) +
                                    "\" is installed; there is: " + productNames(index) + ".",
                                wanted.position, wanted.length);
        m_products[*product] = true;
    }
    if (question->excluded().empty())
        return;
    m_excluded.resize(m_questions.keyCount());
    const auto exclude = [this](const Lexicon& lexicon, std::string_view word) {
        for (const std::uint32_t key : keysOf(lexicon, word))
            m_excluded.at(key) = true;
    };
    docimage::Stemmer stemmer;
    for (const auto& word : question->excluded()) {
        const std::string form = docimage::joinedParts(word);
        exclude(m_questions.lastParts(), form);
        exclude(m_questions.outerParts(), form);
        exclude(m_questions.purposes(), stemmer.stem(form));
    }
}

bool KeyFilter::admits(std::uint32_t key) const {
    if (!m_excluded.empty() && m_excluded[key])
        return false;
    if (!m_products.empty() && !m_products[m_questions.productOf(key)])
        return false;
    // Types above 30 share a bit, so that the records have the last word.
    if (m_types != 0 && ((m_questions.facts(key).types & m_types) == 0 || entriesOf(key) == 0))
        return false;
    return !m_confirm || m_confirm(key);
}

std::size_t KeyFilter::entriesOf(std::uint32_t key) const {
    if (m_wantedTypes.empty())
        return m_questions.facts(key).entries;
    const std::uint32_t product = m_questions.productOf(key);
    const auto& lookup = m_index.lookup(product);
    const auto [begin, end] = lookup.recordsOfKey(key - m_questions.firstKeys()[product]);
    std::set<std::uint32_t> hrefs;
    for (std::uint32_t record = begin; record < end; ++record)
        if (std::ranges::find(m_wantedTypes, lookup.record(record).type) != m_wantedTypes.end())
            hrefs.insert(lookup.record(record).href);
    return hrefs.size();
}

Candidates::Candidates(const search::LookupIndex& index, const KeyFilter& filter,
                       std::vector<std::uint32_t> products)
    : m_index(index),
      m_questions(index.questions()),
      m_filter(filter),
      m_productRanks(std::move(products)),
      m_seen(m_questions.keyCount()) {}

bool Candidates::add(const Candidate& candidate) {
    if (has(candidate.key))
        return false;
    m_seen[candidate.key] = true;
    if (!m_filter.admits(candidate.key)) {
        m_filteredAway += m_questions.facts(candidate.key).entries;
        m_turnedAway.push_back(candidate);
        return false;
    }
    m_entries += m_filter.entriesOf(candidate.key);
    m_candidates.push_back(candidate);
    return true;
}

std::uint32_t Candidates::addChange(std::u16string change) {
    m_changes.push_back(std::move(change));
    return static_cast<std::uint32_t>(m_changes.size() - 1);
}

std::uint32_t Candidates::productOf(std::uint32_t key) const {
    return m_questions.productOf(key);
}

std::uint32_t Candidates::numberInProduct(std::uint32_t key) const {
    return key - m_questions.firstKeys()[productOf(key)];
}

std::string_view Candidates::textOf(std::uint32_t key) const {
    const std::uint32_t product = productOf(key);
    return m_index.lookup(product).key(key - m_questions.firstKeys()[product]);
}

// 1. The call of pasted code, then the rung.
// 2. How near the name is to the question within the rung.
// 3. The case that was typed.
// 4. The product: named in the question, preferred by the user, preferred by the library.
// 5. The kind of entity, in the library's preferred order.
// 6. Fewer components, then a shorter name.
// 7. The number of the name: products in the order of their names, names in the order of their
//    texts. So the order is total, and what other products hold does not change it.
Candidates::Order Candidates::orderOf(const Candidate& candidate) const {
    const KeyFacts& facts = m_questions.facts(candidate.key);
    const std::uint64_t distance = std::min<std::uint32_t>(candidate.distance, (1U << 19U) - 1);
    const std::uint64_t call = std::min<std::uint8_t>(candidate.call, 15);
    const std::uint64_t product = m_productRanks[productOf(candidate.key)];
    return {.byQuestion = call << 60U | static_cast<std::uint64_t>(candidate.rung) << 56U |
                          distance << 33U | std::uint64_t{candidate.isOtherCase} << 32U | product,
            .byDocumentation = std::uint64_t{facts.kind} << 48U |
                               std::uint64_t{facts.depth} << 40U |
                               std::uint64_t{facts.length} << 32U | candidate.key};
}

bool Candidates::isTie(const Candidate& a, const Candidate& b) const {
    // The library's own order of products comes after what is deprecated.
    return orderOf(a).byQuestion >> libraryRankBits == orderOf(b).byQuestion >> libraryRankBits;
}

std::vector<Candidate> Candidates::first(std::size_t count) const {
    return firstOf(m_candidates, count);
}

std::vector<Candidate> Candidates::firstTurnedAway(std::size_t count) const {
    return firstOf(m_turnedAway, count);
}

std::vector<Candidate> Candidates::firstOf(const std::vector<Candidate>& candidates,
                                           std::size_t count) const {
    using Numbered = std::pair<Order, std::size_t>;
    std::vector<Numbered> order;
    order.reserve(candidates.size());
    for (std::size_t at = 0; at < candidates.size(); ++at)
        order.emplace_back(orderOf(candidates[at]), at);
    count = std::min(count, order.size());
    std::ranges::partial_sort(
        order, order.begin() + static_cast<std::ptrdiff_t>(count),
        [](const Order& x, const Order& y) { return x < y; }, &Numbered::first);
    std::vector<Candidate> first;
    first.reserve(count);
    for (std::size_t at = 0; at < count; ++at)
        first.push_back(candidates[order[at].second]);
    return first;
}

}  // namespace reference::ask
