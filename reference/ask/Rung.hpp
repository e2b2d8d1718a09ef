#pragma once

#include <cstdint>
#include <string_view>

#include "reference/api/export.hpp"

namespace reference::ask {

// How a hit was found, from the closest to the loosest.
enum class Rung : std::uint8_t {
    Name,            // the very name
    AnyCase,         // the name in another case
    WithoutPackage,  // the name has more components before, or between, the typed ones
    OtherPackage,    // the last component, without typed ones that the name does not have
    Parts,           // all words are parts of the name
    Beginning,       // the name, or a part of it, begins like what was typed
    Spelling,        // one or two slips of spelling away
    Words,           // all words stand in the name and the purpose, in any form
    Text,            // all words stand in the text of the page
    MostWords,       // most words do
};

// The name of the rung as programs read it: "without-package". Lives as long as the process.
[[nodiscard]] VELTRA_REFERENCE_API std::string_view toString(Rung rung) noexcept;

// What the rung says of a hit, for people: "the name begins like this". Lives as long as the
// process.
[[nodiscard]] VELTRA_REFERENCE_API std::string_view describe(Rung rung) noexcept;

// Whether what the rung finds is only likely to be meant.
[[nodiscard]] constexpr bool isGuess(Rung rung) noexcept {
    return rung == Rung::Text || rung == Rung::MostWords;
}

}  // namespace reference::ask
