// The file of aliases beside a lookup file: read, published, validated, compiled.
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/FileDocSource.hpp"
#include "docset/AliasFile.hpp"
#include "docset/compile.hpp"
#include "docset/publish.hpp"
#include "docset/validate.hpp"
#include "host/docset/Sets.hpp"
#include "support/Capture.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using docimage::Aliases;
using docset::PublishError;
using docset::publishProduct;
using docset::readAliases;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::ThrowsMessage;

constexpr const char* aliasPath = "en_US/demo.lookup.aliases.json";

std::string fileWith(const std::string& aliases) {
    return "{\n  \"format\": \"veltra-documentation-aliases\", \"formatVersion\": 1,\n"
           "  \"aliases\": {" +
           aliases + "}\n}\n";
}

const std::string soundAliases =
    R"("np": {"numpy": 12}, "plt": {"matplotlib.pyplot": 7, "pylab": 1})";
const Aliases readSoundAliases = {{u"np", {{u"numpy", 12}}},
                                  {u"plt", {{u"matplotlib.pyplot", 7}, {u"pylab", 1}}}};

// The aliases that a reader of the set at `root` has of the product "demo".
Aliases aliasesOfDemo(const fs::path& root) {
    docparser::FileDocSource source(
        [&] { return docparser::DocumentationLocation{.docRoot = root}; });
    const auto lookups = source.getResourceLookupFiles();
    const auto& image = lookups.installed.at(u"demo").getImage();
    return image ? image->aliases() : Aliases();
}

docset::ProductDocumentation withAliases(const Aliases& aliases) {
    docset::ProductDocumentation product = makeProduct(u"demo");
    product.aliases = aliases;
    return product;
}

TEST(AliasFileTest, IsReadWhole) {
    const TempFolder root;
    writeSet(root, soundSet());
    FaultList faults;
    EXPECT_EQ(readAliases(root.path(), lookupPath, faults.handler()), Aliases());
    root.write(aliasPath, fileWith(soundAliases));
    EXPECT_EQ(readAliases(root.path(), lookupPath, faults.handler()), readSoundAliases);
    EXPECT_EQ(dump(faults.all()), "");
    EXPECT_EQ(aliasesOfDemo(root.path()), readSoundAliases);
}

TEST(AliasFileTest, EachFaultIsNamedAndLeftOut) {
    std::string many;
    for (int number = 0; number < 201; ++number)
        many += (number == 0 ? "" : ", ") + ("\"a" + std::to_string(number)) + "\": {\"b\": 1}";
    const struct {
        const char* name;
        std::string aliases;
        const char* fault;
        std::size_t left;
    } rows[] = {
        {"an alias that is no identifier", R"("n-p": {"numpy": 1}, "a": {"b": 1})",
         "\"n-p\" is no alias, such as \"np\".", 1},
        {"a name that is none", R"("a": {"x..y": 1}, "b": {"c": 2})",
         "\"x..y\" is no name of a module or class", 1},
        {"an alias without names", R"("a": {})", "An alias has at least one name.", 0},
        {"a count that is none", R"("a": {"b": "often"})", "whole number", 0},
        {"a count of nothing", R"("a": {"b": 0})", "it is from 1 to 4294967295", 0},
        {"too many names",
         R"("a": {"b": 1, "c": 1, "d": 1, "e": 1, "f": 1, "g": 1, "h": 1, "i": 1, "j": 1})",
         "An alias has up to 8 names.", 1},
        {"too many aliases", many, "A product has up to 200 aliases.", 200},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const TempFolder root;
        writeSet(root, soundSet());
        root.write(aliasPath, fileWith(row.aliases));
        FaultList faults;
        const auto aliases = readAliases(root.path(), lookupPath, faults.handler());
        EXPECT_EQ(faults.all().size(), 1U) << dump(faults.all());
        EXPECT_THAT(dump(faults.all()), HasSubstr(row.fault));
        EXPECT_THAT(dump(faults.all()), HasSubstr("aliases"));
        ASSERT_TRUE(aliases);
        EXPECT_EQ(aliases->size(), row.left);
        EXPECT_EQ(dump(docset::validate(root.path()).faults), dump(faults.all()));
    }
}

TEST(AliasFileTest, ABrokenFileTakesNothingButTheAliasesAway) {
    const TempFolder root;
    writeSet(root, soundSet());
    root.write(aliasPath, "{\"format\": ");
    const LogCapture log("docparser=5");
    EXPECT_EQ(aliasesOfDemo(root.path()), Aliases());
    EXPECT_THAT(log.texts(), ElementsAre(HasSubstr("demo.lookup.aliases.json")));
    EXPECT_THAT(dump(docset::validate(root.path()).faults), HasSubstr("demo.lookup.aliases.json"));
    EXPECT_THAT(dump(docset::compile(root.path()).faults), HasSubstr("demo.lookup.aliases.json"));
}

TEST(AliasFileTest, AFileOfAnotherFormatHasNoAliases) {
    const TempFolder root;
    writeSet(root, soundSet());
    struct Row {
        const char* content;
        const char* fault;
    };
    for (const Row& row : {
             Row{R"({"format": "veltra-documentation-set", "formatVersion": 1, "aliases": {}})",
                 "format: "},
             Row{R"({"format": "veltra-documentation-aliases", "formatVersion": 2, "aliases": {}})",
                 "formatVersion: "},
             Row{R"({"format": "veltra-documentation-aliases", "formatVersion": 1})", "aliases"},
             Row{R"({"format": "veltra-documentation-aliases", "formatVersion": 1, "aliases": []})",
                 "aliases"},
         }) {
        SCOPED_TRACE(row.content);
        root.write(aliasPath, row.content);
        FaultList faults;
        const auto aliases = readAliases(root.path(), lookupPath, faults.handler());
        EXPECT_EQ(aliases.value_or(Aliases()), Aliases());
        EXPECT_THAT(dump(faults.all()), HasSubstr(row.fault));
    }
}

TEST(AliasFileTest, ValidationCountsItAndSeesRepeatedMembers) {
    const TempFolder root;
    writeSet(root, soundSet());
    const auto before = docset::validate(root.path()).files;
    root.write(aliasPath, fileWith(soundAliases));
    EXPECT_EQ(docset::validate(root.path()).files, before + 1);
    EXPECT_EQ(dump(docset::validate(root.path()).faults), "");
    root.write(aliasPath, fileWith(R"("np": {"numpy": 1}, "np": {"numpy": 2})"));
    EXPECT_THAT(dump(docset::validate(root.path()).faults),
                HasSubstr("aliases.np: The member occurs twice"));
}

TEST(AliasFileTest, IsPublishedWithItsProductAndGoesWithIt) {
    const TempFolder root;
    publishProduct(root.path(), "en_US", withAliases(readSoundAliases));
    EXPECT_EQ(readProduct(root.path(), u"demo"), withAliases(readSoundAliases));
    EXPECT_EQ(aliasesOfDemo(root.path()), readSoundAliases);
    const fs::path file = root.path() / "en_US/demo-1.lookup.aliases.json";
    EXPECT_TRUE(fs::exists(file));
    // The edition before stays for those who still read it.
    publishProduct(root.path(), "en_US", makeProduct(u"demo"));
    EXPECT_TRUE(fs::exists(file));
    EXPECT_EQ(aliasesOfDemo(root.path()), Aliases());
    publishProduct(root.path(), "en_US", makeProduct(u"demo"));
    EXPECT_FALSE(fs::exists(file));
}

TEST(AliasFileTest, AliasesThatNoReaderWouldTakeAreNotPublished) {
    const TempFolder root;
    publishProduct(root.path(), "en_US", withAliases(readSoundAliases));
    for (const Aliases& aliases : std::vector<Aliases>{
             {{u"n p", {{u"numpy", 1}}}}, {{u"np", {{u"1", 1}}}}, {{u"np", {{u"numpy", 0}}}}}) {
        EXPECT_THAT([&] { publishProduct(root.path(), "en_US", withAliases(aliases)); },
                    ThrowsMessage<PublishError>(HasSubstr("aliases.json")));
        EXPECT_EQ(readProduct(root.path(), u"demo"), withAliases(readSoundAliases));
    }
}

TEST(AliasFileTest, AnImageThatIsOfOtherAliasesIsPassedOver) {
    const TempFolder root;
    writeSet(root, soundSet());
    const auto compiled = [&] { return docset::compile(root.path()).written; };
    ASSERT_EQ(compiled(), 2U);
    EXPECT_EQ(compiled(), 0U);
    // Added, changed, taken away: each time the lookup file is the same.
    root.write(aliasPath, fileWith(soundAliases));
    EXPECT_EQ(aliasesOfDemo(root.path()), readSoundAliases);
    EXPECT_EQ(compiled(), 1U);
    EXPECT_EQ(aliasesOfDemo(root.path()), readSoundAliases);
    root.write(aliasPath, fileWith(R"("np": {"numpy": 13})"));
    EXPECT_EQ(aliasesOfDemo(root.path()), (Aliases{{u"np", {{u"numpy", 13}}}}));
    EXPECT_EQ(compiled(), 1U);
    fs::remove(root.path() / aliasPath);
    EXPECT_EQ(aliasesOfDemo(root.path()), Aliases());
    EXPECT_EQ(compiled(), 1U);
    EXPECT_EQ(compiled(), 0U);
}

TEST(AliasFileTest, AnImageStaysOfAFileOfWhichOnlyTheTimeChanged) {
    const TempFolder root;
    writeSet(root, soundSet());
    root.write(aliasPath, fileWith(soundAliases));
    ASSERT_EQ(docset::compile(root.path()).written, 2U);
    fs::last_write_time(root.path() / aliasPath,
                        fs::last_write_time(root.path() / aliasPath) - std::chrono::hours(1));
    EXPECT_EQ(docset::compile(root.path()).written, 0U);
    EXPECT_EQ(aliasesOfDemo(root.path()), readSoundAliases);
}

TEST(AliasFileTest, IsNotReadThroughALinkThatLeadsOut) {
    const TempFolder outside;
    outside.write("aliases.json", fileWith(soundAliases));
    const TempFolder root;
    writeSet(root, soundSet());
    fs::create_symlink(outside.path() / "aliases.json", root.path() / aliasPath);
    FaultList faults;
    EXPECT_FALSE(readAliases(root.path(), lookupPath, faults.handler()));
    EXPECT_THAT(dump(faults.all()), HasSubstr("aliases.json"));
    EXPECT_EQ(aliasesOfDemo(root.path()), Aliases());
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
