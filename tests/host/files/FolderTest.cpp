#include <algorithm>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <system_error>

#include <gmock/gmock.h>

#include "files/Folder.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using files::Folder;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

std::string textOf(std::errc code) {
    return std::make_error_code(code).message();
}

// The error's message and, in brackets, its text when `change` fails; else "done".
template <typename Change>
std::error_code errorOf(Change change, const std::string& text = "") {
    try {
        change();
    } catch (const std::system_error& error) {
        EXPECT_THAT(error.what(), HasSubstr(text));
        return error.code();
    }
    return {};
}

TEST(FolderTest, ReadsWholeFilesUpToASize) {
    const TempFolder root;
    root.write("a/file", "12345");
    root.write("empty", "");
    const Folder folder(root.path());
    std::error_code error;
    EXPECT_EQ(folder.readFile("a/file", 5, error), "12345");
    EXPECT_FALSE(error);
    EXPECT_EQ(folder.readFile("empty", 0, error), "");
    EXPECT_EQ(folder.readFile("a/file", 4, error), std::nullopt);
    EXPECT_EQ(error, std::errc::file_too_large);
}

TEST(FolderTest, SaysWhyThereIsNoFileToRead) {
    const TempFolder root;
    fs::create_directory(root.path() / "folder");
    ASSERT_EQ(::mkfifo((root.path() / "pipe").c_str(), 0600), 0);
    fs::create_symlink("/etc/passwd", root.path() / "out");
    const Folder folder(root.path());
    const auto errorFor = [&](const char* path) {
        std::error_code error;
        EXPECT_EQ(folder.readFile(path, 100, error), std::nullopt);
        EXPECT_FALSE(folder.openFile(path, error).isOpen());
        return error;
    };
    EXPECT_EQ(errorFor("nothing"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(errorFor("folder"), std::errc::is_a_directory);
    EXPECT_EQ(errorFor("pipe"), std::errc::no_such_device_or_address);
    EXPECT_EQ(errorFor("out"), std::errc::cross_device_link);
    EXPECT_EQ(errorOf([&] { const Folder none(root.path() / "nothing"); }, "nothing"),
              std::errc::no_such_file_or_directory);
}

TEST(FolderTest, TellsTheStateOfAFileThatIsNoLink) {
    const TempFolder root;
    root.write("inner/file", "12345");
    fs::create_symlink(root.path() / "inner/file", root.path() / "link");
    const Folder folder(root.path());
    const auto stamp = folder.stampOf("inner/file");
    ASSERT_TRUE(stamp);
    EXPECT_EQ(stamp->size, 5U);
    std::error_code error;
    EXPECT_EQ(*stamp, files::FileStamp::of(folder.openFile("inner/file", error).number()));
    for (const char* name : {"link", "inner", "nothing", "inner/file/more", ""})
        EXPECT_FALSE(folder.stampOf(name)) << name;
}

TEST(FileStampTest, ATimeWithoutAFractionStandsForItsSecond) {
    constexpr std::int64_t second = 1'000'000'000;
    const files::FileStamp whole{.size = 5, .modified = 7 * second};
    const files::FileStamp early{.size = 5, .modified = 7 * second + 1};
    const files::FileStamp late{.size = 5, .modified = 8 * second - 1};
    EXPECT_TRUE(whole.isSameAs(early));
    EXPECT_TRUE(late.isSameAs(whole));
    EXPECT_TRUE(late.isSameAs(late));
    EXPECT_FALSE(early.isSameAs(late));
    EXPECT_FALSE(whole.isSameAs({.size = 5, .modified = 8 * second}));
    EXPECT_FALSE(late.isSameAs({.size = 5, .modified = 8 * second}));
    EXPECT_FALSE(whole.isSameAs({.size = 6, .modified = 7 * second}));
}

TEST(FolderTest, StaysWithTheFolderThatWasOpened) {
    const TempFolder root;
    root.write("one/file", "one");
    const Folder folder(root.path() / "one");
    fs::rename(root.path() / "one", root.path() / "two");
    root.write("one/file", "other");
    std::error_code error;
    EXPECT_EQ(folder.readFile("file", 100, error), "one");
    folder.writeFile("new", "text");
    EXPECT_EQ(root.read("two/new"), "text");
    EXPECT_FALSE(fs::exists(root.path() / "one/new"));
}

TEST(FolderTest, MakesListsRenamesAndRemoves) {
    const TempFolder root;
    const Folder folder(root.path());
    folder.makeFolder("inner").writeFile("file", "inner");
    folder.makeFolder("inner").writeFile("file", "again");
    EXPECT_EQ(root.read("inner/file"), "again");
    folder.writeFile("one", "1");
    folder.writeFile("two", "2");
    folder.rename("one", "two");
    EXPECT_EQ(root.read("two"), "1");
    EXPECT_TRUE(folder.openOrMakeFile("two").isOpen());
    EXPECT_EQ(root.read("two"), "1");
    EXPECT_TRUE(folder.openOrMakeFile("lock").isOpen());
    EXPECT_THAT(folder.names(), UnorderedElementsAre("inner", "two", "lock"));
    folder.remove("two");
    folder.flush();
    EXPECT_THAT(folder.names(), UnorderedElementsAre("inner", "lock"));
    EXPECT_EQ(errorOf([&] { folder.remove("two"); }, "two"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(errorOf([&] { folder.writeFile("inner", ""); }, "inner"), std::errc::is_a_directory);
}

TEST(FolderTest, ChangesFollowNoLink) {
    const TempFolder outside;
    outside.write("file", "outside");
    const TempFolder root;
    for (const char* name : {"written", "removed", "renamed", "opened"})
        fs::create_symlink(outside.path() / "file", root.path() / name);
    fs::create_symlink(outside.path() / "made", root.path() / "dangling");
    fs::create_directory_symlink(outside.path(), root.path() / "folder");
    const Folder folder(root.path());
    folder.writeFile("written", "new");
    EXPECT_FALSE(fs::is_symlink(root.path() / "written"));
    EXPECT_EQ(root.read("written"), "new");
    folder.remove("removed");
    folder.writeFile("source", "source");
    folder.rename("source", "renamed");
    EXPECT_EQ(root.read("renamed"), "source");
    folder.writeFile("dangling", "new");
    for (const char* name : {"opened"})
        EXPECT_TRUE(errorOf([&] { static_cast<void>(folder.openOrMakeFile(name)); }, "is a link"));
    EXPECT_TRUE(errorOf([&] { static_cast<void>(folder.openFolder("folder")); }, "is a link"));
    EXPECT_TRUE(errorOf([&] { static_cast<void>(folder.makeFolder("folder")); }, "is a link"));
    EXPECT_EQ(outside.read("file"), "outside");
    EXPECT_THAT(Folder(outside.path()).names(), UnorderedElementsAre("file"));
}

TEST(FolderTest, ChangesTakeTheNameOfSomethingInTheFolderAlone) {
    const TempFolder root;
    root.write("inner/file", "text");
    const Folder folder(root.path() / "inner");
    for (const std::string& name :
         {std::string(), std::string("."), std::string(".."), std::string("../new"),
          std::string("/tmp"), std::string("a/b"), std::string("a\0b", 3)}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(errorOf([&] { folder.writeFile(name, ""); }), std::errc::invalid_argument);
        EXPECT_EQ(errorOf([&] { folder.remove(name); }), std::errc::invalid_argument);
        EXPECT_EQ(errorOf([&] { folder.rename("file", name); }), std::errc::invalid_argument);
        EXPECT_EQ(errorOf([&] { folder.rename(name, "new"); }), std::errc::invalid_argument);
        EXPECT_EQ(errorOf([&] { static_cast<void>(folder.makeFolder(name)); }),
                  std::errc::invalid_argument);
        EXPECT_EQ(errorOf([&] { static_cast<void>(folder.openOrMakeFile(name)); }),
                  std::errc::invalid_argument);
    }
    EXPECT_THAT(folder.names(), UnorderedElementsAre("file"));
}

TEST(FolderTest, ToldErrorsAreTheSystems) {
    const TempFolder root;
    root.write("file", "");
    EXPECT_EQ(errorOf([&] { const Folder none(root.path() / "file"); },
                      textOf(std::errc::not_a_directory)),
              std::errc::not_a_directory);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
