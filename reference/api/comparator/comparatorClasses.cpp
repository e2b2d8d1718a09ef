// The one list of the comparators: what scripts see of each, a line or a function for each.
#include "reference/api/comparator/comparatorClasses.hpp"

#include <utility>
#include <vector>

#include "foundation/core/NeverDestroyed.hpp"
#include "property/hostNames.hpp"
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
#include "reference/api/hostNames.hpp"
#include "reference/api/memberShape.hpp"
#include "zorb/ClassDescription.hpp"

namespace reference::api::comparator {
namespace {

using foundation::core::NeverDestroyed;
using property::RefEntityType;
using zorb::ClassDescription;
using zorb::HostName;
using zorb::Shape;

// A comparator, of which scripts may make objects.
template <typename Comparator>
ClassDescription<Comparator> describe(const char* documentation) {
    ClassDescription<Comparator> description(documentation);
    description.constructible();
    return description;
}

ClassDescription<CompoundReferenceComparator> compound() {
    auto description = describe<CompoundReferenceComparator>(
        "A chain of comparators: each one decides only what those before it leave undecided.");
    description.value(
        "Comparators", {.kind = Shape::CellArray, .mayBeNull = true},
        &CompoundReferenceComparator::getComparatorsProperty,
        &CompoundReferenceComparator::setComparatorsProperty,
        "The comparators, in order of precedence. Null until it is set. They are copied when they "
        "are set; later changes to them count only when they are set again.");
    return description;
}

template <typename Comparator>
void describeCaseSensitivity(ClassDescription<Comparator>& description) {
    description.value("EntityCaseSensitivity", memberShape<EntityCaseSensitivity>(),
                      &Comparator::getEntityCaseSensitivityProperty,
                      &Comparator::setEntityCaseSensitivityProperty, "Whether letter case counts.");
}

template <typename Comparator>
void describeEntityName(ClassDescription<Comparator>& description) {
    description.text("EntityName", &Comparator::getEntityNameProperty,
                     &Comparator::setEntityNameProperty, "The whole qualified name to match.");
}

template <typename Comparator>
void describeRefEntityType(ClassDescription<Comparator>& description) {
    description.value("RefEntityType", memberShape<RefEntityType>(),
                      &Comparator::getRefEntityTypeProperty, &Comparator::setRefEntityTypeProperty,
                      "The kind of entity to match.");
}

ClassDescription<EntityMatchComparator> entityMatch() {
    auto description = describe<EntityMatchComparator>(
        "Orders results that document an entity of the given kind and name before all others.");
    describeEntityName(description);
    describeRefEntityType(description);
    describeCaseSensitivity(description);
    return description;
}

ClassDescription<EntityNameMatchComparator> entityNameMatch() {
    auto description = describe<EntityNameMatchComparator>(
        "Orders results that document an entity of the given name before all others.");
    describeEntityName(description);
    describeCaseSensitivity(description);
    return description;
}

ClassDescription<EntityTypeMatchComparator> entityTypeMatch() {
    auto description = describe<EntityTypeMatchComparator>(
        "Orders results that document an entity of the given kind before all others.");
    describeRefEntityType(description);
    return description;
}

ClassDescription<PageNameMatchComparator> pageNameMatch() {
    auto description =
        describe<PageNameMatchComparator>("Orders the results of a page before all others.");
    description.text("PageName", &PageNameMatchComparator::getPageNameProperty,
                     &PageNameMatchComparator::setPageNameProperty,
                     "The page, without folder and without \".html\".");
    describeCaseSensitivity(description);
    return description;
}

ClassDescription<ProductMatchComparator> productMatch() {
    auto description = describe<ProductMatchComparator>(
        "Orders results whose help folder is the given one before all others.");
    description.text("ProductName", &ProductMatchComparator::getProductNameProperty,
                     &ProductMatchComparator::setProductNameProperty, "The help folder to match.");
    return description;
}

// Makes the class known to the object system, and to those who take comparators.
template <typename Comparator>
ComparatorClass known(ClassDescription<Comparator> description) {
    description.registerClass();
    return {.name = HostName<Comparator>::id().str(),
            .copyOf = [](const COSInterfacePtr& object) -> RefRequestComparator {
                return Comparator(omGetNative<Comparator>(object));
            }};
}

}  // namespace

std::span<const ComparatorClass> comparatorClasses() {
    static const NeverDestroyed<std::vector<ComparatorClass>> all(std::vector<ComparatorClass>{
        known(compound()),
        known(describe<DeprecatedOrderComparator>(
            "Orders entities that are still to be used before those that are not.")),
        known(entityMatch()),
        known(entityNameMatch()),
        known(entityTypeMatch()),
        known(describe<EntityTypeOrderComparator>("Orders by the number of the kind of entity.")),
        known(
            describe<FunctionTypeOrderComparator>("Orders by the number of the kind of function.")),
        known(
            describe<IndexOrderComparator>("Leaves the results in the order they were found in.")),
        known(pageNameMatch()),
        known(describe<PreferredOrderComparator>(
            "The usual order of help results: what is still to be used first, then the product's "
            "own pages, then by kind of entity and of function.")),
        known(productMatch()),
        known(describe<EntityDepthOrderComparator>("Orders less qualified names first.")),
    });
    return *all;
}

}  // namespace reference::api::comparator
