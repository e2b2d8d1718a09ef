#include "reference/search/LookupIndex.hpp"

#include <algorithm>

#include "reference/search/NumberSet.hpp"

namespace reference::search {

using docimage::LookupImage;
using docimage::NameKind;
using docimage::NameTable;

LookupIndex::LookupIndex(const LookupResources& resources) {
    m_products.reserve(resources.size());
    std::size_t keys = 0;
    std::size_t hrefs = 0;
    for (const auto& [name, resource] : resources) {
        m_products.push_back({.name = name,
                              .header = resource.getHeaderInfo(),
                              .lookup = resource.getImage() ? resource.getImage()
                                                            : std::make_shared<const LookupImage>(
                                                                  resource.getItems())});
        m_firstKeys.push_back(static_cast<std::uint32_t>(keys));
        m_firstHrefs.push_back(static_cast<std::uint32_t>(hrefs));
        keys += m_products.back().lookup->keyCount();
        hrefs += m_products.back().lookup->hrefCount();
    }
    m_isJoinable = m_products.size() > 1 && std::max(keys, hrefs) <= UINT32_MAX;
}

LookupIndex::~LookupIndex() {
    for (const Kind& kind : m_kinds)
        delete kind.joined.load(std::memory_order_relaxed);
}

std::optional<std::uint32_t> LookupIndex::find(const std::u16string& name) const {
    const auto found = std::ranges::lower_bound(m_products, name, {}, &Product::name);
    if (found == m_products.end() || found->name != name)
        return std::nullopt;
    return static_cast<std::uint32_t>(found - m_products.begin());
}

std::vector<std::uint32_t> LookupIndex::wantedProducts(const ReferenceRequestExt& ext) const {
    if (ext.products().empty())
        return allNumbers(m_products.size());
    NumberSet wanted(m_products.size());
    for (const auto& name : ext.products())
        if (const auto number = find(name))
            wanted.insert(*number);
    return wanted.take();
}

void LookupIndex::propose(std::uint32_t product, NameKind kind, std::uint32_t hash,
                          Proposals& proposals) const {
    m_products[product].lookup->names(kind).find(hash, [&](std::uint32_t number) {
        proposals.push_back({.product = product, .number = number});
    });
}

void LookupIndex::proposeOfAll(NameKind kind, std::uint32_t hash, Proposals& proposals) const {
    const JoinedNames* const joined = joinedNames(kind);
    if (joined == nullptr) {
        for (std::uint32_t product = 0; product < m_products.size(); ++product)
            propose(product, kind, hash, proposals);
        return;
    }
    const auto& first = firstNumbers(kind);
    joined->names.find(hash, [&](std::uint32_t number) {
        const auto next = std::ranges::upper_bound(first, number);
        const auto product = static_cast<std::uint32_t>(next - first.begin()) - 1;
        proposals.push_back({.product = product, .number = number - first[product]});
    });
}

std::vector<JoinedLexicon::Found> LookupIndex::wordsOfAll(const TextQuery& query) const {
    return m_joinedWords.wordsOf(query, m_products.size(),
                                 [this](std::uint32_t product) -> const docimage::Lexicon& {
                                     return m_products[product].lookup->words();
                                 });
}

const std::vector<std::uint32_t>& LookupIndex::firstNumbers(NameKind kind) const {
    return kind >= NameKind::HrefWhole ? m_firstHrefs : m_firstKeys;
}

// Null while there is none. Counts the question.
const LookupIndex::JoinedNames* LookupIndex::joinedNames(NameKind kind) const {
    Kind& state = m_kinds[static_cast<std::size_t>(kind)];
    const JoinedNames* const known = state.joined.load(std::memory_order_acquire);
    if (known != nullptr || !m_isJoinable)
        return known;
    // An entry of the table is made in about the time in which a product is asked.
    const std::size_t asked =
        m_products.size() * (1 + state.questions.fetch_add(1, std::memory_order_relaxed));
    const std::size_t entries = firstNumbers(kind).back();
    if (asked < entries || state.isBeingMade.test_and_set())
        return nullptr;
    // One thread makes it, once; the others go on asking each product, as all do if it fails.
    try {
        state.joined.store(join(kind).release(), std::memory_order_release);
    } catch (...) {
        return nullptr;
    }
    return state.joined.load(std::memory_order_relaxed);
}

std::unique_ptr<const LookupIndex::JoinedNames> LookupIndex::join(NameKind kind) const {
    std::vector<NameTable::Entry> entries;
    for (std::size_t product = 0; product < m_products.size(); ++product)
        for (const NameTable::Entry& entry : m_products[product].lookup->names(kind).entries())
            entries.push_back(
                {.hash = entry.hash, .number = firstNumbers(kind)[product] + entry.number});
    docimage::ImageWriter writer;
    constexpr std::uint32_t firstSection = 0;
    NameTable::write(entries, writer, firstSection);
    auto image = writer.finish();
    const NameTable names(*image, firstSection);
    return std::make_unique<const JoinedNames>(
        JoinedNames{.image = std::move(image), .names = names});
}

}  // namespace reference::search
