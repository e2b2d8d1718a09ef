#include "reference/utils/toLowerCopy.hpp"

#include <array>
#include <cstddef>

#include "fl/i18n/transform.hpp"

namespace reference::utils {

std::u16string toLowerCopy(std::u16string_view text) {
    using fl::i18n::to_lower;
    using fl::i18n::detail::transform;
    try {
        // Names and most purposes fit the stack; only the rare longer text is converted twice.
        std::array<char16_t, 1024> buffer;
        const std::size_t length =
            transform(buffer.data(), buffer.size(), text.data(), text.size(), to_lower());
        if (length <= buffer.size())
            return {buffer.data(), length};
        std::u16string folded(length, u'\0');
        transform(folded.data(), folded.size(), text.data(), text.size(), to_lower());
        return folded;
    } catch (...) {
        return std::u16string(text);
    }
}

}  // namespace reference::utils
