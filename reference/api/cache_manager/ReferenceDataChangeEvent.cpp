#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"

#include "foundation/msg_svc/eventmgr/detail/DerivedTypeInformation.hpp"

namespace reference::cache_manager {

using foundation::msg_svc::eventmgr::detail::DerivedTypeInformation;

ReferenceDataChangeEvent::ReferenceDataChangeEvent()
    : BaseEvent(DerivedTypeInformation<ReferenceDataChangeEvent>::shared()) {}

ReferenceDataChangeEvent::ReferenceDataChangeEvent(const ReferenceDataChangeEvent&) = default;
ReferenceDataChangeEvent::ReferenceDataChangeEvent(ReferenceDataChangeEvent&&) noexcept = default;
ReferenceDataChangeEvent::~ReferenceDataChangeEvent() = default;

bool ReferenceDataChangeEvent::isVELTRAClientsAllowed() const {
    return true;
}

}  // namespace reference::cache_manager
