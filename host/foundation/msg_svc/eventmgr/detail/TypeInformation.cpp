#include "foundation/msg_svc/eventmgr/detail/TypeInformation.hpp"

#include <boost/core/demangle.hpp>

namespace foundation::msg_svc::eventmgr::detail {

TypeInformation::TypeInformation(const std::type_info& type)
    : m_typeIndex(type), m_typeName(boost::core::demangle(type.name())) {}

TypeInformation::~TypeInformation() = default;

}  // namespace foundation::msg_svc::eventmgr::detail
