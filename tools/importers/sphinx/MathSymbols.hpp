#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace reference::importers::sphinx {

// The characters that stand for commands of TeX. All texts UTF-8; all functions may be called from
// any thread.

enum class MathSpacing {
    None,
    // It relates or joins what is on either side: spaces go around it.
    Around,
    // It is a word or reads as one: a space separates it from letters and digits.
    Word
};

struct MathSymbol {
    std::string_view command;
    std::string_view text;
    MathSpacing spacing = MathSpacing::None;
};

// The symbol that a command such as "alpha" stands for; null: none.
[[nodiscard]] const MathSymbol* findSymbol(std::string_view command);

// The combining character that an accent such as "hat" puts over a character; empty: no accent.
[[nodiscard]] std::string_view combiningAccent(std::string_view command);

// A text as superscript or subscript; nothing where it has a character that has no such form.
[[nodiscard]] std::optional<std::string> superscript(std::string_view text);
[[nodiscard]] std::optional<std::string> subscript(std::string_view text);

// The double-struck form of a capital, "R" for example; the text itself where there is no such
// character.
[[nodiscard]] std::string_view doubleStruck(std::string_view text);

}  // namespace reference::importers::sphinx
