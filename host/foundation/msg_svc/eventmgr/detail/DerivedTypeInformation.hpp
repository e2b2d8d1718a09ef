#pragma once

#include <cstddef>
#include <memory>

#include "foundation/core/NeverDestroyed.hpp"
#include "foundation/msg_svc/eventmgr/SubscriptionCountByType.hpp"
#include "foundation/msg_svc/eventmgr/detail/TypeInformation.hpp"

namespace foundation::msg_svc::eventmgr::detail {

// The type information of the event class Event.
template <typename Event>
class DerivedTypeInformation final : public TypeInformation {
  public:
    // The one that all events of the type share; never null.
    [[nodiscard]] static std::shared_ptr<const DerivedTypeInformation> shared() {
        static const core::NeverDestroyed<std::shared_ptr<const DerivedTypeInformation>> instance(
            new DerivedTypeInformation);
        return *instance;
    }

    [[nodiscard]] std::size_t getSubscriptionCount(const EventMgr& manager) const override {
        return SubscriptionCountByType<Event>(manager).get();
    }

  private:
    DerivedTypeInformation() : TypeInformation(typeid(Event)) {}
};

}  // namespace foundation::msg_svc::eventmgr::detail
