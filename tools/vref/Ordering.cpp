#include "vref/Ordering.hpp"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "fl/i18n/utf.hpp"
#include "property/DeprecationStatus.hpp"
#include "property/FunctionType.hpp"
#include "property/RefEntityType.hpp"
#include "reference/api/comparator/CompoundReferenceComparator.hpp"
#include "reference/api/comparator/DeprecatedOrderComparator.hpp"
#include "reference/api/comparator/EntityDepthOrderComparator.hpp"
#include "reference/api/comparator/EntityMatchComparator.hpp"
#include "reference/api/comparator/EntityNameMatchComparator.hpp"
#include "reference/api/comparator/EntityTypeMatchComparator.hpp"
#include "reference/api/comparator/EntityTypeOrderComparator.hpp"
#include "reference/api/comparator/FunctionTypeOrderComparator.hpp"
#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/comparator/PageNameMatchComparator.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "reference/api/comparator/preferredOrder.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/ExitStatus.hpp"

namespace reference::tools {
namespace {

using namespace api::comparator;
using api::EntityCaseSensitivity;
using api::ReferenceData;
using property::DeprecationStatus;
using property::FunctionType;
using property::RefEntity;
using property::RefEntityType;

// The smallest key of a result's entities, as it is shown; "no entity" if there are none.
template <typename KeyOf, typename Tell>
std::string smallest(const ReferenceData& data, KeyOf keyOf, Tell tell) {
    const auto& entities = data.getRefItem().getRefEntities();
    if (entities.empty())
        return "no entity";
    const auto least = std::ranges::min_element(entities, {}, keyOf);
    return tell(keyOf(*least));
}

std::string depthOf(const ReferenceData& data) {
    return smallest(
        data, [](const RefEntity& entity) { return std::ranges::count(entity.getName(), u'.'); },
        [](auto depth) { return std::to_string(depth); });
}

std::string typeOf(const ReferenceData& data) {
    return smallest(
        data,
        [](const RefEntity& entity) {
            return static_cast<std::int32_t>(entity.getRefEntityType());
        },
        [](auto type) {
            return RefEntityType::enumToString(static_cast<RefEntityType::Value>(type));
        });
}

std::string functionTypeOf(const ReferenceData& data) {
    return smallest(
        data,
        [](const RefEntity& entity) { return static_cast<std::int32_t>(entity.getFunctionType()); },
        [](auto type) {
            return FunctionType::enumToString(static_cast<FunctionType::Value>(type));
        });
}

std::string statusOf(const ReferenceData& data) {
    return DeprecationStatus::enumToString(data.getRefItem().getDeprecationStatus());
}

std::string folderOf(const ReferenceData& data) {
    return fl::i18n::toUtf8(data.getHeaderInfo().getHelpFolder());
}

std::string hrefOf(const ReferenceData& data) {
    return fl::i18n::toUtf8(data.getRefItem().getHref());
}

std::string namesIn(const ReferenceData& data) {
    std::string names;
    for (const auto& entity : data.getRefItem().getRefEntities())
        names += (names.empty() ? "" : ", ") + fl::i18n::toUtf8(entity.getName());
    return names;
}

std::vector<OrderKey> preferredKeys();

std::optional<RefEntityType::Value> typeNamed(std::string_view text) {
    return RefEntityType::fromString(text);
}

// The key of a text without a value; nothing when the text names no key.
std::optional<OrderKey> plainKey(const std::string& text) {
    if (text == "index")
        return OrderKey{text, IndexOrderComparator(), hrefOf};
    if (text == "preferred")
        return OrderKey{text, PreferredOrderComparator(), {}, preferredKeys()};
    if (text == "deprecated")
        return OrderKey{text, DeprecatedOrderComparator(), statusOf};
    if (text == "depth")
        return OrderKey{text, EntityDepthOrderComparator(), depthOf};
    if (text == "type")
        return OrderKey{text, EntityTypeOrderComparator(), typeOf};
    if (text == "function-type")
        return OrderKey{text, FunctionTypeOrderComparator(), functionTypeOf};
    return std::nullopt;
}

// The key of "name=value"; nothing when no key has that name or the value does not suit it.
std::optional<OrderKey> matchKey(const std::string& text, const std::string& name,
                                 const std::string& value,
                                 EntityCaseSensitivity::Value caseSensitivity) {
    if (name == "name")
        return OrderKey{text, EntityNameMatchComparator(fromCommandLine(value), caseSensitivity),
                        namesIn};
    if (name == "page")
        return OrderKey{text, PageNameMatchComparator(fromCommandLine(value), caseSensitivity),
                        hrefOf};
    if (name == "product")
        return OrderKey{text, ProductMatchComparator(fromCommandLine(value)), folderOf};
    if (name == "type") {
        if (const auto type = typeNamed(value))
            return OrderKey{text, EntityTypeMatchComparator(*type), typeOf};
    }
    if (name == "entity") {
        const auto colon = value.find(':');
        const auto type = typeNamed(value.substr(0, colon));
        if (colon != std::string::npos && type)
            return OrderKey{text,
                            EntityMatchComparator(fromCommandLine(value.substr(colon + 1)), *type,
                                                  caseSensitivity),
                            namesIn};
    }
    return std::nullopt;
}

std::optional<OrderKey> findKey(const std::string& text,
                                EntityCaseSensitivity::Value caseSensitivity) {
    const auto equals = text.find('=');
    return equals == std::string::npos
               ? plainKey(text)
               : matchKey(text, text.substr(0, equals), text.substr(equals + 1), caseSensitivity);
}

OrderKey keyNamed(const std::string& text, EntityCaseSensitivity::Value caseSensitivity) {
    auto key = findKey(text, caseSensitivity);
    if (!key)
        throw UnusableError("There is no order \"" + text +
                            "\"; there is: " + Ordering::knownKeys() + ".");
    return std::move(*key);
}

// The library's keys of the preferred order, each with what the key of the same name here sees of a
// result.
std::vector<OrderKey> preferredKeys() {
    std::vector<OrderKey> keys;
    for (const auto& preferred : preferredOrder) {
        const std::string name(preferred.name);
        OrderKey key{"preferred, by " + name,
                     [preferred](const ReferenceData& a, const ReferenceData& b) {
                         return preferred.goesBefore(a, b);
                     },
                     {}};
        if (auto known = findKey(name, EntityCaseSensitivity::Sensitive))
            key.valueOf = std::move(known->valueOf);
        keys.push_back(std::move(key));
    }
    return keys;
}

OrderKey preferenceKey(const std::vector<std::u16string>& products) {
    const auto placeOf = [products](const ReferenceData& data) {
        return std::ranges::find(products, data.getHeaderInfo().getShortName()) - products.begin();
    };
    return {"prefer",
            [placeOf](const ReferenceData& a, const ReferenceData& b) {
                return placeOf(a) < placeOf(b);
            },
            [](const ReferenceData& data) {
                return fl::i18n::toUtf8(data.getHeaderInfo().getShortName());
            }};
}

// The first key that tells the two apart, or within a chain the key of the chain; null when all
// tie.
const OrderKey* decidingKey(const std::vector<OrderKey>& keys, const ReferenceData& a,
                            const ReferenceData& b) {
    const auto key = std::ranges::find_if(
        keys, [&](const OrderKey& candidate) { return candidate.comparator(a, b); });
    if (key == keys.end())
        return nullptr;
    const OrderKey* const inChain = decidingKey(key->chain, a, b);
    return inChain != nullptr ? inChain : &*key;
}

}  // namespace

std::string Ordering::knownKeys() {
    return "index, preferred, deprecated, depth, type, function-type, name=NAME, "
           "entity=TYPE:NAME, type=TYPE, page=PAGE, product=FOLDER";
}

Ordering Ordering::parse(const std::vector<std::string>& texts,
                         EntityCaseSensitivity::Value caseSensitivity) {
    Ordering ordering;
    for (const auto& list : texts)
        for (std::size_t start = 0; start <= list.size();) {
            const auto comma = std::min(list.find(',', start), list.size());
            ordering.m_keys.push_back(keyNamed(list.substr(start, comma - start), caseSensitivity));
            start = comma + 1;
        }
    return ordering;
}

Ordering Ordering::forPerson(const std::u16string& name,
                             EntityCaseSensitivity::Value caseSensitivity,
                             const std::vector<std::u16string>& preferredProducts) {
    Ordering ordering;
    if (!name.empty())
        ordering.m_keys.push_back({"name=" + fl::i18n::toUtf8(name),
                                   EntityNameMatchComparator(name, caseSensitivity), namesIn});
    for (const char* text : {"preferred", "depth"})
        ordering.m_keys.push_back(keyNamed(text, caseSensitivity));
    if (!preferredProducts.empty())
        ordering.m_keys.push_back(preferenceKey(preferredProducts));
    return ordering;
}

api::RefRequestComparator Ordering::comparator() const {
    std::vector<api::RefRequestComparator> comparators;
    std::ranges::transform(m_keys, std::back_inserter(comparators), &OrderKey::comparator);
    return CompoundReferenceComparator(std::move(comparators));
}

std::string Ordering::explain(const ReferenceData& a, const ReferenceData& b) const {
    const OrderKey* const key = decidingKey(m_keys, a, b);
    if (key == nullptr)
        return "tied with the next: as they were found";
    std::string text = "before the next by " + key->label;
    if (key->valueOf)
        text += ": " + key->valueOf(a) + " before " + key->valueOf(b);
    return text;
}

}  // namespace reference::tools
