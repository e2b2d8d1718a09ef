#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string>

#include "vref/Terminal.hpp"

namespace reference::tools {

// Shows the progress of a long piece of work: on a terminal as a bar that is redrawn in place,
// elsewhere as a plain line at each tenth. One thread at a time.
class ProgressBar {
  public:
    // `label` says what is being done. `out` and `terminal` belong to the same stream.
    ProgressBar(std::ostream& out, const Terminal& terminal, std::string label);

    // Takes the bar off the terminal.
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;  // there is one line to draw on
    ProgressBar& operator=(const ProgressBar&) = delete;

    // `done` of `total` steps are complete; redraws only as often as the eye can follow.
    void update(std::size_t done, std::size_t total);

  private:
    void drawBar(std::size_t done, std::size_t total);

    std::ostream& m_out;
    const Terminal& m_terminal;
    std::string m_label;
    std::chrono::steady_clock::time_point m_lastDrawn;
    std::size_t m_lastTenth = 0;
    bool m_isDrawn = false;
};

}  // namespace reference::tools
