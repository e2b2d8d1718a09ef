// Numbers in ascending order, and how they are collected. Internal: no public header includes it.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>
#include <vector>

#include <boost/container/small_vector.hpp>

#include "docimage/Image.hpp"

namespace reference::search {

// All numbers below `count`.
[[nodiscard]] inline std::vector<std::uint32_t> allNumbers(std::size_t count) {
    std::vector<std::uint32_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0U);
    return numbers;
}

// Collects numbers below a limit, in any order. A few are kept as they come and sorted in the end;
// where there are many, a bit for each possible number is cheaper.
class NumberSet {
  public:
    explicit NumberSet(std::size_t limit) : m_limit(limit) {}

    // Throws DamagedImage for a number that is not below the limit: it comes from an image.
    void insert(std::uint32_t number) {
        if (number >= m_limit)
            throw docimage::DamagedImage("An image refers to something that it does not have.");
        if (m_bits.empty()) {
            m_numbers.push_back(number);
            if (m_numbers.size() > fewNumbers)
                switchToBits();
            return;
        }
        setBit(number);
    }

    // The numbers in ascending order, each once; valid as long as the set. Nothing may be inserted
    // afterwards.
    [[nodiscard]] std::span<const std::uint32_t> numbers() {
        if (m_bits.empty()) {
            std::ranges::sort(m_numbers);
            m_numbers.erase(std::unique(m_numbers.begin(), m_numbers.end()), m_numbers.end());
            return m_numbers;
        }
        std::size_t count = 0;
        for (const std::uint64_t bits : m_bits)
            count += static_cast<std::size_t>(std::popcount(bits));
        m_numbers.clear();
        m_numbers.reserve(count);
        for (std::size_t at = 0; at < m_bits.size(); ++at)
            for (std::uint64_t bits = m_bits[at]; bits != 0; bits &= bits - 1)
                m_numbers.push_back(static_cast<std::uint32_t>(
                    at * bitsPerWord + static_cast<std::size_t>(std::countr_zero(bits))));
        return m_numbers;
    }

    // The same as a list of its own.
    [[nodiscard]] std::vector<std::uint32_t> take() {
        const auto taken = numbers();
        return {taken.begin(), taken.end()};
    }

  private:
    static constexpr std::size_t fewNumbers = 48;
    static constexpr std::size_t bitsPerWord = 64;

    void switchToBits() {
        m_bits.resize(m_limit / bitsPerWord + 1);
        for (const std::uint32_t number : m_numbers)
            setBit(number);
        m_numbers.clear();
    }

    void setBit(std::uint32_t number) {
        m_bits[number / bitsPerWord] |= std::uint64_t{1} << (number % bitsPerWord);
    }

    std::size_t m_limit;
    boost::container::small_vector<std::uint32_t, fewNumbers + 1> m_numbers;
    std::vector<std::uint64_t> m_bits;  // empty until there are many
};

}  // namespace reference::search
