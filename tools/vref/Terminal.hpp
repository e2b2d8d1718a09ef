#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace reference::tools {

// The sequences that the tool writes to terminals: each style's and the one that ends them, the one
// that clears the rest of a line, and what stands before and after the address of a link (OSC 8).
inline constexpr std::string_view clearRestOfLine = "\033[K";
inline constexpr std::string_view linkBegin = "\033]8;;";
inline constexpr std::string_view linkEnd = "\033\\";
[[nodiscard]] std::span<const std::string_view> ownCodes() noexcept;

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
    // A stream of the process: its size, and whether it shows colours and links. Links are shown by
    // a terminal that shows colours, unless TERM is "dumb".
    [[nodiscard]] static Terminal ofStandardOutput(Colours colours = Colours::Auto);
    [[nodiscard]] static Terminal ofStandardError(Colours colours = Colours::Auto);

    // A stream with known abilities.
    Terminal(bool isTerminal, bool hasColour, std::size_t width, std::size_t height = 0,
             bool hasLinks = false)
        : m_isTerminal(isTerminal),
          m_hasColour(hasColour),
          m_hasLinks(hasLinks),
          m_width(width),
          m_height(height) {}

    [[nodiscard]] bool isTerminal() const noexcept { return m_isTerminal; }

    // In columns; if this is not a terminal, the width that prose is wrapped to.
    [[nodiscard]] std::size_t width() const noexcept { return m_width; }

    // In lines; 0 if this is not a terminal, or does not tell.
    [[nodiscard]] std::size_t height() const noexcept { return m_height; }

    [[nodiscard]] bool hasLinks() const noexcept { return m_hasLinks; }

    // `text` in the given style; unchanged if there are no colours.
    [[nodiscard]] std::string styled(Style style, std::string_view text) const;

    // `text`, which may be styled, as a link (the sequence OSC 8); unchanged if there are no links,
    // or if the address is empty. Requires: an address of printable ASCII.
    [[nodiscard]] std::string linked(std::string_view address, std::string_view text) const;

  private:
    [[nodiscard]] static Terminal ofDescriptor(int descriptor, Colours colours);

    bool m_isTerminal;
    bool m_hasColour;
    bool m_hasLinks;
    std::size_t m_width;
    std::size_t m_height;
};

// A text with styles and links, without the sequences that links are made of, and without all
// sequences: what takes room. UTF-8.
[[nodiscard]] std::string withoutLinks(std::string_view text);
[[nodiscard]] std::string withoutEscapes(std::string_view text);

}  // namespace reference::tools
