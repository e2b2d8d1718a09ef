// What is read from a file can be written, and is then the same when it is read again.
#pragma once

#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "ReadFaults.hpp"
#include "support/TempFolder.hpp"

namespace reference::fuzz {

// Puts the input into a file of that name. `read(folder, handler)` returns its contents or nothing,
// `write(contents)` a text that says the same, and `requireSame(again, contents, text)` compares.
// Returns whether the input is sound.
template <typename Read, typename Write, typename RequireSame>
bool requireRoundTrip(const char* fileName, std::string_view input, Read read, Write write,
                      RequireSame requireSame) {
    static const tests::TempFolder folder;
    folder.write(fileName, input);
    ReadFaults faults(input);
    const auto contents = read(folder.path(), faults.handler());
    require(contents || faults.count() > 0, "A file that is refused has a fault");
    if (!contents || faults.count() > 0)
        return false;
    const std::string text = write(*contents);
    folder.write(fileName, text);
    ReadFaults none(text);
    const auto again = read(folder.path(), none.handler());
    require(again && none.count() == 0, "What was read can be written", text);
    requireSame(*again, *contents, text);
    return true;
}

}  // namespace reference::fuzz
