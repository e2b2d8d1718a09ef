#include "reference/search/LookupIndex.hpp"

#include <algorithm>

#include "docimage/JoinedNames.hpp"
#include "reference/search/NumberSet.hpp"

namespace reference::search {

using docimage::JoinedNames;
using docimage::LookupImage;
using docimage::NameKind;
using docimage::NameTable;

LookupIndex::LookupIndex(const LookupResources& resources, const docparser::InstalledIndex& known)
    : m_sources(resources.size()), m_questions(known.questions) {
    m_openedQuestions.store(m_questions.get(), std::memory_order_relaxed);
    m_products.reserve(resources.size());
    for (const auto& [name, resource] : resources) {
        m_sources[m_products.size()].resource = resource;
        m_products.push_back({.name = name, .header = resource.getHeaderInfo()});
    }
    if (const auto& names = known.names) {
        m_firstKeys = names->firstKeys();
        m_firstHrefs = names->firstHrefs();
        for (std::uint32_t kind = 0; kind < docimage::nameKinds; ++kind)
            m_kinds[kind].joined.store(
                new JoinedTable{.owner = names, .names = names->names(static_cast<NameKind>(kind))},
                std::memory_order_relaxed);
        return;
    }
    std::size_t keys = 0;
    std::size_t hrefs = 0;
    for (std::uint32_t product = 0; product < m_products.size(); ++product) {
        m_firstKeys.push_back(static_cast<std::uint32_t>(keys));
        m_firstHrefs.push_back(static_cast<std::uint32_t>(hrefs));
        keys += lookup(product).keyCount();
        hrefs += lookup(product).hrefCount();
    }
    m_isJoinable = m_products.size() > 1 && std::max(keys, hrefs) <= UINT32_MAX;
}

LookupIndex::~LookupIndex() = default;

// Called again after it threw.
const LookupImage& LookupIndex::open(Source& source) {
    source.once.call([&] {
        const auto& image = source.resource.getImage();
        source.image =
            image ? image : std::make_shared<const LookupImage>(source.resource.getItems());
        source.opened.store(source.image.get(), std::memory_order_release);
    });
    return *source.image;
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
    lookup(product).names(kind).find(hash, [&](std::uint32_t number) {
        proposals.push_back({.product = product, .number = number});
    });
}

void LookupIndex::proposeOfAll(NameKind kind, std::uint32_t hash, Proposals& proposals) const {
    const JoinedTable* const joined = joinedTable(kind);
    if (joined == nullptr) {
        for (std::uint32_t product = 0; product < m_products.size(); ++product)
            propose(product, kind, hash, proposals);
        return;
    }
    const auto& first = firstNumbers(kind);
    auto next = first.begin();
    joined->names.find(hash, [&](std::uint32_t number) {
        // Numbers ascend.
        next = std::upper_bound(next, first.end(), number);
        const auto product = static_cast<std::uint32_t>(next - first.begin()) - 1;
        proposals.push_back({.product = product, .number = number - first[product]});
    });
}

std::vector<JoinedLexicon::Found> LookupIndex::wordsOfAll(const TextQuery& query) const {
    return m_joinedWords.wordsOf(query, m_products.size(),
                                 [this](std::uint32_t product) -> const docimage::Lexicon& {
                                     return lookup(product).words();
                                 });
}

const std::vector<std::uint32_t>& LookupIndex::firstNumbers(NameKind kind) const {
    return docimage::isOfHrefs(kind) ? m_firstHrefs : m_firstKeys;
}

// Null while there is none. Counts the question.
const LookupIndex::JoinedTable* LookupIndex::joinedTable(NameKind kind) const {
    Kind& state = m_kinds[static_cast<std::size_t>(kind)];
    const JoinedTable* const known = state.joined.load(std::memory_order_acquire);
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

std::unique_ptr<const LookupIndex::JoinedTable> LookupIndex::join(NameKind kind) const {
    docimage::ImageWriter writer;
    constexpr std::uint32_t firstSection = 0;
    NameTable::write(JoinedNames::join(allLookups(), kind, firstNumbers(kind)), writer,
                     firstSection);
    const auto image = writer.finish();
    return std::make_unique<const JoinedTable>(
        JoinedTable{.owner = image, .names = NameTable(*image, firstSection)});
}

std::vector<const LookupImage*> LookupIndex::allLookups() const {
    std::vector<const LookupImage*> lookups;
    lookups.reserve(m_products.size());
    for (std::uint32_t product = 0; product < m_products.size(); ++product)
        lookups.push_back(&lookup(product));
    return lookups;
}

// Called again after it threw.
const docimage::QuestionIndex& LookupIndex::makeQuestions() const {
    m_questionsMade.call([this] {
        docimage::ImageWriter writer;
        constexpr std::uint32_t firstSection = 0;
        docimage::QuestionIndex::write(allLookups(), writer, firstSection);
        m_questions =
            std::make_shared<const docimage::QuestionIndex>(writer.finish(), firstSection);
        m_openedQuestions.store(m_questions.get(), std::memory_order_release);
    });
    return *m_questions;
}

}  // namespace reference::search
