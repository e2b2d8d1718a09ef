#include "corpus/fold.hpp"

#include <stdexcept>

#include "fl/i18n/transform.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::bench {

std::u16string foldCase(std::u16string_view text) {
    using fl::i18n::to_lower;
    using fl::i18n::detail::transform;
    std::u16string lower(text.size() + 8, u'\0');
    try {
        std::size_t length =
            transform(lower.data(), lower.size(), text.data(), text.size(), to_lower());
        if (length > lower.size()) {
            lower.resize(length);
            length = transform(lower.data(), lower.size(), text.data(), text.size(), to_lower());
        }
        lower.resize(length);
        return lower;
    } catch (const std::invalid_argument&) {
        // The library, too, takes a text that is no Unicode as it is.
        return std::u16string(text);
    }
}

std::string folded(std::u16string_view text) {
    return fl::i18n::toUtf8(foldCase(text));
}

}  // namespace reference::bench
