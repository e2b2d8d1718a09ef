#pragma once

#include <string>

namespace reference::bench {

// One text to look for, in the forms that contestants take it in: none of them converts it while it
// is timed.
struct Query {
    std::u16string text;
    // UTF-8.
    std::string utf8;
    // In lower case.
    std::string folded;
};

}  // namespace reference::bench
