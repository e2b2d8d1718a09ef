#pragma once

#include <boost/smart_ptr/shared_ptr.hpp>

#include "foundation/core/export.hpp"

namespace foundation::msg_svc::eventmgr {
class EventMgr;
}

namespace vvm {

// A virtual machine of the environment; it holds what the parts of the process share. Any thread.
class VELTRA_HOST_API VVM {
  public:
    // With an event manager of its own.
    VVM();
    VVM(const VVM&) = delete;  // shared by pointer
    VVM& operator=(const VVM&) = delete;
    ~VVM();

    // The machine's event manager, always the same one; never null. It may outlive the machine.
    [[nodiscard]] boost::shared_ptr<foundation::msg_svc::eventmgr::EventMgr> getEventMgr()
        const noexcept {
        return m_eventMgr;
    }

  private:
    const boost::shared_ptr<foundation::msg_svc::eventmgr::EventMgr> m_eventMgr;
};

}  // namespace vvm
