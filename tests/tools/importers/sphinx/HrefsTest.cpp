#include <gtest/gtest.h>

#include "sphinx/Hrefs.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

TEST(HrefsTest, ResolveAgainstThePageTheyStandOn) {
    const struct {
        const char* page;
        const char* href;
        const char* target;
    } rows[] = {
        {"a/b.html", "#x", "a/b.html#x"},
        {"a/b.html", "c.html", "a/c.html"},
        {"a/b.html", "../c.html#x", "c.html#x"},
        {"a/b.html", "./c/./d.html", "a/c/d.html"},
        {"a/b.html", "c.html?highlight=x#y", "a/c.html#y"},
        {"b.html", "../c.html", "../c.html"},
        {"b.html", "https://e.org/a#b", "https://e.org/a#b"},
        {"b.html", "mailto:x", "mailto:x"},
        {"b.html", "//e.org/x", "//e.org/x"},
        {"b.html", "/x.html", "/x.html"},
        {"lib/os/", "../io/#io.f", "lib/io/#io.f"},
        {"lib/os/", "#os.f", "lib/os/#os.f"},
        {"a/b.html", "", "a/b.html"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(resolvedHref(row.page, row.href), row.target) << row.page << " " << row.href;
}

TEST(HrefsTest, NameTheIndexPageOfTheRoot) {
    EXPECT_EQ(hrefOf("", "x"), "index.html#x");
    EXPECT_EQ(hrefOf("a.html", ""), "a.html");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
