#pragma once

#include <cstddef>
#include <string>
#include <typeindex>

#include "foundation/core/export.hpp"

namespace foundation::msg_svc::eventmgr {

class EventMgr;

namespace detail {

// What an event manager knows about one type of event. Immutable; any thread.
class VELTRA_HOST_API TypeInformation {
  public:
    TypeInformation(const TypeInformation&) = delete;  // shared by pointer
    TypeInformation& operator=(const TypeInformation&) = delete;
    virtual ~TypeInformation();

    // The type's qualified name ("reference::cache_manager::ReferenceDataChangeEvent").
    [[nodiscard]] const std::string& getTypeName() const noexcept { return m_typeName; }

    // Identifies the type, even if several libraries describe the same one.
    [[nodiscard]] std::type_index getTypeIndex() const noexcept { return m_typeIndex; }

    // How many subscriptions `manager` holds for events of this type now.
    [[nodiscard]] virtual std::size_t getSubscriptionCount(const EventMgr& manager) const = 0;

  protected:
    // Takes the name from the type itself.
    explicit TypeInformation(const std::type_info& type);

  private:
    const std::type_index m_typeIndex;
    const std::string m_typeName;
};

}  // namespace detail
}  // namespace foundation::msg_svc::eventmgr
