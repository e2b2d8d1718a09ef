#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace reference::bench {

// How well questions were answered, and how fast. Shares are between 0 and 1.
class Score {
  public:
    // Rank 0 means that no answer was right.
    void add(std::size_t rank, double microseconds) {
        m_first += rank == 1 ? 1 : 0;
        m_amongFive += rank >= 1 && rank <= 5 ? 1 : 0;
        m_reciprocals += rank > 0 ? 1.0 / static_cast<double>(rank) : 0.0;
        m_times.insert(std::ranges::upper_bound(m_times, microseconds), microseconds);
    }

    [[nodiscard]] std::size_t count() const { return m_times.size(); }
    [[nodiscard]] double first() const { return m_first / static_cast<double>(count()); }
    [[nodiscard]] double amongFive() const { return m_amongFive / static_cast<double>(count()); }
    [[nodiscard]] double meanReciprocalRank() const {
        return m_reciprocals / static_cast<double>(count());
    }
    // The time that the given share of the questions took at most.
    [[nodiscard]] double time(double share) const {
        const auto place = static_cast<std::size_t>(share * static_cast<double>(count()));
        return m_times[std::min(place, count() - 1)];
    }

  private:
    double m_first = 0;
    double m_amongFive = 0;
    double m_reciprocals = 0;
    std::vector<double> m_times;  // sorted
};

}  // namespace reference::bench
