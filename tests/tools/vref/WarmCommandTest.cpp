#include <string>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTool.hpp"
#include "docset/publish.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

TEST(WarmCommandTest, PrintsTheLogOfStartUpAndWhatWasLoaded) {
    const ToolRun run = runTool({"warm"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.messages, IsEmpty());
    EXPECT_THAT(
        run.output,
        AllOf(ContainsRegex("\\[referenceApi::startup 8\\] ReferenceApiStartup ready time: "
                            "[0-9]+\\.[0-9]{6}s\\.\n"),
              ContainsRegex("\\[referenceApi::startup 8\\] ReferenceApiStartup final thread "
                            "time: [0-9]+\\.[0-9]{6}s\\.\n"),
              HasSubstr("veltra          45     21\n"),
              HasSubstr("solvent          7      -  not installed\n"),
              ContainsRegex("11 products, 10 of them installed; 197 entities; 87 pages; "
                            "[0-9.]+ MB of memory\n")));
    EXPECT_THAT(run.output, Not(HasSubstr("enter ")));
}

TEST(WarmCommandTest, TracesWhenAsked) {
    const ToolRun run = runTool({"warm", "--trace"});
    EXPECT_THAT(run.output, StartsWith("[referenceApi::startup 32] enter "));
    EXPECT_THAT(run.output, HasSubstr("\n  [referenceApi::startup 8] ReferenceApiStartup ready"));
    EXPECT_THAT(run.output, HasSubstr("[referenceApi::startup 32] leave "));
}

TEST(WarmCommandTest, TellsTheSameInJson) {
    const ToolRun run = runTool({"warm", "--json", "--language", "ja_JP"});
    const auto value = boost::json::parse(run.output).as_object();
    EXPECT_EQ(value.at("log").as_array().size(), 2U);
    EXPECT_EQ(value.at("products").as_array().size(), 11U);
    EXPECT_EQ(value.at("entities"), 197);
    EXPECT_EQ(value.at("pages"), 87);
    const auto& solvent = value.at("products").as_array().back().as_object();
    EXPECT_EQ(solvent.at("product"), "solvent");
    EXPECT_EQ(solvent.at("installed"), false);
    EXPECT_TRUE(solvent.at("pages").is_null());
}

// Start-up parses the products that VELTRA's users want first; a set need not have them.
TEST(WarmCommandTest, ProductsThatAreNotThereAreNoFault) {
    const TempFolder root;
    docset::publishProduct(
        root.path(), "en_US",
        ProductBuilder(u"tools").entity(u"f", RefEntityType::Function, u"f.html").build());
    const ToolRun run = runTool({"warm", "--doc-root", root.path().string()});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.messages, IsEmpty());
    EXPECT_THAT(run.output, HasSubstr("tools           1      -  pages are loaded when"));
}

TEST(WarmCommandTest, WhatCannotBeReadIsToldAndIsStatusOne) {
    const TempFolder root;
    for (const char16_t* name : {u"veltra", u"brisk", u"qix"})
        docset::publishProduct(
            root.path(), "en_US",
            ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html").build());
    root.write("en_US/brisk-1.reference.json", "{");
    const ToolRun pages = runTool({"warm", "--doc-root", root.path().string()});
    EXPECT_EQ(pages.status, 1);
    EXPECT_THAT(pages.messages, HasSubstr("en_US/brisk-1.reference.json:1:2"));
    EXPECT_THAT(pages.output, HasSubstr("3 products"));

    root.write("en_US/qix-1.lookup.json", "[]");
    const ToolRun lookups = runTool({"warm", "--doc-root", root.path().string()});
    EXPECT_EQ(lookups.status, 1);
    EXPECT_THAT(lookups.messages, HasSubstr("en_US/qix-1.lookup.json:1:1"));
    EXPECT_THAT(lookups.output, HasSubstr("2 products"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
