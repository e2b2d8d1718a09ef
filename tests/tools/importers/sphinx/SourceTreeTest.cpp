#include <atomic>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sphinx/SourceTree.hpp"
#include "support/TempFolder.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using testing::HasSubstr;
using testing::ThrowsMessage;
using tests::TempFolder;

TEST(SourceTreeTest, ReadsFilesBelowItsRoot) {
    const TempFolder folder;
    folder.write("a/b.html", "text");
    EXPECT_EQ(SourceTree(folder.path()).read("a/b.html"), "text");
}

TEST(SourceTreeTest, TakesAFolderForItsIndexPage) {
    const TempFolder folder;
    folder.write("index.html", "root");
    folder.write("lib/os/index.html", "os");
    const SourceTree tree(folder.path());
    EXPECT_EQ(tree.read(""), "root");
    EXPECT_EQ(tree.read("lib/os/"), "os");
}

TEST(SourceTreeTest, TriesNamesWithoutTheirPercentEscapesSecond) {
    const TempFolder folder;
    folder.write("a b.html", "decoded");
    folder.write("c%20d.html", "as it is");
    folder.write("c d.html", "decoded");
    const SourceTree tree(folder.path());
    EXPECT_EQ(tree.read("a%20b.html"), "decoded");
    EXPECT_EQ(tree.read("c%20d.html"), "as it is");
}

TEST(SourceTreeTest, FollowsLinksThatStayInside) {
    const TempFolder folder;
    folder.write("real.html", "text");
    std::filesystem::create_symlink("real.html", folder.path() / "link.html");
    EXPECT_EQ(SourceTree(folder.path()).read("link.html"), "text");
}

TEST(SourceTreeTest, MayItselfBeReachedThroughALink) {
    const TempFolder folder;
    folder.write("tree/a.html", "text");
    std::filesystem::create_directory_symlink("tree", folder.path() / "link");
    EXPECT_EQ(SourceTree(folder.path() / "link").read("a.html"), "text");
}

TEST(SourceTreeTest, NeverLeadsOutside) {
    const TempFolder folder;
    folder.write("secret.html", "secret");
    folder.write("tree/a.html", "text");
    folder.write("tree-2/b.html", "neighbour");
    std::filesystem::create_symlink("../secret.html", folder.path() / "tree/out.html");
    std::filesystem::create_directory_symlink("../tree-2", folder.path() / "tree/outer");
    std::filesystem::create_directory(folder.path() / "tree/folder.html");
    const SourceTree tree(folder.path() / "tree");
    const std::string absolute = (folder.path() / "tree/a.html").string();
    const struct {
        const char* name;
        std::string page;
        const char* message;
    } rows[] = {
        {"parent", "../secret.html", "\"..\""},
        {"parent in the middle", "a/../../secret.html", "\"..\""},
        {"escaped parent", "%2e%2e/secret.html", "\"..\""},
        {"absolute", absolute, "absolute"},
        {"link to a file", "out.html", "leads out"},
        {"link to a folder", "outer/b.html", "leads out"},
        {"backslash", "..\\secret.html", "character"},
        {"zero", std::string("a.html\0x", 8), "character"},
        {"missing", "missing.html", "no such file"},
        {"folder", "folder.html", "regular file"},
    };
    for (const auto& row : rows)
        EXPECT_THAT([&] { static_cast<void>(tree.read(row.page)); },
                    ThrowsMessage<PageError>(HasSubstr(row.message)))
            << row.name;
}

TEST(SourceTreeTest, RefusesFilesThatAreTooLarge) {
    const TempFolder folder;
    folder.write("big.html", "");
    std::filesystem::resize_file(folder.path() / "big.html", (std::uintmax_t{64} << 20U) + 1);
    EXPECT_THAT([&] { static_cast<void>(SourceTree(folder.path()).read("big.html")); },
                ThrowsMessage<PageError>(HasSubstr("at most 67108864")));
}

TEST(SourceTreeTest, NeverLeadsOutsideWhileAFolderAndALinkChangePlaces) {
    const TempFolder folder;
    folder.write("tree/sub/a.html", "inside");
    folder.write("outer/a.html", "outside");
    const std::filesystem::path sub = folder.path() / "tree/sub";
    const std::filesystem::path link = folder.path() / "tree/link";
    std::filesystem::create_directory_symlink("../outer", link);
    std::atomic<bool> isOver = false;
    std::thread changer([&] {
        while (!isOver)
            ::renameat2(AT_FDCWD, sub.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE);
    });
    const SourceTree tree(folder.path() / "tree");
    int inside = 0;
    int outside = 0;
    for (int each = 0; each < 40000; ++each) {
        try {
            ++(tree.read("sub/a.html") == "inside" ? inside : outside);
        } catch (const PageError&) {
            // The name led outside when it was read.
        }
    }
    isOver = true;
    changer.join();
    EXPECT_GT(inside, 0);
    EXPECT_EQ(outside, 0);
}

// ImportFailuresTest has what the system cannot read.
TEST(SourceTreeTest, TellsWhatIsMissing) {
    const TempFolder folder;
    folder.write("a.html", "text");
    const SourceTree tree(folder.path());
    EXPECT_THROW(static_cast<void>(tree.read("b.html")), PageError);
    EXPECT_THROW(static_cast<void>(tree.read("a.html/b.html")), PageError);
    EXPECT_THROW(static_cast<void>(tree.read(std::string(5000, 'x'))), PageError);
}

TEST(SourceTreeTest, NeedsAFolder) {
    const TempFolder folder;
    folder.write("file", "");
    EXPECT_THROW(SourceTree(folder.path() / "file"), PageError);
    EXPECT_THROW(SourceTree(folder.path() / "none"), PageError);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
