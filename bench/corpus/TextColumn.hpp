#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace reference::bench {

// Many texts one after the other in one buffer, each followed by a zero byte, so that all of them
// can be searched in one go and no match reaches from one into the next. Texts hold no zero byte.
class TextColumn {
  public:
    void add(std::string_view text) {
        m_bytes.append(text).push_back('\0');
        m_ends.push_back(m_bytes.size());
    }

    [[nodiscard]] std::size_t size() const noexcept { return m_ends.size(); }
    // All texts with their zero bytes.
    [[nodiscard]] std::string_view bytes() const noexcept { return m_bytes; }
    [[nodiscard]] std::string_view operator[](std::size_t index) const noexcept {
        const std::size_t begin = index == 0 ? 0 : m_ends[index - 1];
        return std::string_view(m_bytes).substr(begin, m_ends[index] - begin - 1);
    }

    // Calls `found` with the index of each text that contains `part`, in ascending order, until it
    // returns false. Requires: `part` is not empty.
    template <typename Found>
    void forEachWith(std::string_view part, Found found) const {
        const char* const begin = m_bytes.data();
        const char* const end = begin + m_bytes.size();
        auto text = m_ends.begin();
        for (const char* from = begin; from < end;) {
            const void* const hit =
                memmem(from, static_cast<std::size_t>(end - from), part.data(), part.size());
            if (hit == nullptr)
                return;
            const auto place = static_cast<std::uint64_t>(static_cast<const char*>(hit) - begin);
            text = std::upper_bound(text, m_ends.end(), place);
            if (!found(static_cast<std::uint32_t>(text - m_ends.begin())))
                return;
            from = begin + *text;
        }
    }

  private:
    std::string m_bytes;
    std::vector<std::uint64_t> m_ends;
};

}  // namespace reference::bench
