#pragma once

#include "foundation/core/export.hpp"

namespace foundation::msg_svc::eventmgr {

// A subscription; it ends when this is destroyed. May outlive what it was made by.
//
// Once it is destroyed the callback is not called again. A destructor that runs outside every
// callback also waits for a call of the callback that another thread is in, so that what the
// callback refers to may be destroyed next: do not hold a lock meanwhile that the callback takes.
// One that runs within a callback, be it the subscription's own, does not wait, for two callbacks
// that end each other's subscriptions would wait forever.
//
// Any thread may destroy it, one alone.
class VELTRA_HOST_API Connection {
  public:
    Connection(const Connection&) = delete;  // one subscription, one owner
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection();

  protected:
    Connection() = default;
};

}  // namespace foundation::msg_svc::eventmgr
