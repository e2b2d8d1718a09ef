#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/Inflate.hpp"
#include "sphinx/Inventory.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;
using tests::inventoryFile;

InventoryObject onlyObject(std::string_view line) {
    const Inventory inventory = parseInventory(inventoryFile(line));
    EXPECT_EQ(inventory.objects.size(), 1U) << line;
    return inventory.objects.empty() ? InventoryObject() : inventory.objects.front();
}

TEST(InventoryTest, ReadsProjectAndVersionFromTheHead) {
    const Inventory inventory = parseInventory(inventoryFile("", "My Project", "1.2 rc"));
    EXPECT_EQ(inventory.project, "My Project");
    EXPECT_EQ(inventory.version, "1.2 rc");
    EXPECT_TRUE(inventory.objects.empty());
}

TEST(InventoryTest, SplitsALineIntoItsFields) {
    const InventoryObject object = onlyObject("m.f py:function 1 lib/m.html#m.f Shown name\n");
    EXPECT_EQ(object,
              (InventoryObject{"m.f", "py", "function", 1, "lib/m.html", "m.f", "Shown name"}));
}

TEST(InventoryTest, KeepsSpacesInsideNames) {
    const InventoryObject object =
        onlyObject("ns::operator bool const cpp:function 1 a.html#x -\n");
    EXPECT_EQ(object.name, "ns::operator bool const");
    EXPECT_EQ(object.role, "function");
}

TEST(InventoryTest, DoesNotTakeAColonInTheNameForTheType) {
    const InventoryObject object = onlyObject("a::b 2 c py:data 1 a.html -\n");
    EXPECT_EQ(object.name, "a::b 2 c");
}

TEST(InventoryTest, PutsTheNameForADollarSignAtTheEndOfTheLocation) {
    const InventoryObject object = onlyObject("m.f py:function 1 lib/m.html#$ -\n");
    EXPECT_EQ(object.anchor, "m.f");
    EXPECT_EQ(object.displayName, "m.f");
    EXPECT_EQ(onlyObject("x py:module 0 m.html#module-$ -\n").anchor, "module-x");
}

TEST(InventoryTest, TakesLeadingDotSlashOffLocations) {
    EXPECT_EQ(onlyObject("m.f py:function 1 ././lib/m.html#$ -\n").page, "lib/m.html");
}

TEST(InventoryTest, ReadsNegativePriorities) {
    EXPECT_EQ(onlyObject("m.f py:function -1 m.html#$ -\n").priority, -1);
}

TEST(InventoryTest, AcceptsAnEmptyLocation) {
    const InventoryObject object = onlyObject("m py:module 0  -\n");
    EXPECT_EQ(object.page, "");
    EXPECT_EQ(object.displayName, "m");
}

TEST(InventoryTest, ReadsVersionOneWhichIsNotCompressed) {
    const Inventory inventory = parseInventory(
        "# Sphinx inventory version 1\n# Project: Old\n# Version: 0.3\n"
        "m mod m.html\nm.f function m.html\n");
    EXPECT_EQ(inventory.project, "Old");
    ASSERT_EQ(inventory.objects.size(), 2U);
    EXPECT_EQ(inventory.objects[0],
              (InventoryObject{"m", "py", "module", 1, "m.html", "module-m", "m"}));
    EXPECT_EQ(inventory.objects[1],
              (InventoryObject{"m.f", "py", "function", 1, "m.html", "m.f", "m.f"}));
}

TEST(InventoryTest, ReportsLinesItCannotReadAndUsesTheRest) {
    const Inventory inventory =
        parseInventory(inventoryFile("nonsense\nm.f py:function 1 m.html#$ -\n"));
    EXPECT_EQ(inventory.objects.size(), 1U);
    EXPECT_THAT(inventory.faults, ElementsAre(HasSubstr("line 1")));
}

TEST(InventoryTest, ReplacesIllFormedBytesAndReportsThem) {
    const Inventory inventory = parseInventory(inventoryFile("m.\xFF py:data 1 m.html#$ -\n"));
    ASSERT_EQ(inventory.objects.size(), 1U);
    EXPECT_EQ(inventory.objects[0].name, "m.\uFFFD");
    EXPECT_THAT(inventory.faults, ElementsAre(HasSubstr("UTF-8")));
}

TEST(InventoryTest, BoundsTheNumberOfReportedLines) {
    std::string lines;
    for (int each = 0; each < 100; ++each)
        lines += "bad\n";
    const Inventory inventory = parseInventory(inventoryFile(lines));
    EXPECT_EQ(inventory.faults.size(), 21U);
    EXPECT_EQ(inventory.faults.back(), "80 further lines are at fault");
}

TEST(InventoryTest, RefusesWhatIsNoUsableInventory) {
    const std::string whole = inventoryFile("m.f py:function 1 lib/m.html#$ -\n");
    const struct {
        const char* name;
        std::string file;
        const char* message;
    } rows[] = {
        {"empty", "", "does not begin with"},
        {"other text", "<html>", "does not begin with"},
        {"unknown version", "# Sphinx inventory version 3\n", "versions 1 and 2"},
        {"no project", "# Sphinx inventory version 2\nx\n", "# Project:"},
        {"no compression line", "# Sphinx inventory version 2\n# Project: x\n# Version: 1\n",
         "compression"},
        {"cut short", whole.substr(0, whole.size() - 8), "ends early"},
        {"nothing compressed", whole.substr(0, whole.find("zlib.\n") + 6), "ends early"},
        {"damaged", whole.substr(0, whole.find("zlib.\n") + 6) + "no stream", "damaged"},
    };
    for (const auto& row : rows)
        EXPECT_THAT([&] { static_cast<void>(parseInventory(row.file)); },
                    ThrowsMessage<std::runtime_error>(HasSubstr(row.message)))
            << row.name;
}

TEST(InflateTest, RefusesToInflateBeyondTheLimit) {
    const std::string file = inventoryFile(std::string(10000, 'x'));
    const std::string stream = file.substr(file.find("zlib.\n") + 6);
    EXPECT_EQ(inflate(stream, 10000).size(), 10000U);
    EXPECT_THAT([&] { static_cast<void>(inflate(stream, 9999)); },
                ThrowsMessage<std::runtime_error>(HasSubstr("more than 9999 bytes")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
