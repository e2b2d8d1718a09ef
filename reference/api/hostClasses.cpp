// The library's classes as the scripting language sees them, one table for each.
#include "property/hostNames.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/ReferenceRequest.hpp"
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
#include "zorb/ClassDescription.hpp"

namespace reference::api {
namespace {

using namespace comparator;
using property::RefEntityType;
using zorb::ClassDescription;
using zorb::HostName;
using zorb::Member;
using zorb::registerEnumeration;
using zorb::Shape;

template <typename Enumeration>
Member memberOf(typename Enumeration::Value value) {
    return {.name = Enumeration::enumToString(value), .number = value};
}

// One member of the enumeration that Owner names.
template <typename Owner>
Shape memberOfShape() {
    return {.kind = Shape::Enumeration, .className = HostName<Owner>::id().str()};
}

void registerRequest() {
    registerEnumeration<EntityCaseSensitivity>(
        "Whether letter case counts when names and texts are compared.",
        {memberOf<EntityCaseSensitivity>(EntityCaseSensitivity::Sensitive),
         memberOf<EntityCaseSensitivity>(EntityCaseSensitivity::Insensitive)});
    registerEnumeration<EntityPrecision>(
        "Whether the package qualification of a name must match too.",
        {memberOf<EntityPrecision>(EntityPrecision::Exact_Match),
         memberOf<EntityPrecision>(EntityPrecision::Ignore_Package)});
    ClassDescription<ReferenceRequest>(
        "What to look for, in which products and among which kinds of entity, how to match it, and "
        "how to order the results.")
        .constructible()
        .text("EntityText", &ReferenceRequest::getEntityTextProperty,
              &ReferenceRequest::setEntityTextProperty,
              "The name to look for (\"pkg.Class.method\"), or the words where texts are searched.")
        .value("Types",
               {.kind = Shape::EnumerationArray,
                .className = HostName<RefEntityType>::id().str(),
                .mayBeNull = true},
               &ReferenceRequest::getTypesProperty, &ReferenceRequest::setTypesProperty,
               "The kinds of entity to consider; none admits all of them. Null until it is set.")
        .value("Products", {.kind = Shape::TextArray}, &ReferenceRequest::getProductsProperty,
               &ReferenceRequest::setProductsProperty,
               "The short names of the products to consider; none admits all that are installed.")
        .value("EntityCaseSensitivity", memberOfShape<EntityCaseSensitivity>(),
               &ReferenceRequest::getEntityCaseSensitivityProperty,
               &ReferenceRequest::setEntityCaseSensitivityProperty, "Whether letter case counts.")
        .value("EntityPrecision", memberOfShape<EntityPrecision>(),
               &ReferenceRequest::getEntityPrecisionProperty,
               &ReferenceRequest::setEntityPrecisionProperty,
               "Whether the package qualification must match too.")
        .value("Comparator", {.kind = Shape::Object}, &ReferenceRequest::getComparatorProperty,
               &ReferenceRequest::setComparatorProperty,
               "What orders the results: an object of one of the comparator classes. It is taken "
               "as it is when it is set; changes to it count when it is set again.")
        .registerClass();
    ClassDescription<ReferenceData>("One result of a search.")
        .readOnly("HeaderInfo", &ReferenceData::getHeaderInfo,
                  "The product that the entry was found in.")
        .readOnly("RefItem", &ReferenceData::getRefItem, "The entry of the documentation.")
        .registerClass();
}

template <typename Retriever>
void registerRetriever(const char* documentation) {
    ClassDescription<Retriever>(documentation)
        .constructible()
        .value("ReferenceRequest",
               {.kind = Shape::Object, .className = HostName<ReferenceRequest>::id().str()},
               &ReferenceDataRetriever::getReferenceRequestProperty,
               &ReferenceDataRetriever::setReferenceRequestProperty,
               "What to look for. A copy is taken: changes to a request count when it is set "
               "again.")
        .method("getReferenceData", &ReferenceDataRetriever::getReferenceData,
                "Searches, and returns the results in the order of the request's comparator.")
        .registerClass();
}

void registerRetrievers() {
    registerRetriever<ReferenceDataRetriever>("Finds the entries of entities by their names.");
    registerRetriever<AllTextDataRetriever>(
        "Finds entries by a part of anything that they say in prose.");
    registerRetriever<ClassEntityDataRetriever>(
        "Finds classes, enumerations and interfaces by name, each with all of its properties.");
    registerRetriever<EntityPurposeDataRetriever>("Finds entries by a part of their purpose.");
    registerRetriever<PageNameDataRetriever>("Finds all entries of a page, by the page's address.");
}

// A comparator that has no properties.
template <typename Comparator>
void registerOrder(const char* documentation) {
    ClassDescription<Comparator>(documentation).constructible().registerClass();
}

template <typename Comparator>
void describeCaseSensitivity(ClassDescription<Comparator>& description) {
    description.value("EntityCaseSensitivity", memberOfShape<EntityCaseSensitivity>(),
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
    description.value("RefEntityType", memberOfShape<RefEntityType>(),
                      &Comparator::getRefEntityTypeProperty, &Comparator::setRefEntityTypeProperty,
                      "The kind of entity to match.");
}

void registerComparators() {
    registerOrder<DeprecatedOrderComparator>(
        "Orders entities that are still to be used before those that are not.");
    registerOrder<EntityDepthOrderComparator>("Orders less qualified names first.");
    registerOrder<EntityTypeOrderComparator>("Orders by the number of the kind of entity.");
    registerOrder<FunctionTypeOrderComparator>("Orders by the number of the kind of function.");
    registerOrder<IndexOrderComparator>("Leaves the results in the order they were found in.");
    registerOrder<PreferredOrderComparator>(
        "The usual order of help results: what is still to be used first, then the product's own "
        "pages, then by kind of entity and of function.");

    ClassDescription<CompoundReferenceComparator>(
        "A chain of comparators: each one decides only what those before it leave undecided.")
        .constructible()
        .value("Comparators", {.kind = Shape::CellArray, .mayBeNull = true},
               &CompoundReferenceComparator::getComparatorsProperty,
               &CompoundReferenceComparator::setComparatorsProperty,
               "The comparators, in order of precedence. Null until it is set. They are taken as "
               "they are when they are set; changes to them count when they are set again.")
        .registerClass();

    ClassDescription<EntityMatchComparator> entityMatch(
        "Orders results that document an entity of the given kind and name before all others.");
    entityMatch.constructible();
    describeEntityName(entityMatch);
    describeRefEntityType(entityMatch);
    describeCaseSensitivity(entityMatch);
    entityMatch.registerClass();

    ClassDescription<EntityNameMatchComparator> entityNameMatch(
        "Orders results that document an entity of the given name before all others.");
    entityNameMatch.constructible();
    describeEntityName(entityNameMatch);
    describeCaseSensitivity(entityNameMatch);
    entityNameMatch.registerClass();

    ClassDescription<EntityTypeMatchComparator> entityTypeMatch(
        "Orders results that document an entity of the given kind before all others.");
    entityTypeMatch.constructible();
    describeRefEntityType(entityTypeMatch);
    entityTypeMatch.registerClass();

    ClassDescription<PageNameMatchComparator> pageNameMatch(
        "Orders the results of a page before all others.");
    pageNameMatch.constructible().text("PageName", &PageNameMatchComparator::getPageNameProperty,
                                       &PageNameMatchComparator::setPageNameProperty,
                                       "The page, without folder and without \".html\".");
    describeCaseSensitivity(pageNameMatch);
    pageNameMatch.registerClass();

    ClassDescription<ProductMatchComparator>(
        "Orders results whose help folder is the given one before all others.")
        .constructible()
        .text("ProductName", &ProductMatchComparator::getProductNameProperty,
              &ProductMatchComparator::setProductNameProperty, "The help folder to match.")
        .registerClass();
}

bool registerClasses() {
    registerRequest();
    registerRetrievers();
    registerComparators();
    return true;
}

const bool isRegistered [[maybe_unused]] = registerClasses();

}  // namespace
}  // namespace reference::api
