#include "reference/api/ReferenceRequest.hpp"

#include <iterator>
#include <utility>

#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/hostNames.hpp"

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

const char* ReferenceRequest::getZORBClassName() noexcept {
    return "ReferenceRequest";
}

const char* ReferenceRequest::getZORBPackageName() noexcept {
    return apiPackageName;
}

}  // namespace reference::api
