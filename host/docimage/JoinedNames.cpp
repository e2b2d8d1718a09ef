#include "docimage/JoinedNames.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace reference::docimage {
namespace {

// The sections of an image, counted from its first.
enum NamesSection : std::uint32_t {
    JoinedFirstKeys = 0,
    JoinedFirstHrefs = 1,
    JoinedKinds = 2,  // 2 sections a kind
};

// Numbers that ascend from 0.
std::vector<std::uint32_t> firstNumbersIn(const Image& image, std::uint32_t section) {
    const ImageArray<std::uint32_t> stored(image, section);
    const auto numbers = stored.range(0, stored.size());
    if (!std::ranges::is_sorted(numbers) || (!numbers.empty() && numbers.front() != 0))
        throw DamagedImage("The first numbers of an image do not ascend from 0.");
    return {numbers.begin(), numbers.end()};
}

}  // namespace

JoinedNames::JoinedNames(std::shared_ptr<const Image> image, std::uint32_t firstSection)
    : m_image(std::move(image)),
      m_firstKeys(firstNumbersIn(*m_image, firstSection + JoinedFirstKeys)),
      m_firstHrefs(firstNumbersIn(*m_image, firstSection + JoinedFirstHrefs)) {
    if (m_firstKeys.size() != m_firstHrefs.size())
        throw DamagedImage("An image has first keys and first hrefs of different products.");
    for (std::uint32_t kind = 0; kind < nameKinds; ++kind)
        m_names[kind] =
            NameTable(*m_image, firstSection + JoinedKinds + kind * NameTable::sections);
}

JoinedNames::~JoinedNames() = default;

void JoinedNames::write(std::span<const std::shared_ptr<const LookupImage>> products,
                        ImageWriter& writer, std::uint32_t firstSection) {
    std::vector<const LookupImage*> lookups;
    std::vector<std::uint32_t> firstKeys;
    std::vector<std::uint32_t> firstHrefs;
    std::size_t keys = 0;
    std::size_t hrefs = 0;
    for (const auto& product : products) {
        lookups.push_back(product.get());
        firstKeys.push_back(toOffset(keys));
        firstHrefs.push_back(toOffset(hrefs));
        keys += product->keyCount();
        hrefs += product->hrefCount();
    }
    static_cast<void>(toOffset(std::max(keys, hrefs)));
    writer.addArray(firstSection + JoinedFirstKeys, firstKeys);
    writer.addArray(firstSection + JoinedFirstHrefs, firstHrefs);
    for (std::uint32_t kind = 0; kind < nameKinds; ++kind) {
        const auto name = static_cast<NameKind>(kind);
        NameTable::write(join(lookups, name, isOfHrefs(name) ? firstHrefs : firstKeys), writer,
                         firstSection + JoinedKinds + kind * NameTable::sections);
    }
}

std::vector<NameTable::Entry> JoinedNames::join(std::span<const LookupImage* const> products,
                                                NameKind kind,
                                                std::span<const std::uint32_t> firstNumbers) {
    std::vector<NameTable::Entry> entries;
    for (std::size_t product = 0; product < products.size(); ++product)
        for (const NameTable::Entry& entry : products[product]->names(kind).entries())
            entries.push_back({.hash = entry.hash, .number = firstNumbers[product] + entry.number});
    return entries;
}

}  // namespace reference::docimage
