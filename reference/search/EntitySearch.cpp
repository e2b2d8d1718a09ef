#include "reference/search/EntitySearch.hpp"

#include <algorithm>
#include <optional>
#include <utility>

#include "docimage/componentForms.hpp"
#include "docimage/unitBytes.hpp"
#include "reference/utils/toLowerCopy.hpp"

namespace reference::search {

using docimage::LookupImage;
using docimage::NameKind;
using docimage::StoredRecord;

namespace {

// The kind by which a name that is not qualified is looked up, when a qualified one is by `whole`.
NameKind unqualified(NameKind whole, std::string_view form) {
    const auto step = docimage::hasTwoComponents(form) ? 2U : 1U;
    return static_cast<NameKind>(static_cast<std::uint32_t>(whole) + step);
}

}  // namespace

// 1. Where everything matches, only the type of a record matters.
// 2. A part of names and purposes is looked up in the lexicons of the products.
// 3. A name is looked up in tables of names, which propose the keys or hrefs to be judged.
void EntitySearch::run(const Visit& visit) {
    if (m_ext.isAllTextMatch() || m_method == AllTextSearch) {
        for (const std::uint32_t product : m_index.wantedProducts(m_ext))
            searchProductLookup(product, {}, visit);
        return;
    }
    if (m_method == NameAndPurposeSearch) {
        searchNamesAndPurposes(visit);
        return;
    }
    const Proposals proposed = proposals();
    for (auto next = proposed.begin(); next != proposed.end();) {
        const auto first = next;
        while (next != proposed.end() && next->product == first->product)
            ++next;
        searchProductLookup(first->product, {first, next}, visit);
    }
}

// What may match, in the order of the products, each once.
EntitySearch::Proposals EntitySearch::proposals() const {
    const std::string_view form = m_ext.nameForm();
    Proposals proposals;
    if (m_method == PageNameSearch) {
        propose(NameKind::HrefWhole, form, proposals);
        return proposals;
    }
    propose(NameKind::KeyWhole, form, proposals);
    if (m_method != ClassEntitySearch)
        return proposals;
    propose(NameKind::ClassWhole, form, proposals);
    std::ranges::sort(proposals, {}, &LookupIndex::Proposal::place);
    proposals.erase(std::unique(proposals.begin(), proposals.end()), proposals.end());
    return proposals;
}

void EntitySearch::propose(NameKind whole, std::string_view form, Proposals& proposals) const {
    const NameKind kind = m_ext.isExactMatch() ? whole : unqualified(whole, form);
    // What is asked for without a boundary is the last component itself.
    const std::uint32_t hash =
        docimage::nameHash(kind == whole ? form : docimage::lastTwoComponents(form));
    if (m_ext.products().empty()) {
        m_index.proposeOfAll(kind, hash, proposals);
        return;
    }
    for (const std::uint32_t product : m_index.wantedProducts(m_ext))
        m_index.propose(product, kind, hash, proposals);
}

// `proposals` are the keys or hrefs of the product, where the method has any.
void EntitySearch::searchProductLookup(std::uint32_t product,
                                       std::span<const LookupIndex::Proposal> proposals,
                                       const Visit& visit) {
    const LookupImage& lookup = m_index.lookup(product);
    NumberSet hrefs(lookup.hrefCount());
    if (m_ext.isAllTextMatch() || m_method == AllTextSearch)
        doAllTextSearch(lookup, hrefs);
    const bool asksForExactKey =
        m_method != ClassEntitySearch && m_ext.isCaseSensitive() && m_ext.isExactMatch();
    for (const auto& [ignored, number] : proposals) {
        if (m_method == PageNameSearch)
            doPageNameSearch(lookup, number, hrefs);
        else if (m_method == ClassEntitySearch)
            doClassEntitySearch(lookup, number, hrefs);
        else if (asksForExactKey)
            findExactEntries(lookup, number, hrefs);
        else
            doReferenceSearch(lookup, number, hrefs);
    }
    if (const auto found = hrefs.numbers(); !found.empty())
        visit(product, found);
}

// No name is tested but the key as it stands.
void EntitySearch::findExactEntries(const LookupImage& lookup, std::uint32_t key,
                                    NumberSet& hrefs) const {
    if (!docimage::areUnitBytesOf(lookup.key(key), m_ext.searchText()))
        return;
    const auto [first, last] = lookup.recordsOfKey(key);
    for (std::uint32_t number = first; number < last; ++number)
        if (const StoredRecord& record = lookup.record(number); isTypeAccepted(record))
            hrefs.insert(record.href);
}

// The name is tested once per key, for its first record of an accepted type, and the answer holds
// for the key's other records, even for types that would give another answer: the records of one
// key document one name, and are found together or not at all.
void EntitySearch::doReferenceSearch(const LookupImage& lookup, std::uint32_t key,
                                     NumberSet& hrefs) {
    setName(lookup.key(key));
    std::optional<bool> memo;
    const auto [first, last] = lookup.recordsOfKey(key);
    for (std::uint32_t number = first; number < last; ++number) {
        const StoredRecord& record = lookup.record(number);
        if (!isTypeAccepted(record))
            continue;
        if (!memo)
            memo = m_ext.isEntityNameMatch(name(), record.type);
        if (*memo)
            hrefs.insert(record.href);
    }
}

// 1. A type that has members is found by its own name, whatever the memo says.
// 2. Anything else is a member, found by the name of its class: the key without its last component.
//    A key without a class, or no longer than the text, cannot be a member of what is asked for.
// 3. Once the memo holds an answer for the key, the name is not asked again.
void EntitySearch::doClassEntitySearch(const LookupImage& lookup, std::uint32_t key,
                                       NumberSet& hrefs) {
    setName(lookup.key(key));
    const auto lastDot = name().rfind(u'.');
    const bool isMember =
        lastDot != std::u16string_view::npos && m_ext.searchText().size() < name().size();
    std::optional<bool> memo;
    const auto [first, last] = lookup.recordsOfKey(key);
    for (std::uint32_t number = first; number < last; ++number) {
        const StoredRecord& record = lookup.record(number);
        const bool isAccepted = isTypeAccepted(record);
        if (isClassLikeType(record.type) && m_ext.isEntityNameMatch(name(), record.type)) {
            if (isAccepted)
                hrefs.insert(record.href);
            continue;
        }
        if (!isAccepted || (!memo && !isMember))
            continue;
        if (!memo)
            memo = m_ext.isEntityNameMatch(name().substr(0, lastDot), record.type);
        if (*memo)
            hrefs.insert(record.href);
    }
}

void EntitySearch::doPageNameSearch(const LookupImage& lookup, std::uint32_t href,
                                    NumberSet& hrefs) {
    setName(lookup.hrefs()[href]);
    for (const std::uint32_t number : lookup.recordsOfHref(href)) {
        const StoredRecord& record = lookup.record(number);
        if (isTypeAccepted(record) && m_ext.isEntityNameMatch(name(), record.type)) {
            hrefs.insert(href);
            return;
        }
    }
}

void EntitySearch::searchNamesAndPurposes(const Visit& visit) {
    if (m_ext.searchText().empty())
        return;
    const TextQuery query(m_ext);
    if (query.hasParts() && m_ext.products().empty()) {
        for (auto& [product, words] : m_index.wordsOfAll(query))
            doNameAndPurposeSearch(product, query, std::move(words), visit);
        return;
    }
    for (const std::uint32_t product : m_index.wantedProducts(m_ext)) {
        auto words = query.wordsOf(m_index.lookup(product).words());
        if (!query.hasParts() || !words.empty())
            doNameAndPurposeSearch(product, query, std::move(words), visit);
    }
}

// `words` are those of the product's lexicon, where the text has any parts.
void EntitySearch::doNameAndPurposeSearch(std::uint32_t product, const TextQuery& query,
                                          TextQuery::Words words, const Visit& visit) const {
    const LookupImage& lookup = m_index.lookup(product);
    const docimage::Lexicon& lexicon = lookup.words();
    const bool isExact = query.isExact() && lexicon.isWellFormed();
    const auto proposed = query.hasParts()
                              ? TextQuery::textsWithAll(lexicon, words, lookup.recordCount())
                              : allNumbers(lookup.recordCount());
    NumberSet hrefs(lookup.hrefCount());
    StoredTextMatcher matcher(m_ext);
    for (const std::uint32_t number : proposed) {
        const StoredRecord& record = lookup.record(number);
        if (!isTypeAccepted(record))
            continue;
        if (isExact || matcher.matches(lookup.key(record.key)) ||
            matcher.matches(lookup.purpose(number)))
            hrefs.insert(record.href);
    }
    if (const auto found = hrefs.numbers(); !found.empty())
        visit(product, found);
}

void EntitySearch::doAllTextSearch(const LookupImage& lookup, NumberSet& hrefs) const {
    for (std::uint32_t number = 0; number < lookup.recordCount(); ++number)
        if (const StoredRecord& record = lookup.record(number); isTypeAccepted(record))
            hrefs.insert(record.href);
}

// Names are mostly ASCII, which is widened in one pass without a branch.
void EntitySearch::setName(std::string_view stored) {
    m_name.resize(stored.size(), boost::container::default_init);
    unsigned char all = 0;
    char16_t* const out = m_name.data();
    for (std::size_t at = 0; at < stored.size(); ++at) {
        const auto byte = static_cast<unsigned char>(stored[at]);
        all |= byte;
        out[at] = byte;
    }
    if (all >= 0x80) {
        const std::u16string text = docimage::fromUnitBytes(stored);
        m_name.assign(text.begin(), text.end());
    }
    if (m_ext.isCaseSensitive())
        return;
    const utils::LowerCased lower(name());
    const std::u16string_view folded = lower.view();
    if (folded.data() != m_name.data())
        m_name.assign(folded.begin(), folded.end());
}

}  // namespace reference::search
