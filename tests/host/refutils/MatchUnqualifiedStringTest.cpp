#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "fl/i18n/utf.hpp"
#include "refutils/matchUnqualifiedString.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using utils::matchUnqualifiedString;

// All texts of up to four units over a letter and the two dividers.
std::vector<std::u16string> allShortTexts() {
    std::vector<std::u16string> texts{u""};
    for (std::size_t at = 0; at < texts.size() && texts[at].size() < 4; ++at)
        for (const char16_t unit : {u'a', u'.', u'/'})
            texts.push_back(texts[at] + unit);
    return texts;
}

std::size_t componentsOf(const std::u16string& pattern) {
    return static_cast<std::size_t>(std::ranges::count(pattern, u'.')) + 1;
}

bool isDivider(char16_t unit) {
    return unit == u'.' || unit == u'/';
}

// The contract in other words: cut the candidate after each divider, and look for the pattern among
// it and its remainders.
bool isOneOfItsEndings(const std::u16string& pattern, const std::u16string& candidate) {
    if (pattern == candidate)
        return true;
    for (std::size_t at = 0; at < candidate.size(); ++at)
        if (isDivider(candidate[at]) && !pattern.empty() && candidate.substr(at + 1) == pattern)
            return true;
    return false;
}

TEST(MatchUnqualifiedStringTest, KeepsItsContractForAllShortTexts) {
    const auto texts = allShortTexts();
    ASSERT_EQ(texts.size(), 1U + 3 + 9 + 27 + 81);
    for (const auto& pattern : texts)
        for (const auto& candidate : texts) {
            const std::string pair =
                "\"" + fl::i18n::toUtf8(pattern) + "\" in \"" + fl::i18n::toUtf8(candidate) + "\"";
            const std::size_t components = componentsOf(pattern);
            EXPECT_EQ(matchUnqualifiedString(pattern, components, candidate, true),
                      pattern == candidate)
                << pair << ", qualified";
            const bool matches = matchUnqualifiedString(pattern, components, candidate, false);
            EXPECT_EQ(matches, isOneOfItsEndings(pattern, candidate)) << pair;
            if (!matches)
                continue;
            EXPECT_TRUE(candidate.ends_with(pattern)) << pair;
            EXPECT_TRUE(candidate.size() == pattern.size() ||
                        isDivider(candidate[candidate.size() - pattern.size() - 1]))
                << pair;
        }
}

TEST(MatchUnqualifiedStringTest, ComparesNamesAsReadersWriteThem) {
    struct Row {
        std::u16string_view pattern;
        std::u16string_view candidate;
        bool matches;
    };
    const std::vector<Row> rows = {
        {u"method", u"pkg.Class.method", true},
        {u"Class.method", u"pkg.Class.method", true},
        {u"pkg.Class.method", u"pkg.Class.method", true},
        {u"lass.method", u"pkg.Class.method", false},
        {u"Class", u"pkg.Class.method", false},
        {u"Gain", u"blocks/Gain", true},
        {u"gain", u"blocks/Gain", false},
        {u"other.pkg.Class.method", u"pkg.Class.method", false},
        {u"測定", u"信号.測定", true},
        {u"", u"pkg", false},
        {u"", u"pkg.", false},
        {u"", u"", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(fl::i18n::toUtf8(row.pattern) + " in " + fl::i18n::toUtf8(row.candidate));
        const auto components = componentsOf(std::u16string(row.pattern));
        EXPECT_EQ(matchUnqualifiedString(row.pattern, components, row.candidate, false),
                  row.matches);
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
