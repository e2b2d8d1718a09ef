#include "reference/api/ReferenceRequest.hpp"

#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>

#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/hostNames.hpp"
#include "reference/utils/errors.hpp"
#include "reference/utils/getComparatorFromVq.hpp"
#include "refutils/hostTexts.hpp"
#include "zorb/ClassDescription.hpp"
#include "zorb/om.hpp"

namespace reference::api {

using property::RefEntityType;

ReferenceRequest::ReferenceRequest() : ReferenceRequest(std::u16string()) {}

ReferenceRequest::ReferenceRequest(std::u16string text)
    : ReferenceRequest(std::move(text), {}, {}) {}

ReferenceRequest::ReferenceRequest(std::u16string text, std::vector<RefEntityType::Value> types)
    : ReferenceRequest(std::move(text), std::move(types), {}) {}

ReferenceRequest::ReferenceRequest(std::u16string text, std::vector<RefEntityType::Value> types,
                                   std::vector<std::u16string> products)
    : m_entityText(std::move(text)),
      m_types(std::move(types)),
      m_products(std::move(products)),
      m_comparator(comparator::IndexOrderComparator()) {}

ReferenceRequest::ReferenceRequest(const ReferenceRequest& other) = default;
ReferenceRequest& ReferenceRequest::operator=(const ReferenceRequest& other) = default;
ReferenceRequest::ReferenceRequest(ReferenceRequest&& other) noexcept = default;
ReferenceRequest& ReferenceRequest::operator=(ReferenceRequest&& other) noexcept = default;
ReferenceRequest::~ReferenceRequest() = default;

ReferenceRequest ReferenceRequest::createMatchAllTextRequest(
    std::vector<RefEntityType::Value> types, std::vector<std::u16string> products) {
    ReferenceRequest request({}, std::move(types), std::move(products));
    request.m_isAllTextMatch = true;
    return request;
}

ReferenceRequest ReferenceRequest::copy() const {
    return *this;
}

void ReferenceRequest::addProducts(std::vector<std::u16string> products) {
    m_products.insert(m_products.end(), std::make_move_iterator(products.begin()),
                      std::make_move_iterator(products.end()));
}

void ReferenceRequest::addReferenceTypes(std::vector<RefEntityType::Value> types) {
    m_types.insert(m_types.end(), types.begin(), types.end());
}

void ReferenceRequest::setEntityTextProperty(const std::u16string* text) {
    utils::setStringProperty(m_entityText, text);
}

// Keeps a row of the same members, not the given array, so that a script sees the types in one
// shape, however it gave them. For the same reason null is not ignored here: it means no types.
void ReferenceRequest::setTypesProperty(const vqArray* types) {
    const auto typeClass = zorb::HostName<RefEntityType>::id();
    const std::size_t count = omGetNumberOfElementsInUnderlyingArray(types);
    const std::unique_ptr<vqArray, void (*)(vqArray*)> row(
        omCreateZORBEnumerationMatrix(1, count, typeClass), &matrix::destroyArray);
    std::vector<RefEntityType::Value> values;
    values.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto member = omGetEnumerationID(types, i);
        omSetEnumerationElement(row.get(), i, member);
        const auto object = matrix::from_veltra(omGetEnumeration(typeClass, member));
        values.push_back(static_cast<RefEntityType::Value>(
            omGetUInt32(omGetUnderlyingArray(object.get()).get(), 0)));
    }
    m_typesCache = utils::copyVqArrayToSharedVqArrayPtr(row.get());
    m_types = std::move(values);
}

const vqArray* ReferenceRequest::getProductsProperty() const {
    return utils::accessStringVectorCache(m_productsCache, m_products);
}

void ReferenceRequest::setProductsProperty(const vqArray* products) {
    utils::setStringVectorAndCache(products, m_productsCache, m_products);
}

const vqArray* ReferenceRequest::getEntityCaseSensitivityProperty() const {
    return m_caseSensitivity.getProperty();
}

void ReferenceRequest::setEntityCaseSensitivityProperty(const vqArray* value) {
    m_caseSensitivity.setProperty(value);
}

const vqArray* ReferenceRequest::getEntityPrecisionProperty() const {
    return m_precision.getProperty();
}

void ReferenceRequest::setEntityPrecisionProperty(const vqArray* value) {
    m_precision.setProperty(value);
}

const vqArray* ReferenceRequest::getComparatorProperty() const {
    if (!m_comparatorCache)
        m_comparatorCache = zorb::wrap(comparator::IndexOrderComparator());
    return m_comparatorCache.get();
}

void ReferenceRequest::setComparatorProperty(const vqArray* value) {
    if (value == nullptr)
        return;
    if (omGetNumberOfElementsInUnderlyingArray(value) != 1)
        throw utils::ExpectedScalarComparatorError();
    auto comparator = utils::getComparatorFromVq(value);
    m_comparatorCache = utils::copyVqArrayToSharedVqArrayPtr(value);
    m_comparator = std::move(comparator);
}

const char* ReferenceRequest::getZORBClassName() noexcept {
    return "ReferenceRequest";
}

const char* ReferenceRequest::getZORBPackageName() noexcept {
    return apiPackageName;
}

}  // namespace reference::api
