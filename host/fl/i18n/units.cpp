#include "fl/i18n/units.hpp"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace fl::i18n {

bool isLetterOrDigit(char16_t unit) noexcept {
    if (unit < 0x80)
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
               (unit >= u'0' && unit <= u'9');
    return u_isalnum(unit) != 0 || U16_IS_SURROGATE(unit);
}

bool isWhiteSpace(char16_t unit) noexcept {
    return u_isUWhiteSpace(unit) != 0;
}

}  // namespace fl::i18n
