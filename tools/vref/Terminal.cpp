#include "vref/Terminal.hpp"

#include <cstdlib>
#include <sys/ioctl.h>
#include <unistd.h>

namespace reference::tools {
namespace {

constexpr std::size_t usualWidth = 80;

bool isSetAndNotEmpty(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool isDumb() {
    const char* name = std::getenv("TERM");
    return name == nullptr || std::string_view(name) == "dumb";
}

std::string_view codeOf(Style style) {
    switch (style) {
        case Style::Name:
            return "\033[1m";
        case Style::Heading:
            return "\033[1;34m";
        case Style::Faint:
            return "\033[2m";
        case Style::Warning:
            return "\033[33m";
        case Style::Plain:
            break;
    }
    return {};
}

}  // namespace

Terminal Terminal::ofStandardOutput() {
    return ofDescriptor(STDOUT_FILENO);
}

Terminal Terminal::ofStandardError() {
    return ofDescriptor(STDERR_FILENO);
}

Terminal Terminal::ofDescriptor(int descriptor) {
    const bool isTerminal = ::isatty(descriptor) != 0;
    winsize size{};
    const bool isSized =
        isTerminal && ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return {isTerminal, isTerminal && !isSetAndNotEmpty("NO_COLOR") && !isDumb(),
            isSized ? size.ws_col : usualWidth};
}

std::string Terminal::styled(Style style, std::string_view text) const {
    const std::string_view code = codeOf(style);
    if (!m_hasColour || code.empty() || text.empty())
        return std::string(text);
    return std::string(code) + std::string(text) + "\033[0m";
}

}  // namespace reference::tools
