#pragma once

#include "foundation/msg_svc/eventmgr/BaseEvent.hpp"
#include "reference/api/export.hpp"

namespace reference::cache_manager {

// The reference data has changed: clients that show some of it ask again. Published after the
// caches were cleared, so that a subscriber's request already reads anew. Immutable; any thread.
class VELTRA_REFERENCE_API ReferenceDataChangeEvent
    : public foundation::msg_svc::eventmgr::BaseEvent {
  public:
    ReferenceDataChangeEvent();
    ReferenceDataChangeEvent(const ReferenceDataChangeEvent&);
    ReferenceDataChangeEvent(ReferenceDataChangeEvent&&) noexcept;
    ~ReferenceDataChangeEvent() override;

    // True: scripts show reference data too.
    [[nodiscard]] bool isVELTRAClientsAllowed() const override;
};

}  // namespace reference::cache_manager
