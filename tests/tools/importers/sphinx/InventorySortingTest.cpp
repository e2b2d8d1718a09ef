#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sphinx/InventorySorting.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

InventoryObject object(std::string name, std::string domain, std::string role, std::string anchor,
                       int priority = 1) {
    return {.name = std::move(name),
            .domain = std::move(domain),
            .role = std::move(role),
            .priority = priority,
            .page = "p.html",
            .anchor = std::move(anchor),
            .displayName = {}};
}

std::vector<std::string> namesOf(const SortedInventory& sorted) {
    std::vector<std::string> names;
    for (const InventoryObject& each : sorted.objects)
        names.push_back(each.name);
    return names;
}

TEST(InventorySortingTest, CountsWhatIsLeftOutByDomainAndRole) {
    const auto sorted = sortInventory(
        {object("a", "std", "label", "a", -1), object("b", "std", "label", "b", -1),
         object("c", "std", "doc", "", -1), object("f.x", "c", "functionParam", "c.f"),
         object("f", "c", "function", "c.f")});
    EXPECT_THAT(namesOf(sorted), ElementsAre("f"));
    EXPECT_THAT(sorted.leftOut,
                ElementsAre(Pair("c:functionParam", 1), Pair("std:doc", 1), Pair("std:label", 2)));
}

TEST(InventorySortingTest, MakesAnAliasAFurtherNameOfWhatIsDocumentedThere) {
    const auto sorted = sortInventory({object("r.exceptions.E", "py", "exception", "r.E", -1),
                                       object("r.F", "py", "class", "r.F"),
                                       object("r.E", "py", "exception", "r.E")});
    EXPECT_THAT(namesOf(sorted), ElementsAre("r.F", "r.E"));
    EXPECT_THAT(sorted.furtherNames, ElementsAre(FurtherName{"r.exceptions.E", 1}));
    EXPECT_THAT(sorted.leftOut, IsEmpty());
}

TEST(InventorySortingTest, CountsAliasesOfNothing) {
    const auto sorted = sortInventory({object("r.exceptions.E", "py", "exception", "r.E", -1)});
    EXPECT_THAT(sorted.furtherNames, IsEmpty());
    EXPECT_THAT(sorted.leftOut, ElementsAre(Pair("py:exception (alias)", 1)));
}

TEST(InventorySortingTest, GivesAnOptionItsNameWithoutTheProgram) {
    const auto sorted = sortInventory({object("tool.--help", "std", "cmdoption", "a"),
                                       object("my-tool.-h", "std", "cmdoption", "a"),
                                       object("--bare", "std", "cmdoption", "b"),
                                       object("pkg.-x", "py", "data", "c")});
    EXPECT_THAT(sorted.furtherNames, ElementsAre(FurtherName{"--help", 0}, FurtherName{"-h", 1}));
}

TEST(InventorySortingTest, TakesTheRoleOffNamesThatRepeatIt) {
    const auto sorted = sortInventory(
        {object("command:install", "cmake", "command", "command:install"),
         object("prop_tgt:FOLDER", "cmake", "prop_tgt", "prop_tgt:FOLDER"),
         object("CMP0001", "cmake", "policy", "p"), object("role:x", "rst", "role", "role-x")});
    EXPECT_THAT(namesOf(sorted), ElementsAre("install", "FOLDER", "CMP0001", "role:x"));
    EXPECT_EQ(sorted.objects[0].anchor, "command:install");
}

TEST(InventorySortingTest, KeepsWhatIsListedTwiceOnce) {
    const auto sorted =
        sortInventory({object("f", "py", "function", "f"), object("f", "py", "function", "f"),
                       object("f", "py", "function", "g")});
    EXPECT_THAT(namesOf(sorted), ElementsAre("f", "f"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
