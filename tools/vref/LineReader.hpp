#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace reference::tools {

// Lines from a file descriptor that may keep its reader waiting: a pipe or a terminal. By one
// thread.
class LineReader {
  public:
    // Far longer than any request; what is longer is no request, and is not kept in memory.
    static constexpr std::size_t longestLine = std::size_t{1} << 20;

    enum class State {
        Line,      // a line is there
        TooLong,   // a line longer than `longestLine` was passed over
        NoneYet,   // the time is up
        AtTheEnd,  // there are no more
        Unread,    // nobody reads the answers any more
    };

    struct Result {
        State state;
        std::string line;  // without its line end (LF or CR LF)
    };

    // `descriptor` stays the caller's, and open while this lives; so does `answers`, where the
    // answers to the lines are written, if that is to be watched too.
    explicit LineReader(int descriptor, int answers = -1) noexcept
        : m_descriptor(descriptor), m_answers(answers) {}

    // The next line, waiting for it at most so long. The last line need not have an end. A
    // descriptor that cannot be read is at its end. While it waits, it notices when the last reader
    // of the answers goes.
    [[nodiscard]] Result next(std::chrono::milliseconds patience);

  private:
    // Takes the first `size` units, and the line end behind them, out of the buffer.
    [[nodiscard]] Result take(std::size_t size, std::size_t lineEnd);

    const int m_descriptor;
    const int m_answers;
    std::string m_buffer;
    std::size_t m_searched = 0;  // how much of the buffer is known to hold no line end
    bool m_isOverlong = false;   // the line that the buffer begins in the middle of is too long
    bool m_atTheEnd = false;
};

}  // namespace reference::tools
