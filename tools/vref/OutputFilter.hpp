#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace reference::tools {

// What keeps a terminal from being controlled by what it shows. All that the tool writes to its
// standard streams goes through one of these, whatever it comes from.
//
// Passes well-formed UTF-8 without control characters, line and paragraph separators, and those
// that change the direction of text (Unicode's embeddings, overrides and isolates); of these it
// passes line feeds, tabs and carriage returns, and of escape sequences the few that the tool
// itself writes: its styles, links, and the clearing of the rest of a line. Of another sequence
// only the escape character is dropped, so that the rest stays to be seen; a byte that is no UTF-8
// becomes a question mark.
//
// Texts are made fit to be shown where they are put together (DisplayText.hpp): this is the last
// line of defence, and cannot tell where a message ends. One stream, one thread at a time.
class OutputFilter {
  public:
    // Bytes that come in pieces of up to this size need no memory besides what is taken here.
    static constexpr std::size_t usualSize = 65536;
    OutputFilter();

    // What is to be written for the bytes that come next. A character or sequence that is not
    // complete waits for the rest of it. Lives until the next call.
    [[nodiscard]] std::string_view pass(std::string_view bytes);

    // What is to be written for what still waits.
    [[nodiscard]] std::string_view finish();

  private:
    void passAll(bool isEnd);

    std::string m_bytes;  // what waits, then what came
    std::string m_passed;
};

}  // namespace reference::tools
