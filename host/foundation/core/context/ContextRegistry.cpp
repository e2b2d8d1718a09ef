#include "foundation/core/context/ContextRegistry.hpp"

#include <atomic>

namespace foundation::core::context {
namespace {

std::atomic<ContextId> current{1};

}  // namespace

ContextId ContextRegistry::getCurrentContextId() noexcept {
    return current.load();
}

void ContextRegistry::setCurrentContextId(ContextId id) noexcept {
    current.store(id);
}

}  // namespace foundation::core::context
