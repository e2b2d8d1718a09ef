#pragma once

#include <cstdint>

#include "foundation/core/export.hpp"

namespace foundation::core::context {

// Names one of the contexts in which a process of the environment works: each has settings of its
// own.
using ContextId = std::uint64_t;

// Which context the process works in. Static functions only; every one may be called from any
// thread.
class VELTRA_HOST_API ContextRegistry {
  public:
    // The current context's identifier; 1 until it is changed.
    [[nodiscard]] static ContextId getCurrentContextId() noexcept;

    // Makes `id` the current context.
    static void setCurrentContextId(ContextId id) noexcept;
};

}  // namespace foundation::core::context
