#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace reference::tools {

// How to emphasise a piece of output on a terminal that can show it.
enum class Style { Plain, Name, Heading, Faint, Warning };

// What an output stream can show, determined once. A plain value.
class Terminal {
  public:
    // A stream of the process: its width, and whether it shows colours. It shows none if it is not
    // a terminal, when NO_COLOR is set and not empty (https://no-color.org), or when TERM is
    // "dumb".
    [[nodiscard]] static Terminal ofStandardOutput();
    [[nodiscard]] static Terminal ofStandardError();

    // A stream with known abilities.
    Terminal(bool isTerminal, bool hasColour, std::size_t width)
        : m_isTerminal(isTerminal), m_hasColour(hasColour), m_width(width) {}

    [[nodiscard]] bool isTerminal() const noexcept { return m_isTerminal; }

    // In columns; if this is not a terminal, the width that prose is wrapped to.
    [[nodiscard]] std::size_t width() const noexcept { return m_width; }

    // `text` in the given style; unchanged if there are no colours.
    [[nodiscard]] std::string styled(Style style, std::string_view text) const;

  private:
    [[nodiscard]] static Terminal ofDescriptor(int descriptor);

    bool m_isTerminal;
    bool m_hasColour;
    std::size_t m_width;
};

}  // namespace reference::tools
