#include "property/ObjectInfo.hpp"

#include <utility>

namespace reference::property {

ObjectInfo::ObjectInfo(std::u16string name, std::u16string purpose, std::u16string href,
                       std::vector<std::u16string> values)
    : m_name(std::move(name)),
      m_purpose(std::move(purpose)),
      m_href(std::move(href)),
      m_values(std::move(values)) {}

}  // namespace reference::property
