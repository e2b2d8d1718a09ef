#pragma once

#include <functional>

namespace reference::docset {

// Called once where another process changes the documentation set and has to be waited for, before
// the waiting begins. May be empty. What it throws ends the operation, and nothing has been
// changed.
using OnWait = std::function<void()>;

}  // namespace reference::docset
