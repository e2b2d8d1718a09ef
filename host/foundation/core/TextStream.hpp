#pragma once

#include <ios>
#include <sstream>

namespace foundation::core {

// A string that is written as a stream, whole or not at all: where memory runs out while something
// is inserted, std::bad_alloc is thrown. A plain std::ostringstream drops what does not fit, and
// goes on without a word. One thread at a time.
class TextStream : public std::ostringstream {
  public:
    TextStream() { exceptions(std::ios::badbit); }
};

}  // namespace foundation::core
