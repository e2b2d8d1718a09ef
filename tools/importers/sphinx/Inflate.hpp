#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace reference::importers::sphinx {

// The plain form of one zlib stream. May be called from any thread.
//
// `compressed` is the whole stream; bytes after its end are not looked at. `limit` bounds the
// plain form in bytes, so that a small file cannot ask for all memory. Throws std::runtime_error
// saying what is wrong where the stream is damaged, ends early or inflates to more than `limit`.
[[nodiscard]] std::string inflate(std::string_view compressed, std::size_t limit);

}  // namespace reference::importers::sphinx
