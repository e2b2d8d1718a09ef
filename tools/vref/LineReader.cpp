#include "vref/LineReader.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace reference::tools {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

LineReader::Result LineReader::take(std::size_t size, std::size_t lineEnd) {
    std::string line = m_buffer.substr(0, size);
    m_buffer.erase(0, size + lineEnd);
    m_searched = 0;
    if (m_isOverlong || line.size() > maxLineLength) {
        std::string beginning =
            m_isOverlong ? std::move(m_beginning) : line.substr(0, beginningLength);
        m_isOverlong = false;
        return {State::TooLong, std::move(beginning)};
    }
    if (line.ends_with('\r'))
        line.pop_back();
    return {State::Line, std::move(line)};
}

LineReader::Result LineReader::next(milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    while (true) {
        if (const auto end = m_buffer.find('\n', m_searched); end != std::string::npos)
            return take(end, 1);
        m_searched = m_buffer.size();
        if (m_buffer.size() > maxLineLength) {
            if (!m_isOverlong)
                m_beginning = m_buffer.substr(0, beginningLength);
            m_isOverlong = true;
            m_buffer.clear();
            m_searched = 0;
        }
        if (m_atTheEnd) {
            if (m_buffer.empty() && !m_isOverlong)
                return {State::AtTheEnd, {}};
            return take(m_buffer.size(), 0);
        }

        const auto left = std::chrono::duration_cast<milliseconds>(deadline - Clock::now());
        // For the answers only errors matter, and poll(2) reports those without being asked. It
        // ignores a negative descriptor.
        std::array<pollfd, 2> waiting{{{.fd = m_descriptor, .events = POLLIN, .revents = 0},
                                       {.fd = m_answers, .events = 0, .revents = 0}}};
        const int ready = ::poll(waiting.data(), waiting.size(),
                                 static_cast<int>(std::max<milliseconds::rep>(left.count(), 0)));
        if (ready == 0)
            return {State::NoneYet, {}};
        if (ready < 0 && errno != EINTR) {
            m_atTheEnd = true;
            continue;
        }
        if (ready < 0)
            continue;
        if (waiting[0].revents == 0)
            return {State::Unread, {}};
        std::array<char, 65536> piece;
        const auto count = ::read(m_descriptor, piece.data(), piece.size());
        if (count > 0)
            m_buffer.append(piece.data(), static_cast<std::size_t>(count));
        else if (count == 0 || (errno != EINTR && errno != EAGAIN))
            m_atTheEnd = true;
    }
}

}  // namespace reference::tools
