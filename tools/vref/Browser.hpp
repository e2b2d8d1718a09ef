#pragma once

#include <string>

namespace reference::tools {

enum class Opening {
    Done,       // the browser has the address
    NoBrowser,  // there is no screen to show one on, or no xdg-open
    Failed,     // xdg-open was started and failed
};

// Opens the address in the desktop's browser with xdg-open(1), without a shell in between. Waits a
// few seconds for xdg-open to fail; it may run for as long as the browser does.
[[nodiscard]] Opening openInBrowser(const std::string& address);

}  // namespace reference::tools
