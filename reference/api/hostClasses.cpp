// The library's classes as the scripting language sees them, a table for each; the comparators'
// tables stand in comparatorClasses.cpp.
#include "property/hostNames.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/comparator/comparatorClasses.hpp"
#include "reference/api/hostNames.hpp"
#include "reference/api/memberShape.hpp"
#include "zorb/ClassDescription.hpp"

namespace reference::api {
namespace {

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
        .value("EntityCaseSensitivity", memberShape<EntityCaseSensitivity>(),
               &ReferenceRequest::getEntityCaseSensitivityProperty,
               &ReferenceRequest::setEntityCaseSensitivityProperty, "Whether letter case counts.")
        .value("EntityPrecision", memberShape<EntityPrecision>(),
               &ReferenceRequest::getEntityPrecisionProperty,
               &ReferenceRequest::setEntityPrecisionProperty,
               "Whether the package qualification must match too.")
        .value("Comparator", {.kind = Shape::Object}, &ReferenceRequest::getComparatorProperty,
               &ReferenceRequest::setComparatorProperty,
               "What orders the results: an object of one of the comparator classes. It is copied "
               "when it is set; later changes to it count only when it is set again.")
        .registerClass();
    ClassDescription<ReferenceData>("One result of a search.")
        .readOnly("HeaderInfo", &ReferenceData::getHeaderInfo,
                  "The product that the item was found in.")
        .readOnly("RefItem", &ReferenceData::getRefItem, "The item of the documentation.")
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
               "What to look for. It is copied when it is set; later changes to it count only "
               "when it is set again.")
        .method("getReferenceData", &ReferenceDataRetriever::getReferenceData,
                "Searches, and returns the results in the order of the request's comparator.")
        .registerClass();
}

void registerRetrievers() {
    registerRetriever<ReferenceDataRetriever>("Finds the items of entities by their names.");
    registerRetriever<AllTextDataRetriever>(
        "Finds items that contain a text anywhere in what they say.");
    registerRetriever<ClassEntityDataRetriever>(
        "Finds classes, enumerations and interfaces by name, each with all of its properties.");
    registerRetriever<EntityPurposeDataRetriever>("Finds items by a part of their purpose.");
    registerRetriever<PageNameDataRetriever>("Finds all items of a page, by the page's address.");
}

bool registerClasses() {
    registerRequest();
    registerRetrievers();
    static_cast<void>(comparator::comparatorClasses());
    return true;
}

const bool isRegistered [[maybe_unused]] = registerClasses();

}  // namespace
}  // namespace reference::api
