#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/TempFolder.hpp"
#include "vref/PagePlace.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;

class PagePlaceTest : public ::testing::Test {
  protected:
    PagePlaceTest() {
        for (const char* file : {"tree/a.html", "tree/deep/b.htm", "tree/with space.html",
                                 "tree/A%20b.html", "tree/\xe6\x96\x87.html", "tree/run.desktop",
                                 "tree/run.sh", "tree/plain", "tree-2/c.html", "outside.html"})
            m_folder.write(file, "page");
        fs::create_directory(tree() / "folder.html");
        fs::create_symlink("../outside.html", tree() / "link-out.html");
        fs::create_symlink("a.html", tree() / "link-in.html");
        fs::create_symlink("..", tree() / "up");
        fs::create_symlink("tree", m_folder.path() / "other-name");
    }

    [[nodiscard]] fs::path tree() const { return fs::canonical(m_folder.path() / "tree"); }

    // The address that the href leads to, without the beginning that all have; "none" if there is
    // none.
    [[nodiscard]] std::string address(const std::string& href) const {
        const auto place = placeOf(tree(), href);
        if (!place)
            return "none";
        const std::string text = place->address();
        const std::string start = "file://" + tree().string() + "/";
        return text.starts_with(start) ? text.substr(start.size()) : text;
    }

    tests::TempFolder m_folder;
};

TEST_F(PagePlaceTest, IsTheFileAndItsFragment) {
    struct Case {
        std::string href;
        std::string address;
    };
    const Case cases[] = {
        {"a.html", "a.html"},
        {"a.html#", "a.html"},
        {"a.html#numpy.f", "a.html#numpy.f"},
        {"a.html#a b\"<x>#c", "a.html#a%20b%22%3Cx%3E%23c"},
        {"a.html#%5B", "a.html#%5B"},
        {"deep/b.htm#b", "deep/b.htm#b"},
        {"./a.html", "a.html"},
        {"deep/../a.html", "a.html"},
        {"with space.html", "with%20space.html"},
        {"with%20space.html", "with%20space.html"},
        {"A%20b.html", "A%2520b.html"},
        {"\xe6\x96\x87.html#\xe6", "%E6%96%87.html#%E6"},
        {"link-in.html", "a.html"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(address(c.href), c.address) << c.href;
}

TEST_F(PagePlaceTest, NeverLeavesTheFolderNorIsAnAddressOfItsOwn) {
    const std::string absolute = (tree() / "a.html").string();
    for (const std::string& href :
         {std::string("../outside.html"), std::string("deep/../../outside.html"),
          std::string("%2e%2e/outside.html"), std::string("..%2foutside.html"),
          std::string("../tree-2/c.html"), std::string("link-out.html"),
          std::string("up/outside.html"), absolute, "file://" + absolute,
          std::string("/etc/hostname"), std::string("//example.org/a.html"),
          std::string("javascript:alert(1)//a.html"), std::string("JaVaScRiPt:a.html"),
          std::string("https://example.org/a.html"), std::string("data:text/html,a.html"),
          std::string("a.html\0.html", 12)})
        EXPECT_EQ(address(href), "none") << href;
}

TEST_F(PagePlaceTest, IsAPageThatExists) {
    for (const char* href : {"", "#a", ".", "deep", "deep/", "missing.html", "folder.html", "plain",
                             "run.desktop", "run.sh", "a.html/b.html", "a.html?x", "%", "%zz.html"})
        EXPECT_EQ(address(href), "none") << href;
    EXPECT_FALSE(placeOf(m_folder.path() / "nowhere", "a.html"));
}

TEST_F(PagePlaceTest, TheFolderMayBeALink) {
    const auto place = placeOf(m_folder.path() / "other-name", "a.html");
    ASSERT_TRUE(place);
    EXPECT_EQ(place->file, tree() / "a.html");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
