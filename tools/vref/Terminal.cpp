#include "vref/Terminal.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include "vref/Environment.hpp"

namespace reference::tools {
namespace {

constexpr std::size_t usualWidth = 80;

bool isDumb() {
    const std::string name = environmentText("TERM");
    return name.empty() || name == "dumb";
}

bool showsColours(bool isTerminal, Colours colours) {
    switch (colours) {
        case Colours::Always:
            return true;
        case Colours::Never:
            return false;
        case Colours::Auto:
            break;
    }
    return isTerminal && environmentText("NO_COLOR").empty() && !isDumb();
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

std::string toString(Colours colours) {
    switch (colours) {
        case Colours::Always:
            return "always";
        case Colours::Never:
            return "never";
        case Colours::Auto:
            break;
    }
    return "auto";
}

std::optional<Colours> coloursNamed(std::string_view text) {
    for (const auto colours : {Colours::Auto, Colours::Always, Colours::Never})
        if (text == toString(colours))
            return colours;
    return std::nullopt;
}

Terminal Terminal::ofStandardOutput(Colours colours) {
    return ofDescriptor(STDOUT_FILENO, colours);
}

Terminal Terminal::ofStandardError(Colours colours) {
    return ofDescriptor(STDERR_FILENO, colours);
}

Terminal Terminal::ofDescriptor(int descriptor, Colours colours) {
    const bool isTerminal = ::isatty(descriptor) != 0;
    winsize size{};
    const bool isSized =
        isTerminal && ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return {isTerminal, showsColours(isTerminal, colours), isSized ? size.ws_col : usualWidth};
}

std::string Terminal::styled(Style style, std::string_view text) const {
    const std::string_view code = codeOf(style);
    if (!m_hasColour || code.empty() || text.empty())
        return std::string(text);
    return std::string(code) + std::string(text) + "\033[0m";
}

}  // namespace reference::tools
