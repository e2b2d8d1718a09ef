// The best of many by their scores. Internal: no public header includes it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace reference::ask {

// Keeps the best of what is shown one after the other; `Scored` has a `score`. Of equal ones, those
// that are shown first. One thread.
template <typename Scored>
class Likeliest {
  public:
    explicit Likeliest(std::size_t count) : m_count(count) {}

    // Whether one of this score would be kept now.
    [[nodiscard]] bool isBetter(float score) const noexcept {
        return m_best.size() < m_count || (m_count > 0 && score > m_best.back().score);
    }

    void add(const Scored& scored) {
        if (!isBetter(scored.score))
            return;
        if (m_best.size() == m_count)
            m_best.pop_back();
        const auto place = std::ranges::upper_bound(
            m_best, scored.score, [](float a, float b) { return a > b; }, &Scored::score);
        m_best.insert(place, scored);
    }

    // The best first.
    [[nodiscard]] std::vector<Scored> take() { return std::move(m_best); }

  private:
    const std::size_t m_count;
    std::vector<Scored> m_best;  // in order
};

}  // namespace reference::ask
