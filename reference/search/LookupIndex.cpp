#include "reference/search/LookupIndex.hpp"

#include <algorithm>

#include "reference/search/NumberSet.hpp"

namespace reference::search {

using docimage::LookupImage;
using docimage::NameKind;

LookupIndex::LookupIndex(const LookupResources& resources) {
    m_products.reserve(resources.size());
    for (const auto& [name, resource] : resources)
        m_products.push_back({.name = name,
                              .header = resource.getHeaderInfo(),
                              .lookup = std::make_shared<const LookupImage>(resource.getItems())});
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
                          std::vector<Proposal>& proposals) const {
    m_products[product].lookup->names(kind).find(hash, [&](std::uint32_t number) {
        proposals.push_back({.product = product, .number = number});
    });
}

void LookupIndex::proposeOfAll(NameKind kind, std::uint32_t hash,
                               std::vector<Proposal>& proposals) const {
    for (std::uint32_t product = 0; product < m_products.size(); ++product)
        propose(product, kind, hash, proposals);
}

}  // namespace reference::search
