// What validate() says of sound sets, and of files that do not fit each other.
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docset/validate.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docset::Fault;
using docset::validate;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;

TEST(ValidateTest, CountsWhatASoundSetHolds) {
    const TempFolder root;
    writeSet(root, soundSet());
    const auto report = validate(root.path());
    EXPECT_EQ(dump(report.faults), "");
    EXPECT_EQ(report.products, 1U);
    EXPECT_EQ(report.files, 3U);
    EXPECT_EQ(report.entities, 3U);
    EXPECT_EQ(report.items, 2U);
}

TEST(ValidateTest, FindsTheShippedSetSound) {
    const std::filesystem::path root = VELTRA_SHIPPED_SET;
    const auto report = validate(root);
    EXPECT_EQ(dump(report.faults), "");
    EXPECT_EQ(report.products, 11U);
    EXPECT_GT(report.entities, 100U);
    EXPECT_GT(report.items, 100U);
}

// Changes of a sound set, each of which makes two files disagree.
struct Row {
    const char* name;
    const char* changedFile;
    const char* from;
    const char* to;
    const char* file;
    const char* field;
    const char* problem;
};

const std::vector<Row> rows = {
    {"a record that leads to no page", lookupPath, "\"twice\": [",
     "\"twice\": [{\"type\": 0, \"functionType\": 0, \"href\": \"ref/thrice.html\"}, ", lookupPath,
     "entities[\"twice\"]", "\"ref/thrice.html\" is no page"},
    {"a record that leads to an item of another kind", lookupPath, "\"twice\": [",
     "\"thrice\": [{\"type\": 1, \"functionType\": 9, \"href\": \"ref/twice.html\"}], \"twice\": [",
     lookupPath, "entities[\"thrice\"]", "have neither an entity nor a class property"},
    {"a script in the place of an address", referencePath,
     "[{\"page\": \"ref/box.html\", \"name\": \"Box\"}],\n        \"examples\"",
     "[{\"page\": \"JavaScript:alert(1)\", \"name\": \"Box\"}],\n        \"examples\"",
     referencePath, "pages[\"ref/twice.html\"]",
     "\"JavaScript:alert(1)\" of a reference to another page is none"},
    {"a replacement outside of all help folders", referencePath,
     "\"replacements\": [{\"page\": \"ref/box.html\"",
     "\"replacements\": [{\"page\": \"../%2E./box.html\"", referencePath,
     "pages[\"ref/twice.html\"]", "leads out of the folder that the help folders are in"},
    {"an item that no record leads to", referencePath, "\"entities\": [{\"name\": \"Box\"",
     "\"entities\": [{\"name\": \"Lid\", \"type\": 1, \"functionType\": 9}, {\"name\": \"Box\"",
     referencePath, "pages[\"ref/box.html\"]", "leads from \"Lid\" to this item"},
    {"a property that its class does not have", lookupPath, "\"Box.Width\"", "\"Box.Depth\"",
     lookupPath, "entities[\"Box.Depth\"]", "neither an entity nor a class property"},
    {"another display name", referencePath, "\"displayName\": \"Demo\"",
     "\"displayName\": \"Demonstration\"", referencePath, "products", "The head of the product"},
    {"another help folder", lookupPath, "\"helpFolder\": \"demo\"", "\"helpFolder\": \"other\"",
     referencePath, "products", "The head of the product"},
    {"another version", lookupPath, "\"version\": \"1\"", "\"version\": \"2\"", referencePath,
     "products", "The head of the product"},
    {"another product in the reference file", referencePath, "\"shortName\": \"demo\"",
     "\"shortName\": \"other\"", referencePath, "products",
     "\"demo\" is missing; the manifest names this file for it"},
    {"no product in the reference file", referencePath, "\"products\": [{", "\"products\": []}  ",
     referencePath, "products", "\"demo\" is missing"},
};

TEST(ValidateTest, NamesWhereFilesDisagree) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SetTexts texts = soundSet();
        std::string& text = fileOf(texts, row.changedFile);
        text = replaced(text, row.from, row.to);
        if (std::string(row.name) == "no product in the reference file")
            text = text.substr(0, text.find("[]}") + 3);
        const TempFolder root;
        writeSet(root, texts);
        EXPECT_THAT(validate(root.path()).faults,
                    ElementsAre(AllOf(Field(&Fault::file, (root.path() / row.file).string()),
                                      Field(&Fault::field, row.field),
                                      Field(&Fault::problem, HasSubstr(row.problem)))));
    }
}

TEST(ValidateTest, FindsFurtherNamesOfEntitiesAndPropertiesSound) {
    SetTexts texts = soundSet();
    texts.lookup =
        replaced(texts.lookup, "\"twice\": [",
                 R"("impl.twice": [{"type": 0, "functionType": 0, "href": "ref/twice.html"}],
           "impl.Box.Width": [{"type": 4, "functionType": 6, "href": "ref/box.html"}], "twice": [)");
    const TempFolder root;
    writeSet(root, texts);
    EXPECT_EQ(dump(validate(root.path()).faults), "");
}

TEST(ValidateTest, NamesALookupFileOfAnotherProduct) {
    SetTexts texts = soundSet();
    texts.lookup = replaced(texts.lookup, "\"shortName\": \"demo\"", "\"shortName\": \"other\"");
    const TempFolder root;
    writeSet(root, texts);
    EXPECT_THAT(validate(root.path()).faults,
                testing::Contains(AllOf(Field(&Fault::file, (root.path() / lookupPath).string()),
                                        Field(&Fault::field, "product.shortName"),
                                        Field(&Fault::problem, HasSubstr("\"other\"")))));
}

TEST(ValidateTest, NamesAProductThatAReferenceFileHoldsTwice) {
    SetTexts texts = soundSet();
    texts.reference = replaced(texts.reference, "\"products\": [{",
                               R"("products": [{"shortName": "demo", "displayName": "Demo",
                                   "helpFolder": "demo", "version": "1", "pages": {}}, {)");
    const TempFolder root;
    writeSet(root, texts);
    EXPECT_THAT(validate(root.path()).faults,
                testing::Contains(AllOf(Field(&Fault::file, (root.path() / referencePath).string()),
                                        Field(&Fault::problem, HasSubstr("occurs twice")))));
}

TEST(ValidateTest, OneBrokenProductHidesNoFaultOfAnother) {
    SetTexts texts = soundSet();
    texts.manifest = replaced(texts.manifest, "\"products\": [",
                              R"("products": [{"shortName": "gone", "installed": true, "files":
                                 {"ja_JP": {"lookup": "a.json", "reference": "b.json"}}},)");
    texts.reference = replaced(texts.reference, "\"introduced\": \"1\"", "\"introduced\": 1");
    const TempFolder root;
    writeSet(root, texts);
    EXPECT_THAT(validate(root.path()).faults,
                ElementsAre(Field(&Fault::file, (root.path() / "a.json").string()),
                            Field(&Fault::file, (root.path() / "b.json").string()),
                            Field(&Fault::field, HasSubstr("introduced"))));
}

TEST(ValidateTest, AReferenceFileOfTwoProductsIsReadOnce) {
    SetTexts texts = soundSet();
    texts.manifest = replaced(texts.manifest, "\"products\": [",
                              R"("products": [{"shortName": "pair", "installed": true, "files":
            {"en_US": {"lookup": "pair.json", "reference": "en_US/demo.reference.json"}}},)");
    texts.reference = replaced(texts.reference, "\"products\": [{",
                               R"("products": [{"shortName": "pair", "displayName": "Pair",
                                   "helpFolder": "pair", "pages": {}}, {)");
    const TempFolder root;
    writeSet(root, texts);
    root.write("pair.json", R"({"format": "veltra-documentation-lookup", "formatVersion": 1,
        "product": {"shortName": "pair", "displayName": "Pair", "helpFolder": "pair"},
        "entities": {}})");
    const auto report = validate(root.path());
    EXPECT_EQ(dump(report.faults), "");
    EXPECT_EQ(report.files, 4U);
    EXPECT_EQ(report.items, 2U);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
