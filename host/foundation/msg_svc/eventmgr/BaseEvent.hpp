#pragma once

#include <memory>

#include "foundation/core/export.hpp"
#include "foundation/msg_svc/eventmgr/detail/TypeInformation.hpp"

namespace foundation::msg_svc::eventmgr {

// Something that happened, as an event manager hands it to its subscribers. Derive from it to add a
// new type of event:
//
//     class DoorOpened : public BaseEvent {
//       public:
//         DoorOpened() : BaseEvent(detail::DerivedTypeInformation<DoorOpened>::shared()) {}
//     };
//
// Several threads may read a published event at once, so its data must not change.
class VELTRA_HOST_API BaseEvent {
  public:
    virtual ~BaseEvent();

    // Of the class that the event was made as. Lives as long as the event.
    [[nodiscard]] const detail::TypeInformation& getTypeInformation() const noexcept {
        return *m_type;
    }

    // Whether clients in the scripting language may receive the event. By default they may not.
    [[nodiscard]] virtual bool isVELTRAClientsAllowed() const;

  protected:
    // `type` describes the derived class. Requires: not null.
    explicit BaseEvent(std::shared_ptr<const detail::TypeInformation> type);
    BaseEvent(const BaseEvent&) = default;
    BaseEvent& operator=(const BaseEvent&) = default;

  private:
    std::shared_ptr<const detail::TypeInformation> m_type;
};

}  // namespace foundation::msg_svc::eventmgr
