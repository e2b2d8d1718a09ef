#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "fl/i18n/utf.hpp"

namespace reference::bench {

// Takes an answer. While an answer is timed it only reads the first letter of every text, so that
// nobody is asked for texts that are never looked at; to be checked, an answer is kept.
class Delivery {
  public:
    enum class Mode { Timed, Kept };
    explicit Delivery(Mode mode) : m_isKept(mode == Mode::Kept) {}

    // A page.
    template <typename Char>
    void add(std::basic_string_view<Char> product, std::basic_string_view<Char> href) {
        ++m_count;
        read(product);
        read(href);
        if (m_isKept)
            m_hits.push_back(toText(product) + ' ' + toText(href));
    }

    // A result.
    template <typename Char>
    void add(std::basic_string_view<Char> product, std::basic_string_view<Char> href,
             std::basic_string_view<Char> name, std::basic_string_view<Char> purpose) {
        add(product, href);
        read(name);
        read(purpose);
    }

    [[nodiscard]] std::size_t count() const noexcept { return m_count; }
    // Depends on what was read, so that no compiler leaves the reading out.
    [[nodiscard]] std::size_t checksum() const noexcept { return m_checksum; }

    // "product href" of what was kept, sorted.
    [[nodiscard]] std::vector<std::string> takeHits() {
        std::ranges::sort(m_hits);
        return std::move(m_hits);
    }

  private:
    static std::string toText(std::string_view text) { return std::string(text); }
    static std::string toText(std::u16string_view text) { return fl::i18n::toUtf8(text); }

    template <typename Char>
    void read(std::basic_string_view<Char> text) {
        m_checksum += text.empty() ? 1 : static_cast<std::size_t>(text.front()) + text.size();
    }

    const bool m_isKept;
    std::size_t m_count = 0;
    std::size_t m_checksum = 0;
    std::vector<std::string> m_hits;
};

}  // namespace reference::bench
