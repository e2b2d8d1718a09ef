#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace reference::tools {

// How a piece of output stands out on a terminal that can show it.
enum class Style { Plain, Name, Heading, Faint, Warning };

// What an output stream can show, looked at once. A plain value.
class Terminal {
  public:
    // A stream of the process: its width, and whether it shows colours. It shows none when it is no
    // terminal, when NO_COLOR is set and not empty (https://no-color.org), or when TERM is "dumb".
    [[nodiscard]] static Terminal ofStandardOutput();
    [[nodiscard]] static Terminal ofStandardError();

    // A stream of known abilities.
    Terminal(bool isTerminal, bool hasColour, std::size_t width)
        : m_isTerminal(isTerminal), m_hasColour(hasColour), m_width(width) {}

    [[nodiscard]] bool isTerminal() const noexcept { return m_isTerminal; }

    // In columns; for what is no terminal, the width that prose is broken at.
    [[nodiscard]] std::size_t width() const noexcept { return m_width; }

    // `text` in the given style; as it is where there are no colours.
    [[nodiscard]] std::string styled(Style style, std::string_view text) const;

  private:
    [[nodiscard]] static Terminal ofDescriptor(int descriptor);

    bool m_isTerminal;
    bool m_hasColour;
    std::size_t m_width;
};

}  // namespace reference::tools
