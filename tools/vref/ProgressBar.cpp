#include "vref/ProgressBar.hpp"

#include <algorithm>
#include <ostream>
#include <utility>

#include "vref/DisplayText.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

constexpr auto redrawInterval = std::chrono::milliseconds(50);
constexpr std::size_t widestBar = 40;

}  // namespace

ProgressBar::ProgressBar(std::ostream& out, const Terminal& terminal, std::string label)
    : m_out(out), m_terminal(terminal), m_label(std::move(label)) {}

ProgressBar::~ProgressBar() {
    if (m_isDrawn)
        m_out << '\r' << clearRestOfLine << std::flush;
}

void ProgressBar::update(std::size_t done, std::size_t total) {
    if (total == 0)
        return;
    if (!m_terminal.isTerminal()) {
        const std::size_t tenth = done * 10 / total;
        if (tenth != std::exchange(m_lastTenth, tenth))
            m_out << m_label << ": " << done << " of " << total << '\n';
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (m_isDrawn && done < total && now - m_lastDrawn < redrawInterval)
        return;
    m_lastDrawn = now;
    drawBar(done, total);
}

void ProgressBar::drawBar(std::size_t done, std::size_t total) {
    const std::string counts = " " + std::to_string(done) + "/" + std::to_string(total);
    const std::size_t taken = displayWidth(m_label) + counts.size() + 4;
    const std::size_t left = m_terminal.width() > taken ? m_terminal.width() - taken : 0;
    const std::size_t width = std::min(left, widestBar);
    const std::size_t filled = width * done / total;
    m_out << '\r' << cutToWidth(m_label, m_terminal.width() / 2) << " [" << std::string(filled, '=')
          << std::string(width - filled, ' ') << ']' << counts << clearRestOfLine << std::flush;
    m_isDrawn = true;
}

}  // namespace reference::tools
