#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "property/RefEntityType.hpp"
#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/RefRequestComparator.hpp"
#include "reference/api/ReferenceData.hpp"
#include "support/Generator.hpp"
#include "vq/vqArray.hpp"

namespace reference::tests {

struct ComparatorFields;

// The same comparator twice: as a script makes it and sets it up, and natively; and what both were
// made with.
struct ComparatorPair {
    std::string className;
    vqArrayPtr object;
    api::RefRequestComparator native;
    std::shared_ptr<const ComparatorFields> fields;
};

// What a comparator is made with; each takes what it has properties for.
struct ComparatorFields {
    std::u16string entityName;
    std::u16string pageName;
    std::u16string productName;
    property::RefEntityType::Value refEntityType = property::RefEntityType::Unknown;
    api::EntityCaseSensitivity::Value caseSensitivity = api::EntityCaseSensitivity::Sensitive;
    std::vector<ComparatorPair> comparators;
};

// The comparator classes that scripts see, without their package, in alphabetical order.
[[nodiscard]] std::vector<std::string> comparatorClassNames();

// Throw std::logic_error for a class, or a property, that Comparators.cpp does not know yet.
[[nodiscard]] api::RefRequestComparator makeNatively(const std::string& className,
                                                     const ComparatorFields& fields);
[[nodiscard]] vqArrayPtr makeAsAScript(const std::string& className,
                                       const ComparatorFields& fields);

// By what a comparator ranks a result, by the plainest reading of its rule: results are in the
// order of their ranks, number by number. Shares no code with the library's comparators.
[[nodiscard]] std::vector<std::int64_t> modelRank(const ComparatorPair& comparator,
                                                  const api::ReferenceData& result);

// One of every class, made with fields at random. The compound holds some of the others and another
// compound.
[[nodiscard]] std::vector<ComparatorPair> comparatorsAtRandom(Generator& generator);

}  // namespace reference::tests
