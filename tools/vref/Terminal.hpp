#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace reference::tools {

// How to emphasise a piece of output on a terminal that can show it.
enum class Style { Plain, Name, Heading, Faint, Warning };

// When colours and other emphasis are shown.
enum class Colours {
    Auto,    // on a terminal, unless NO_COLOR is set (https://no-color.org) or TERM is "dumb"
    Always,  // also in a file or a pipe
    Never,
};

// "auto", "always", "never", and the way back: nothing for any other text.
[[nodiscard]] std::string toString(Colours colours);
[[nodiscard]] std::optional<Colours> coloursNamed(std::string_view text);

// What an output stream can show, determined once. A plain value.
class Terminal {
  public:
    // A stream of the process: its width, and whether it shows colours.
    [[nodiscard]] static Terminal ofStandardOutput(Colours colours = Colours::Auto);
    [[nodiscard]] static Terminal ofStandardError(Colours colours = Colours::Auto);

    // A stream with known abilities.
    Terminal(bool isTerminal, bool hasColour, std::size_t width)
        : m_isTerminal(isTerminal), m_hasColour(hasColour), m_width(width) {}

    [[nodiscard]] bool isTerminal() const noexcept { return m_isTerminal; }

    // In columns; if this is not a terminal, the width that prose is wrapped to.
    [[nodiscard]] std::size_t width() const noexcept { return m_width; }

    // `text` in the given style; unchanged if there are no colours.
    [[nodiscard]] std::string styled(Style style, std::string_view text) const;

  private:
    [[nodiscard]] static Terminal ofDescriptor(int descriptor, Colours colours);

    bool m_isTerminal;
    bool m_hasColour;
    std::size_t m_width;
};

}  // namespace reference::tools
