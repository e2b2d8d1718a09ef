// What can be wrong with a file before it is read: it is not there, not a file, or not below the
// documentation root.
#include <filesystem>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <vector>

#include <gmock/gmock.h>

#include "docset/validate.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using docset::Fault;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;

constexpr const char* paths[] = {manifestPath, lookupPath, referencePath};

// Puts something else in the place of a file; `outside` is a folder that is not the root's.
struct Row {
    const char* name;
    std::function<void(const fs::path& file, const TempFolder& outside)> replace;
    const char* problem;
};

const std::vector<Row> rows = {
    {"missing", [](const fs::path&, const TempFolder&) {}, "does not exist"},
    {"folder", [](const fs::path& file, const TempFolder&) { fs::create_directory(file); },
     "not a regular file"},
    {"link to nothing",
     [](const fs::path& file, const TempFolder&) { fs::create_symlink("nothing.json", file); },
     "does not exist"},
    {"link to itself",
     [](const fs::path& file, const TempFolder&) { fs::create_symlink(file.filename(), file); },
     "cannot be opened"},
    {"link out of the root",
     [](const fs::path& file, const TempFolder& outside) {
         outside.write("file.json", "{}");
         fs::create_symlink(outside.path() / "file.json", file);
     },
     "leads out of the documentation root"},
    {"link out of the root and back into a namesake",
     [](const fs::path& file, const TempFolder&) {
         // A folder beside the root whose name begins with the root's is not below it.
         const fs::path root = file.filename() == manifestPath ? file.parent_path()
                                                               : file.parent_path().parent_path();
         const fs::path namesake = root.string() + "-namesake";
         fs::create_directory(namesake);
         fs::rename(root / "title.txt", namesake / "file.json");
         fs::create_symlink(namesake / "file.json", file);
     },
     "leads out of the documentation root"},
    {"device",
     [](const fs::path& file, const TempFolder&) { fs::create_symlink("/dev/zero", file); },
     "leads out of the documentation root"},
    {"pipe that nobody writes to",
     [](const fs::path& file, const TempFolder&) { ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0); },
     "not a regular file"},
};

TEST(BrokenLinkTest, IsNamedAndNeitherFollowedNorWaitedFor) {
    for (const auto* path : paths)
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(path) + ": " + row.name);
            const TempFolder outside;
            const TempFolder root;
            writeSet(root, soundSet());
            root.write("title.txt", "{}");
            fs::remove(root.path() / path);
            row.replace(root.path() / path, outside);
            EXPECT_THAT(docset::validate(root.path()).faults,
                        ElementsAre(AllOf(Field(&Fault::file, (root.path() / path).string()),
                                          Field(&Fault::line, 0U), Field(&Fault::field, ""),
                                          Field(&Fault::problem, HasSubstr(row.problem)))));
            fs::remove_all(root.path().string() + "-namesake");
        }
}

TEST(BrokenLinkTest, AFolderThatLeadsOutOfTheRootIsNotFollowed) {
    const TempFolder outside;
    writeSet(outside, soundSet());
    const TempFolder root;
    root.write(manifestPath, soundSet().manifest);
    fs::create_directory_symlink(outside.path() / "en_US", root.path() / "en_US");
    const auto leadsOut = HasSubstr("leads out of the documentation root");
    EXPECT_THAT(docset::validate(root.path()).faults,
                ElementsAre(AllOf(Field(&Fault::file, (root.path() / lookupPath).string()),
                                  Field(&Fault::problem, leadsOut)),
                            AllOf(Field(&Fault::file, (root.path() / referencePath).string()),
                                  Field(&Fault::problem, leadsOut))));
}

TEST(BrokenLinkTest, LinksWithinTheRootAreFollowed) {
    const TempFolder root;
    writeSet(root, soundSet());
    fs::rename(root.path() / "en_US", root.path() / "texts");
    fs::create_directory_symlink("texts", root.path() / "en_US");
    fs::rename(root.path() / "texts/demo.lookup.json", root.path() / "lookup.json");
    fs::create_symlink(root.path() / "lookup.json", root.path() / "texts/demo.lookup.json");
    EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
}

TEST(BrokenLinkTest, TheRootItselfMayBeALink) {
    const TempFolder root;
    writeSet(root, soundSet());
    const TempFolder elsewhere;
    fs::create_directory_symlink(root.path(), elsewhere.path() / "docs");
    EXPECT_EQ(dump(docset::validate(elsewhere.path() / "docs").faults), "");
}

TEST(BrokenLinkTest, ARootThatIsNotThereIsOneFault) {
    const TempFolder folder;
    folder.write("file", "");
    for (const char* name : {"missing", "file"}) {
        SCOPED_TRACE(name);
        const fs::path root = folder.path() / name;
        EXPECT_THAT(docset::validate(root).faults,
                    ElementsAre(Field(&Fault::file, (root / manifestPath).string())));
    }
}

// A file name in the manifest is refused where it stands, before anything is opened.
TEST(BrokenLinkTest, FileNamesThatLeaveTheRootAreRefusedInTheManifest) {
    struct Name {
        const char* name;
        const char* problem;
    };
    const std::vector<Name> names = {
        {"", "is empty"},
        {"/etc/hostname", "absolute"},
        {"../demo.json", "leads out"},
        {"en_US/../../demo.json", "leads out"},
        {"en_US/..", "leads out"},
        {"en_US/../en_US/demo.json", "leads out"},
        {"./demo.json", "empty part"},
        {"en_US/./demo.json", "empty part"},
        {"en_US//demo.json", "empty part"},
        {"en_US/", "empty part"},
        {"a\\u0000b", "zero byte"},
    };
    for (const char* member : {"lookup", "reference"})
        for (const auto& name : names) {
            SCOPED_TRACE(std::string(member) + ": " + name.name);
            const TempFolder root;
            SetTexts texts = soundSet();
            const std::string start = "\"" + std::string(member) + "\": ";
            const MarkedText marked =
                takeMark(replaced(texts.manifest, start + "\"en_US/demo." + member + ".json\"",
                                  start + placeMark + "\"" + name.name + "\""));
            texts.manifest = marked.text;
            writeSet(root, texts);
            EXPECT_THAT(docset::validate(root.path()).faults,
                        ElementsAre(AllOf(
                            Field(&Fault::file, (root.path() / manifestPath).string()),
                            Field(&Fault::line, marked.line), Field(&Fault::column, marked.column),
                            Field(&Fault::field, "products[0].files.en_US." + std::string(member)),
                            Field(&Fault::problem, HasSubstr(name.problem)))));
        }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
