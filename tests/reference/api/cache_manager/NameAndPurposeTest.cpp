#include <string>

#include <gtest/gtest.h>

#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::cache_manager {
namespace VELTRA_TEST_FILE {

struct Case {
    const char* name;
    std::u16string searchText;
    std::u16string entity;
    std::u16string purpose;
    bool caseSensitive;
    bool expected;
};

TEST(NameAndPurposeTest, HoldsForPartsOfNameOrPurpose) {
    const std::u16string surrogate(1, char16_t{0xD800});
    const std::u16string longPurpose = std::u16string(3000, u'x') + u"ENDE";
    const std::u16string growing(700, u'\u0130');  // lower case has twice as many units
    const Case cases[] = {
        {"part of the name", u"kde", u"stats.kde_fit", u"", true, true},
        {"part of the purpose", u"density", u"a", u"A density estimate", true, true},
        {"neither", u"wave", u"stats.kde", u"A density estimate", true, false},
        {"empty text is found nowhere", u"", u"a", u"b", true, false},
        {"empty text is found nowhere, folded", u"", u"a", u"b", false, false},
        {"case counts in the purpose", u"density", u"a", u"DENSITY", true, false},
        {"purpose is folded", u"density", u"a", u"DENSITY", false, true},
        {"name is not folded here", u"kde", u"KDE", u"", false, false},
        {"text is not folded here", u"KDE", u"kde", u"kde", false, false},
        {"purpose longer than any buffer is folded", u"ende", u"a", longPurpose, false, true},
        {"purpose that grows when folded", u"i\u0307i\u0307", u"a", growing, false, true},
        {"purpose that cannot be folded is compared as it is", u"KDE", u"a", u"KDE" + surrogate,
         false, true},
        {"purpose that cannot be folded is not folded", u"kde", u"a", u"KDE" + surrogate, false,
         false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ReferenceCacheManager::IsNameAndPurposeContentMatch(c.searchText, c.entity,
                                                                      c.purpose, c.caseSensitive),
                  c.expected)
            << c.name;
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::cache_manager
