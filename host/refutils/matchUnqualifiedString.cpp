#include "refutils/matchUnqualifiedString.hpp"

namespace reference::utils {

bool matchUnqualifiedString(std::u16string_view pattern, std::size_t /*patternComponents*/,
                            std::u16string_view candidate, bool qualified) noexcept {
    if (qualified || candidate.size() <= pattern.size())
        return candidate == pattern;
    if (pattern.empty() || !candidate.ends_with(pattern))
        return false;
    const char16_t before = candidate[candidate.size() - pattern.size() - 1];
    return before == u'.' || before == u'/';
}

}  // namespace reference::utils
