#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "vref/Nearest.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

TEST(NearestTest, IsTheWordWithTheFewestSlips) {
    const std::vector<std::string> words = {"find", "show", "products", "import", "watch", "warm"};
    struct Case {
        std::string typed;
        std::string expected;  // empty: none is near
    };
    const Case cases[] = {
        {"fnid", "find"},
        {"fin", "find"},
        {"FIND", "find"},
        {"fiind", "find"},
        {"shwo", "show"},
        {"wtach", "watch"},
        {"warn", "warm"},
        {"pro", "products"},
        {"imp", "import"},
        {"w", ""},
        {"wa", ""},
        {"list", ""},
        {"", ""},
        {"xyz", ""},
        {"productsss", "products"},
        {"\xff\xfe", ""},
        {"products", "products"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(nearest(c.typed, words).value_or(""), c.expected) << c.typed;
    EXPECT_FALSE(nearest("find", {}));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
