#include "vvm/Factory.hpp"

#include <utility>

#include <boost/smart_ptr/make_shared_object.hpp>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/NeverDestroyed.hpp"
#include "foundation/msg_svc/eventmgr/EventMgr.hpp"

namespace vvm {
namespace {

using foundation::core::Mutex;
using foundation::core::MutexLock;
using foundation::core::NeverDestroyed;

struct State {
    Mutex mutex;
    std::shared_ptr<VVM> current VELTRA_GUARDED_BY(mutex);  // null until the host makes one
};
NeverDestroyed<State> s_state;

}  // namespace

VVM::VVM() : m_eventMgr(boost::make_shared<foundation::msg_svc::eventmgr::EventMgr>()) {}

VVM::~VVM() = default;

std::shared_ptr<VVM> Factory::getCurrentLocalVVM(NoActiveUSMBehavior behavior) {
    State& state = *s_state;
    const MutexLock lock(state.mutex);
    if (!state.current && behavior == Throw)
        throw NoCurrentVVMError(
            "This process has no virtual machine; the host makes one with Factory::makeLocalVVM.");
    return state.current;
}

std::shared_ptr<VVM> Factory::makeLocalVVM() {
    auto made = std::make_shared<VVM>();
    setCurrentLocalVVM(made);
    return made;
}

void Factory::setCurrentLocalVVM(std::shared_ptr<VVM> machine) {
    // The old machine dies outside the lock: with it may die callbacks, which are foreign code.
    State& state = *s_state;
    const MutexLock lock(state.mutex);
    state.current.swap(machine);
}

}  // namespace vvm
