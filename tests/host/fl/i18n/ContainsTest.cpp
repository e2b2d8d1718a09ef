#include <cstddef>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "fl/i18n/contains.hpp"
#include "support/Growth.hpp"

namespace fl::i18n {
namespace VELTRA_TEST_FILE {

using reference::tests::growsLinearly;

// Of two letters, so that texts often hold parts, and beginnings of parts.
template <typename Char>
std::basic_string<Char> randomText(std::mt19937& random, std::size_t longest) {
    std::basic_string<Char> text(random() % (longest + 1), Char('a'));
    for (Char& unit : text)
        unit = random() % 8 == 0 ? Char('b') : Char('a');
    return text;
}

template <typename Char>
void expectFindsAsTheStandardLibraryDoes() {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        const auto text = randomText<Char>(random, 600);
        const bool isWithin = round % 2 == 0 && !text.empty();
        const auto part = isWithin ? text.substr(random() % text.size(), random() % 200)
                                   : randomText<Char>(random, 200);
        const std::basic_string_view<Char> view = text;
        ASSERT_EQ(contains(view, std::basic_string_view<Char>(part)),
                  view.find(part) != std::basic_string_view<Char>::npos)
            << "round " << round;
    }
}

TEST(ContainsTest, FindsBytesAsTheStandardLibraryDoes) {
    expectFindsAsTheStandardLibraryDoes<char>();
}

TEST(ContainsTest, FindsUnitsAsTheStandardLibraryDoes) {
    expectFindsAsTheStandardLibraryDoes<char16_t>();
}

TEST(ContainsTest, HoldsTheEmptyTextAndItself) {
    EXPECT_TRUE(contains("", ""));
    EXPECT_TRUE(contains(u"", u""));
    EXPECT_TRUE(contains("a", ""));
    EXPECT_TRUE(contains(u"a", u""));
    EXPECT_FALSE(contains("", "a"));
    EXPECT_FALSE(contains(u"", u"a"));
    const std::u16string text(100, u'a');
    EXPECT_TRUE(contains(text, text));
    EXPECT_FALSE(contains(text, text + u"a"));
}

TEST(ContainsTest, IsLinearForBytesThatRepeat) {
    EXPECT_TRUE(growsLinearly([](std::size_t size) {
        EXPECT_FALSE(contains(std::string(size, 'a'), std::string(size / 2, 'a') + "b"));
    }));
}

TEST(ContainsTest, IsLinearForUnitsThatRepeat) {
    EXPECT_TRUE(growsLinearly([](std::size_t size) {
        EXPECT_FALSE(contains(std::u16string(size, u'a'), std::u16string(size / 2, u'a') + u"b"));
    }));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace fl::i18n
