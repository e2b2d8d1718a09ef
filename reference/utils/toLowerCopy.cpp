#include "reference/utils/toLowerCopy.hpp"

#include <utility>

#include "fl/i18n/transform.hpp"

namespace reference::utils {

LowerCased::LowerCased(std::u16string_view text) noexcept : m_view(text) {
    using fl::i18n::to_lower;
    using fl::i18n::detail::transform;
    try {
        const std::size_t length =
            transform(m_buffer.data(), m_buffer.size(), text.data(), text.size(), to_lower());
        if (length <= m_buffer.size()) {
            m_view = {m_buffer.data(), length};
            return;
        }
        m_long.resize(length);
        transform(m_long.data(), m_long.size(), text.data(), text.size(), to_lower());
        m_view = m_long;
    } catch (...) {
        // The view is the text itself.
    }
}

std::u16string LowerCased::take() {
    return m_view.data() == m_long.data() ? std::move(m_long) : std::u16string(m_view);
}

std::u16string toLowerCopy(std::u16string_view text) {
    return LowerCased(text).take();
}

}  // namespace reference::utils
