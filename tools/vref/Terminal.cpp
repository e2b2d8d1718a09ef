#include "vref/Terminal.hpp"

#include <algorithm>
#include <array>
#include <sys/ioctl.h>
#include <unistd.h>

#include "vref/Environment.hpp"

namespace reference::tools {
namespace {

constexpr std::size_t usualWidth = 80;
constexpr std::string_view endOfStyle = "\033[0m";

constexpr std::string_view codeOf(Style style) {
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

// The text without what begins and ends so.
std::string without(std::string_view begin, std::string_view end, std::string_view text) {
    std::string kept;
    while (!text.empty()) {
        const auto from = std::min(text.find(begin), text.size());
        kept += text.substr(0, from);
        const auto last = text.find(end, from);
        text.remove_prefix(last == std::string_view::npos ? text.size() : last + end.size());
    }
    return kept;
}

}  // namespace

std::span<const std::string_view> ownCodes() noexcept {
    static constexpr std::array codes = {codeOf(Style::Name),  codeOf(Style::Heading),
                                         codeOf(Style::Faint), codeOf(Style::Warning),
                                         endOfStyle,           clearRestOfLine};
    return codes;
}

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
    const bool hasColour = showsColours(isTerminal, colours);
    return {isTerminal, hasColour, isSized ? size.ws_col : usualWidth,
            isSized ? size.ws_row : std::size_t{0}, isTerminal && hasColour && !isDumb()};
}

std::string Terminal::styled(Style style, std::string_view text) const {
    const std::string_view code = codeOf(style);
    if (!m_hasColour || code.empty() || text.empty())
        return std::string(text);
    return std::string(code) + std::string(text) + std::string(endOfStyle);
}

std::string Terminal::linked(std::string_view address, std::string_view text) const {
    if (!m_hasLinks || address.empty() || text.empty())
        return std::string(text);
    const auto sequence = [](std::string_view target) {
        return std::string(linkBegin) + std::string(target) + std::string(linkEnd);
    };
    return sequence(address) + std::string(text) + sequence({});
}

std::string withoutLinks(std::string_view text) {
    return without(linkBegin, linkEnd, text);
}

std::string withoutEscapes(std::string_view text) {
    return without("\033[", "m", withoutLinks(text));
}

}  // namespace reference::tools
