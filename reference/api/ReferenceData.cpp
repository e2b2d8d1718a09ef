#include "reference/api/ReferenceData.hpp"

#include <utility>

#include "reference/api/hostNames.hpp"

namespace reference::api {

ReferenceData::ReferenceData() = default;

ReferenceData::ReferenceData(property::HeaderInfo header, property::RefItem item)
    : m_header(std::move(header)), m_item(std::move(item)) {}

ReferenceData::ReferenceData(ReferenceData&& other) noexcept = default;
ReferenceData& ReferenceData::operator=(ReferenceData&& other) noexcept = default;
ReferenceData::~ReferenceData() = default;

ReferenceData ReferenceData::copy() const {
    property::RefItem item = m_item.copy();
    property::HeaderInfo header = m_header.copy();
    return {std::move(header), std::move(item)};
}

const char* ReferenceData::getZORBClassName() noexcept {
    return "ReferenceData";
}

const char* ReferenceData::getZORBPackageName() noexcept {
    return apiPackageName;
}

}  // namespace reference::api
