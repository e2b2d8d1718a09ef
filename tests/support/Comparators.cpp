#include "support/Comparators.hpp"

#include <algorithm>
#include <functional>
#include <limits>
#include <map>
#include <memory>
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
#include "support/LookupModel.hpp"

namespace reference::tests {
namespace {

using namespace api::comparator;
using api::EntityCaseSensitivity;
using api::ReferenceData;
using api::RefRequestComparator;
using property::RefEntity;
using property::RefEntityType;
using Fields = ComparatorFields;
using Rank = std::vector<std::int64_t>;
using Text = std::u16string;

const std::string package = "veltra.internal.reference.api.comparator";
const std::string compoundName = "CompoundReferenceComparator";

// 0 goes before 1.
std::int64_t unless(bool isMatch) {
    return isMatch ? 0 : 1;
}

bool hasEntity(const ReferenceData& result, const std::function<bool(const RefEntity&)>& matches) {
    return std::ranges::any_of(result.getRefItem().getRefEntities(), matches);
}

// Results without entities rank after all that have some.
std::int64_t smallest(const ReferenceData& result,
                      const std::function<std::int64_t(const RefEntity&)>& key) {
    std::int64_t found = std::numeric_limits<std::int64_t>::max();
    for (const auto& entity : result.getRefItem().getRefEntities())
        found = std::min(found, key(entity));
    return found;
}

std::int64_t asSigned(std::uint32_t number) {
    return number < 0x80000000U ? std::int64_t{number} : std::int64_t{number} - 0x100000000;
}

Text folded(const Text& text, const Fields& fields) {
    return fields.caseSensitivity == 0 ? text : modelLowerCase(text);
}

bool isNamed(const RefEntity& entity, const Fields& fields) {
    return folded(entity.getName(), fields) == folded(fields.entityName, fields);
}

bool isOfType(const RefEntity& entity, const Fields& fields) {
    return entity.getRefEntityType() == fields.refEntityType;
}

bool isPage(const Fields& fields, const ReferenceData& result) {
    const Text& href = result.getRefItem().getHref();
    Text file = href.substr(href.find_last_of(u'/') + 1);
    const bool isAscii = std::ranges::none_of(file, [](char16_t unit) { return unit > 127; });
    if (fields.caseSensitivity != 0 && isAscii)
        file = modelLowerCase(file).substr(0, 1024);
    return file == folded(fields.pageName, fields) + u".html";
}

Rank typeRank(const Fields& /*fields*/, const ReferenceData& r) {
    return {smallest(r, [](const RefEntity& e) { return asSigned(e.getRefEntityType()); })};
}
Rank functionTypeRank(const Fields& /*fields*/, const ReferenceData& r) {
    return {smallest(r, [](const RefEntity& e) { return asSigned(e.getFunctionType()); })};
}
Rank statusRank(const Fields& /*fields*/, const ReferenceData& r) {
    return {asSigned(r.getRefItem().getDeprecationStatus())};
}

Rank preferredRank(const Fields& fields, const ReferenceData& r) {
    const Text& folder = r.getHeaderInfo().getHelpFolder();
    return {statusRank(fields, r)[0], unless(folder == u"veltra"), unless(folder == u"pendrake"),
            typeRank(fields, r)[0], functionTypeRank(fields, r)[0]};
}

Rank compoundRank(const Fields& fields, const ReferenceData& r) {
    Rank rank;
    for (const auto& one : fields.comparators)
        for (const auto number : modelRank(one, r))
            rank.push_back(number);
    return rank;
}

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

// What the tests know of a class: how its constructor is called, and by what it ranks results.
// Independent of the library's own list, so that a class that stands there under another's name is
// found, and of its rules.
struct Known {
    std::function<RefRequestComparator(const Fields&)> make;
    std::function<Rank(const Fields&, const ReferenceData&)> rank;
};
const std::map<std::string, Known>& knownClasses() {
    static const std::map<std::string, Known> all = {
        {compoundName, {compound, compoundRank}},
        {"DeprecatedOrderComparator", {stateless<DeprecatedOrderComparator>, statusRank}},
        {"EntityDepthOrderComparator",
         {stateless<EntityDepthOrderComparator>,
          [](const Fields&, const ReferenceData& r) -> Rank {
              return {smallest(
                  r, [](const RefEntity& e) { return std::ranges::count(e.getName(), u'.'); })};
          }}},
        {"EntityMatchComparator",
         {[](const Fields& f) {
              return EntityMatchComparator(f.entityName, f.refEntityType, f.caseSensitivity);
          },
          [](const Fields& f, const ReferenceData& r) -> Rank {
              return {unless(hasEntity(
                  r, [&](const RefEntity& e) { return isOfType(e, f) && isNamed(e, f); }))};
          }}},
        {"EntityNameMatchComparator",
         {[](const Fields& f) {
              return EntityNameMatchComparator(f.entityName, f.caseSensitivity);
          },
          [](const Fields& f, const ReferenceData& r) -> Rank {
              return {unless(hasEntity(r, [&](const RefEntity& e) { return isNamed(e, f); }))};
          }}},
        {"EntityTypeMatchComparator",
         {[](const Fields& f) { return EntityTypeMatchComparator(f.refEntityType); },
          [](const Fields& f, const ReferenceData& r) -> Rank {
              return {unless(hasEntity(r, [&](const RefEntity& e) { return isOfType(e, f); }))};
          }}},
        {"EntityTypeOrderComparator", {stateless<EntityTypeOrderComparator>, typeRank}},
        {"FunctionTypeOrderComparator", {stateless<FunctionTypeOrderComparator>, functionTypeRank}},
        {"IndexOrderComparator",
         {stateless<IndexOrderComparator>,
          [](const Fields&, const ReferenceData&) -> Rank { return {0}; }}},
        {"PageNameMatchComparator",
         {[](const Fields& f) { return PageNameMatchComparator(f.pageName, f.caseSensitivity); },
          [](const Fields& f, const ReferenceData& r) -> Rank { return {unless(isPage(f, r))}; }}},
        {"PreferredOrderComparator", {stateless<PreferredOrderComparator>, preferredRank}},
        {"ProductMatchComparator",
         {[](const Fields& f) { return ProductMatchComparator(f.productName); },
          [](const Fields& f, const ReferenceData& r) -> Rank {
              return {unless(r.getHeaderInfo().getHelpFolder() == f.productName)};
          }}},
    };
    return all;
}

const Known& knownClass(const std::string& className) {
    const auto found = knownClasses().find(className);
    if (found == knownClasses().end())
        throw std::logic_error("tests/support/Comparators.cpp does not know the class " +
                               className);
    return found->second;
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
    return {className, makeAsAScript(className, fields), makeNatively(className, fields),
            std::make_shared<const Fields>(fields)};
}

Fields fieldsAtRandom(Generator& generator) {
    // Half of the names and types are such that results often have them.
    return {.entityName = generator.chance(50)
                              ? generator.pick<std::u16string>({u"a", u"A", u"Fit", u""})
                              : generator.name(),
            .pageName = generator.pick<std::u16string>({u"a", u"Fit", u""}),
            .productName = generator.pick(productNames),
            .refEntityType = generator.chance(50) ? RefEntityType::Function : generator.type(),
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
    return knownClass(className).make(fields);
}

Rank modelRank(const ComparatorPair& comparator, const ReferenceData& result) {
    return knownClass(comparator.className).rank(*comparator.fields, result);
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
