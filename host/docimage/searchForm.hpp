// The form in which names and texts are indexed, and what a text is made of.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <boost/container/small_vector.hpp>

#include "foundation/core/export.hpp"

namespace reference::docimage {

// The text in lower case, with both small sigmas as one, as bytes (see unitBytes.hpp).
//
// Lower-casing alone would not do for an index: whether a capital sigma becomes a final one depends
// on its neighbours, and a text with an unpaired surrogate is not lower-cased at all. In this form
// every unit is mapped by itself (unpaired surrogates stay), so that it has three properties on
// which every proposal of an index rests, whether the request folds case or not:
// - if a text holds another, so do their forms, unless the other begins or ends in the middle of a
//   surrogate pair;
// - the form of a text is that of its lower case;
// - only letters change: ASCII punctuation, white space and digits stay where they are.
[[nodiscard]] VELTRA_HOST_API std::string searchForm(std::u16string_view text);

// The same for what a request asks for, mostly without allocating.
using FormBuffer = boost::container::small_vector<char, 128>;
VELTRA_HOST_API void assignSearchForm(std::u16string_view text, FormBuffer& form);

// Whether the text has no unpaired surrogate. The search form of one that has is not its lower
// case.
[[nodiscard]] VELTRA_HOST_API bool isWellFormed(std::u16string_view text);

// Whether the byte belongs to a word: an ASCII letter or digit, the underscore, and everything
// that is not ASCII.
[[nodiscard]] constexpr bool isWordByte(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x80 || (value >= 'a' && value <= 'z') || (value >= 'A' && value <= 'Z') ||
           (value >= '0' && value <= '9') || value == '_';
}

// Calls `visit(word)` for each longest run of word bytes in a search form.
template <typename Visit>
void forEachWord(std::string_view form, Visit visit) {
    for (std::size_t at = 0; at < form.size();) {
        if (!isWordByte(form[at])) {
            ++at;
            continue;
        }
        std::size_t end = at + 1;
        while (end < form.size() && isWordByte(form[end]))
            ++end;
        visit(form.substr(at, end - at));
        at = end;
    }
}

}  // namespace reference::docimage
