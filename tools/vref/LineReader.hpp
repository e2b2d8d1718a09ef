#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace reference::tools {

// Lines from a file descriptor that may keep its reader waiting: a pipe or a terminal. Used by one
// thread.
class LineReader {
  public:
    // Far longer than any request. A longer line cannot be a request and is not kept in memory.
    static constexpr std::size_t maxLineLength = std::size_t{1} << 20;
    // So much of such a line is kept.
    static constexpr std::size_t beginningLength = 256;

    enum class State {
        Line,      // a line is there
        TooLong,   // a line longer than `maxLineLength` was skipped
        NoneYet,   // the time is up
        AtTheEnd,  // there are no more
        Failed,    // there are no more, because the descriptor cannot be read
        Unread,    // nobody reads the answers any more
    };

    struct Result {
        State state;
        // Without its line end (LF or CR LF); of one that is too long, the beginning. Where reading
        // failed, the system's reason.
        std::string line;
    };

    // The caller owns `descriptor` and keeps it open while this lives. The same holds for
    // `answers`, where the answers to the lines are written; pass it if it is to be watched too.
    explicit LineReader(int descriptor, int answers = -1) noexcept
        : m_descriptor(descriptor), m_answers(answers) {}

    // The next line; waits for it no longer than `patience`. The last line need not have an end.
    // While it waits, it notices when the last reader of the answers goes away.
    [[nodiscard]] Result next(std::chrono::milliseconds patience);

  private:
    void endWith(int error);

    // Takes the first `size` units, and the line end after them, out of the buffer.
    [[nodiscard]] Result take(std::size_t size, std::size_t lineEnd);

    const int m_descriptor;
    const int m_answers;
    std::string m_buffer;
    std::size_t m_begin = 0;     // of what has not been taken yet
    std::size_t m_searched = 0;  // how far the buffer is known to hold no line end
    // The buffer begins in the middle of a line that is too long, and this is its beginning.
    bool m_isOverlong = false;
    std::string m_beginning;
    bool m_atTheEnd = false;
    std::string m_error;  // why the end came, where it is no end
};

}  // namespace reference::tools
