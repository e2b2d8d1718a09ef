#pragma once

#include "foundation/core/export.hpp"

namespace foundation::msg_svc::eventmgr {

// A subscription; it ends when this is destroyed. It may outlive the object that made it.
//
// After the destructor the callback is not called again. Outside callbacks the destructor also
// waits until no other thread is in the callback, so that what the callback refers to may be
// destroyed next. Do not hold a lock that the callback takes while the destructor runs. Inside a
// callback, even the subscription's own, the destructor does not wait: two callbacks that end each
// other's subscriptions would wait forever.
//
// Any thread may destroy it, but only one.
class VELTRA_HOST_API Connection {
  public:
    Connection(const Connection&) = delete;  // one subscription, one owner
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection();

  protected:
    Connection() = default;
};

}  // namespace foundation::msg_svc::eventmgr
