#pragma once

#include <cstdint>

namespace vvm {

// What is done when a virtual machine is asked for and the process has none.
enum NoActiveUSMBehavior : std::uint32_t {
    ReturnNothing = 0,
    Throw = 1,
};

}  // namespace vvm
