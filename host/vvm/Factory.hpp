#pragma once

#include <memory>
#include <stdexcept>

#include "foundation/core/export.hpp"
#include "vvm/NoActiveUSMBehavior.hpp"
#include "vvm/VVM.hpp"

namespace vvm {

// Thrown when a virtual machine is required and the process has none.
class VELTRA_HOST_API NoCurrentVVMError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Makes the process's virtual machine and hands it out. Static functions only; any thread.
class VELTRA_HOST_API Factory {
  public:
    // The process's virtual machine. Before the host has made one, and after it was removed: null
    // for ReturnNothing, NoCurrentVVMError for Throw.
    [[nodiscard]] static std::shared_ptr<VVM> getCurrentLocalVVM(NoActiveUSMBehavior behavior);

    // Makes a virtual machine and makes it the process's, in place of any other. For the host, when
    // it starts.
    static std::shared_ptr<VVM> makeLocalVVM();

    // Makes `machine` the process's virtual machine; null leaves the process with none.
    static void setCurrentLocalVVM(std::shared_ptr<VVM> machine);
};

}  // namespace vvm
