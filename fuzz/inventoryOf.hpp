// The inventory of a built tree.
#pragma once

#include <string>
#include <string_view>

#include <zlib.h>

namespace reference::fuzz {

// The whole file, in which these lines are compressed: a fuzzer does not get through zlib.
[[nodiscard]] inline std::string inventoryOf(std::string_view lines) {
    uLongf size = compressBound(lines.size());
    std::string compressed(size, '\0');
    compress2(reinterpret_cast<Bytef*>(compressed.data()), &size,
              reinterpret_cast<const Bytef*>(lines.data()), lines.size(), 1);
    compressed.resize(size);
    return "# Sphinx inventory version 2\n# Project: P\n# Version: 1\n"
           "# The remainder of this file is compressed using zlib.\n" +
           compressed;
}

}  // namespace reference::fuzz
