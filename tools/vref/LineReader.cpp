#include "vref/LineReader.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace reference::tools {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

LineReader::Result LineReader::take(std::size_t size, std::size_t lineEnd) {
    std::string line = m_buffer.substr(m_begin, size);
    m_begin += size + lineEnd;
    m_searched = m_begin;
    // What was taken goes once it is as much as what is left, so that each byte is moved once.
    if (m_begin * 2 >= m_buffer.size()) {
        m_buffer.erase(0, m_begin);
        m_begin = 0;
        m_searched = 0;
    }
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

void LineReader::endWith(int error) {
    m_error = std::generic_category().message(error);
    m_atTheEnd = true;
}

LineReader::Result LineReader::next(milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    while (true) {
        if (const auto end = m_buffer.find('\n', m_searched); end != std::string::npos)
            return take(end - m_begin, 1);
        m_searched = m_buffer.size();
        if (m_buffer.size() - m_begin > maxLineLength) {
            if (!m_isOverlong)
                m_beginning = m_buffer.substr(m_begin, beginningLength);
            m_isOverlong = true;
            m_buffer.clear();
            m_begin = 0;
            m_searched = 0;
        }
        if (m_atTheEnd) {
            if (m_buffer.size() == m_begin && !m_isOverlong)
                return {m_error.empty() ? State::AtTheEnd : State::Failed, m_error};
            return take(m_buffer.size() - m_begin, 0);
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
        if (ready < 0) {
            if (errno != EINTR)
                endWith(errno);
            continue;
        }
        if (waiting[0].revents == 0)
            return {State::Unread, {}};
        std::array<char, 65536> piece;
        const auto count = ::read(m_descriptor, piece.data(), piece.size());
        if (count > 0)
            m_buffer.append(piece.data(), static_cast<std::size_t>(count));
        else if (count == 0)
            m_atTheEnd = true;
        else if (errno != EINTR && errno != EAGAIN)
            endWith(errno);
    }
}

}  // namespace reference::tools
