#pragma once

#include <iosfwd>
#include <string>

#include "foundation/core/TextStream.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// Where a command writes an answer that may be long. On a terminal the answer is collected and
// then, where it has more lines than the terminal, shown by a pager. Elsewhere it goes straight to
// the standard output stream. By one thread.
class PagedOutput {
  public:
    // `terminal` is that of the standard output stream. `pager` is a shell's command, or empty
    // where none is wanted.
    PagedOutput(const Terminal& terminal, std::string pager);
    PagedOutput(const PagedOutput&) = delete;  // one answer
    PagedOutput& operator=(const PagedOutput&) = delete;

    // Takes the answer, with the escape sequences of `terminal`.
    [[nodiscard]] std::ostream& stream();

    // Shows the answer and, where a pager does so, waits for its end. It is no fault to leave the
    // pager early. Where it cannot be started or fails, a message says so and the answer goes to
    // the standard output stream. While it runs, the pager alone receives what is typed, Ctrl-C
    // included; a signal to end this process takes effect when the pager has ended, and left the
    // terminal as it was.
    void show();

  private:
    [[nodiscard]] bool isLong(const std::string& answer) const;

    const Terminal m_terminal;
    const std::string m_pager;
    foundation::core::TextStream m_collected;
};

}  // namespace reference::tools
