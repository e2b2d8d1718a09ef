// What FileDocSource::getResourceFile reads, and what it refuses to.
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocParserException.hpp"
#include "host/docparser/Roots.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using docparser::DocParserException;
using docset::Fault;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Key;
using testing::StartsWith;
using testing::ThrowsMessage;

constexpr const char* demoFile = "en_US/demo-1.reference.json";

class ResourceFileTest : public testing::Test {
  protected:
    ResourceFileTest() {
        publish(root, makeProduct(u"demo"));
        publish(root, makeProduct(u"other"));
    }

    TempFolder root;
    docparser::FileDocSource source = sourceOf({.docRoot = root.path()});
};

struct Row {
    const char* name;
    std::function<std::string(std::string)> spoil;
    const char* place;  // from the line on
};

const std::vector<Row> rows = {
    {"empty", [](const std::string&) { return std::string(); }, ":1:1: The file ends"},
    {"byte order mark", [](const std::string& text) { return "\xEF\xBB\xBF" + text; },
     ":1:1: The file begins with a byte order mark"},
    {"not UTF-8", [](const std::string& text) { return replaced(text, "The demo", "\xFF"); },
     ":7:23: The file is not UTF-8."},
    {"not JSON", [](const std::string& text) { return "<" + text; }, ":1:1: This is not JSON"},
    {"cut off", [](const std::string& text) { return text.substr(0, text.find("demo") + 4); },
     ":6:25: The file ends in the middle"},
    {"more text", [](const std::string&) { return std::string("{}\n}"); },
     ":2:1: There is more text"},
    {"nested deeply", [](const std::string&) { return std::string(1000, '['); },
     ":1:33: The document is nested"},
    {"another format",
     [](const std::string& text) { return replaced(text, "documentation-reference", "x"); },
     ":2:13: format: "},
    {"another version",
     [](const std::string& text) {
         return replaced(text, "\"formatVersion\": 1", "\"formatVersion\": 3");
     },
     ":3:20: formatVersion: Version 3"},
    {"unknown member",
     [](const std::string& text) { return replaced(text, "\"helpFolder\"", "\"folder\""); },
     "products[0].folder: There is no such member"},
    {"wrong type",
     [](const std::string& text) {
         return replaced(text, "\"version\": \"first\"", "\"version\": 1");
     },
     ":9:18: products[0].version: A text was expected"},
    {"missing member",
     [](const std::string& text) { return replaced(text, "\"helpFolder\": \"demo\",", ""); },
     "products[0]: The member \"helpFolder\" is missing"},
    {"unknown enumeration name",
     [](const std::string& text) {
         return replaced(text, "\"type\": \"class\"", "\"type\": \"klass\"");
     },
     "entities[0].type: \"klass\" is not known"},
};

TEST_F(ResourceFileTest, ABrokenFileRaisesNamingFileAndPlaceAndHarmsNoOtherProduct) {
    const std::string sound = root.read(demoFile);
    const std::string file = (root.path() / demoFile).string();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        root.write(demoFile, row.spoil(sound));
        EXPECT_EQ(source.getResourceLookupFiles().installed.size(), 2U);
        EXPECT_THAT(
            [&] { static_cast<void>(source.getResourceFile(u"demo")); },
            ThrowsMessage<DocParserException>(AllOf(StartsWith(file + ":"), HasSubstr(row.place))));
        EXPECT_EQ(pageEdition(source, u"other"), u"first");
    }
    root.write(demoFile, sound);
    EXPECT_EQ(pageEdition(source, u"demo"), u"first");
}

TEST_F(ResourceFileTest, TheExceptionCarriesTheFault) {
    root.write(demoFile, "{\n}");
    try {
        static_cast<void>(source.getResourceFile(u"demo"));
        ADD_FAILURE() << "nothing was thrown";
    } catch (const DocParserException& exception) {
        const Fault& fault = exception.getFault();
        EXPECT_EQ(fault.file, (root.path() / demoFile).string());
        EXPECT_EQ(fault.line, 1U);
        EXPECT_EQ(fault.toString(), exception.what());
    }
    try {
        static_cast<void>(source.getResourceFile(u"nothing"));
        ADD_FAILURE() << "nothing was thrown";
    } catch (const DocParserException& exception) {
        EXPECT_EQ(exception.getFault().file, "");
        EXPECT_THAT(exception.what(),
                    AllOf(HasSubstr("\"nothing\""), HasSubstr(root.path().string())));
    }
}

TEST_F(ResourceFileTest, AMissingFileRaisesNamingIt) {
    fs::remove(root.path() / demoFile);
    EXPECT_THAT([&] { static_cast<void>(source.getResourceFile(u"demo")); },
                ThrowsMessage<DocParserException>((root.path() / demoFile).string() +
                                                  ": The file does not exist."));
    EXPECT_EQ(pageEdition(source, u"other"), u"first");
}

TEST_F(ResourceFileTest, AFileIsNamedByItsPathBelowTheRoot) {
    const auto byProduct = source.getResourceFile(u"demo");
    EXPECT_THAT(byProduct, ElementsAre(Key(u"demo")));
    EXPECT_EQ(source.getResourceFile(u"en_US/demo-1.reference.json"), byProduct);
    // Also by its whole path, which distinguishes files of the same name in several roots.
    const std::u16string whole = (root.path() / demoFile).u16string();
    EXPECT_EQ(source.getResourceFile(whole).at(u"demo").getItems(),
              byProduct.at(u"demo").getItems());
}

TEST_F(ResourceFileTest, NothingOutsideTheRootsIsRead) {
    const TempFolder outside;
    publish(outside, makeProduct(u"secret"));
    const fs::path file = outside.path() / "en_US/secret-1.reference.json";
    ASSERT_TRUE(fs::exists(file));
    const fs::path relative = file.lexically_relative(root.path());
    ASSERT_EQ(*relative.begin(), "..");
    fs::create_symlink(file, root.path() / "en_US/link.json");
    for (const auto& name :
         {file.u16string(), relative.u16string(), u"en_US/../" + relative.u16string(),
          (root.path() / relative).u16string(), std::u16string(u"en_US/link.json"),
          std::u16string(u"/dev/zero"), std::u16string(u".."), std::u16string(u"."),
          std::u16string(u"en_US"), root.path().u16string()}) {
        SCOPED_TRACE(fs::path(name).string());
        EXPECT_THROW(static_cast<void>(source.getResourceFile(name)), DocParserException);
    }
}

// One product of a shared file has the wanted language, its neighbour lacks it.
TEST_F(ResourceFileTest, AProductThatIsReadFromAnotherFileIsLeftOutOfTheSharedOne) {
    const std::string first = root.read(demoFile);
    const std::string second = root.read("en_US/other-1.reference.json");
    const auto list = second.find('[', second.find("\"products\"")) + 1;
    root.write("en_US/shared.json", first.substr(0, first.rfind(']')) + "," +
                                        second.substr(list, second.rfind(']') - list) + "]}");
    std::string manifest = root.read(manifestPath);
    manifest = replaced(manifest, demoFile, "en_US/shared.json");
    manifest = replaced(manifest, "en_US/other-1.reference.json", "en_US/shared.json");
    root.write(manifestPath, manifest);
    publish(root, makeProduct(u"demo", u"japanese"), "ja_JP");

    EXPECT_THAT(source.getResourceFile(u"other"), ElementsAre(Key(u"demo"), Key(u"other")));
    auto japanese = sourceOf({.docRoot = root.path(), .language = "ja_JP"});
    EXPECT_THAT(japanese.getResourceFile(u"other"), ElementsAre(Key(u"other")));
    EXPECT_THAT(japanese.getResourceFile(u"en_US/shared.json"), ElementsAre(Key(u"other")));
    EXPECT_EQ(pageEdition(japanese, u"demo"), u"japanese");
}

// A caller that took the lookups before an update reads the pages that belong to them.
TEST_F(ResourceFileTest, AnEditionThatWasReplacedIsReadByThoseWhoStillNameIt) {
    const auto lookups = source.getResourceLookupFiles();
    const auto file = lookups.installed.at(u"demo").getHeaderInfo().getReferenceFileName();
    publish(root, makeProduct(u"demo", u"second"));
    EXPECT_EQ(source.getResourceFile(file).at(u"demo").getHeaderInfo().getVersion(), u"first");
    EXPECT_EQ(pageEdition(source, u"demo"), u"first");

    // Another reader of the same process has moved on.
    EXPECT_EQ(lookupEdition(source, u"demo"), u"second");
    EXPECT_EQ(source.getResourceFile(file).at(u"demo").getHeaderInfo().getVersion(), u"first");
    EXPECT_EQ(pageEdition(source, u"demo"), u"second");

    // Two updates later the file is gone, and nothing newer has taken its name.
    publish(root, makeProduct(u"demo", u"third"));
    publish(root, makeProduct(u"demo", u"fourth"));
    EXPECT_THROW(static_cast<void>(source.getResourceFile(file)), DocParserException);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
