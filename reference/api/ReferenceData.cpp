#include "reference/api/ReferenceData.hpp"

#include <utility>

#include "reference/api/hostNames.hpp"

namespace reference::api {

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
