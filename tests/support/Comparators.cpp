#include "support/Comparators.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <stdexcept>
#include <utility>

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
#include "support/HostValues.hpp"

namespace reference::tests {
namespace {

using namespace api::comparator;
using api::EntityCaseSensitivity;
using api::RefRequestComparator;
using property::RefEntityType;
using Fields = ComparatorFields;

const std::string package = "veltra.internal.reference.api.comparator";
const std::string compoundName = "CompoundReferenceComparator";

template <typename Comparator>
RefRequestComparator stateless(const Fields& /*fields*/) {
    return Comparator();
}

RefRequestComparator compound(const Fields& fields) {
    std::vector<RefRequestComparator> chain;
    for (const auto& one : fields.comparators)
        chain.push_back(one.native);
    return CompoundReferenceComparator(std::move(chain));
}

// By what is left when each class's constructor is called by hand: independent of the library's own
// list, so that a class that stands there under another's name is found.
using Make = std::function<RefRequestComparator(const Fields&)>;
const std::map<std::string, Make>& makers() {
    static const std::map<std::string, Make> all = {
        {compoundName, compound},
        {"DeprecatedOrderComparator", stateless<DeprecatedOrderComparator>},
        {"EntityDepthOrderComparator", stateless<EntityDepthOrderComparator>},
        {"EntityMatchComparator",
         [](const Fields& f) {
             return EntityMatchComparator(f.entityName, f.refEntityType, f.caseSensitivity);
         }},
        {"EntityNameMatchComparator",
         [](const Fields& f) {
             return EntityNameMatchComparator(f.entityName, f.caseSensitivity);
         }},
        {"EntityTypeMatchComparator",
         [](const Fields& f) { return EntityTypeMatchComparator(f.refEntityType); }},
        {"EntityTypeOrderComparator", stateless<EntityTypeOrderComparator>},
        {"FunctionTypeOrderComparator", stateless<FunctionTypeOrderComparator>},
        {"IndexOrderComparator", stateless<IndexOrderComparator>},
        {"PageNameMatchComparator",
         [](const Fields& f) { return PageNameMatchComparator(f.pageName, f.caseSensitivity); }},
        {"PreferredOrderComparator", stateless<PreferredOrderComparator>},
        {"ProductMatchComparator",
         [](const Fields& f) { return ProductMatchComparator(f.productName); }},
    };
    return all;
}

vqArrayPtr valueOf(const std::string& property, const Fields& fields) {
    if (property == "EntityName")
        return matrix::createString(fields.entityName);
    if (property == "PageName")
        return matrix::createString(fields.pageName);
    if (property == "ProductName")
        return matrix::createString(fields.productName);
    if (property == "RefEntityType")
        return members<RefEntityType>({fields.refEntityType});
    if (property == "EntityCaseSensitivity")
        return members<EntityCaseSensitivity>({fields.caseSensitivity});
    if (property == "Comparators") {
        std::vector<vqArrayPtr> cells;
        for (const auto& one : fields.comparators)
            cells.push_back(one.object);
        return matrix::createCellRow(std::move(cells));
    }
    throw std::logic_error("tests/support/Comparators.cpp does not know the property " + property);
}

ComparatorPair makePair(const std::string& className, const Fields& fields) {
    return {className, makeAsAScript(className, fields), makeNatively(className, fields)};
}

Fields fieldsAtRandom(Generator& generator) {
    return {.entityName = generator.name(),
            .pageName = generator.pick<std::u16string>({u"a", u"Fit", u""}),
            .productName = generator.pick(productNames),
            .refEntityType = generator.type(),
            .caseSensitivity = static_cast<EntityCaseSensitivity::Value>(generator.below(3)),
            .comparators = {}};
}

}  // namespace

std::vector<std::string> comparatorClassNames() {
    std::vector<std::string> names;
    for (const auto* one : zorb::COSClass::getClasses())
        if (one->describe().packageName == package)
            names.push_back(one->describe().name);
    return names;
}

RefRequestComparator makeNatively(const std::string& className, const Fields& fields) {
    const auto found = makers().find(className);
    if (found == makers().end())
        throw std::logic_error("tests/support/Comparators.cpp does not know how a " + className +
                               " is made natively");
    return found->second(fields);
}

vqArrayPtr makeAsAScript(const std::string& className, const Fields& fields) {
    auto value = construct(zorb::internal::makeInterned(package + "." + className));
    const auto object = omGetArrayElement(value.get(), 0);
    for (const auto& property : object->getClass().describe().properties)
        property.set(object->getNative(), valueOf(property.name, fields).get());
    return value;
}

std::vector<ComparatorPair> comparatorsAtRandom(Generator& generator) {
    std::vector<ComparatorPair> all;
    for (const auto& className : comparatorClassNames())
        if (className != compoundName)
            all.push_back(makePair(className, fieldsAtRandom(generator)));
    Fields inner;
    Fields outer;
    for (int i = 0; i < 3; ++i) {
        inner.comparators.push_back(generator.pick(all));
        outer.comparators.push_back(generator.pick(all));
    }
    outer.comparators.insert(outer.comparators.begin() + 1, makePair(compoundName, inner));
    all.push_back(makePair(compoundName, outer));
    return all;
}

}  // namespace reference::tests
