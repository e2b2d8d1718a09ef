#include "refutils/matchUnqualifiedString.hpp"

#include <cstring>

namespace reference::utils {
namespace {

// The library compares units one by one, since their order matters; here it does not.
bool isSame(std::u16string_view a, std::u16string_view b) noexcept {
    return a.size() == b.size() &&
           std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
}

}  // namespace

bool matchUnqualifiedString(std::u16string_view pattern, std::size_t /*patternComponents*/,
                            std::u16string_view candidate, bool qualified) noexcept {
    if (qualified || candidate.size() <= pattern.size())
        return isSame(candidate, pattern);
    const std::size_t start = candidate.size() - pattern.size();
    const char16_t before = candidate[start - 1];
    return !pattern.empty() && (before == u'.' || before == u'/') &&
           isSame(candidate.substr(start), pattern);
}

}  // namespace reference::utils
