#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "docset/JsonPosition.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docset::findJsonValues;
using docset::JsonStep;
using docset::toFieldName;
using testing::ElementsAre;
using Path = std::vector<JsonStep>;

std::optional<std::size_t> findJsonValue(std::string_view text, const Path& path) {
    return findJsonValues(text, {path}).front();
}

// "path at offset" of each.
std::vector<std::string> repeatedMembers(std::string_view text) {
    std::vector<std::string> found;
    docset::forEachRepeatedMember(text, [&](const Path& path, std::size_t offset) {
        found.push_back(toFieldName(path) + " at " + std::string(text.substr(offset, 2)));
    });
    return found;
}

JsonStep member(std::string name) {
    return name;
}

JsonStep element(std::size_t index) {
    return index;
}

// Each text has the mark where the value that the path leads to begins.
TEST(JsonPositionTest, FindsTheFirstByteOfAValue) {
    struct Row {
        const char* name;
        std::string text;
        Path path;
    };
    const std::vector<Row> rows = {
        {"the top", "  ^{}", {}},
        {"a number at the top", "\n ^12 ", {}},
        {"a member", R"({"a": ^1})", {member("a")}},
        {"a member without spaces", R"({"a":^1,"b":2})", {member("a")}},
        {"a later member", R"({"a": 1, "b": ^true})", {member("b")}},
        {"a member after a number", R"({"a": 12,"b": ^13})", {member("b")}},
        {"a member on the next line", "{\n\"a\":\n\t^null}", {member("a")}},
        {"an element", R"([1, ^2, 3])", {element(1)}},
        {"the first element", R"([^1])", {element(0)}},
        {"an element without spaces", R"([1,22,^3])", {element(2)}},
        {"an element after lists", R"([[], [1, 2], ^[3]])", {element(2)}},
        {"an element after objects", R"([{}, {"a": [1]}, ^{}])", {element(2)}},
        {"deep",
         R"({"a": [0, {"b": [[^"x"]]}]})",
         {member("a"), element(1), member("b"), element(0), element(0)}},
        {"a text", R"({"a": ^"x"})", {member("a")}},
        {"after a text with brackets", R"({"a": "}]{[:,", "b": ^1})", {member("b")}},
        {"after a text with quotes", R"(["\"]", "\\", ^2])", {element(2)}},
        {"an escaped name", R"({"\u0061\"": 0, "x\n": ^1})", {member("x\n")}},
        {"a name that is escaped in the text alone", R"({"\u0061": ^1})", {member("a")}},
        {"a name with a dot", R"({"a.b": ^1, "a": {"b": 2}})", {member("a.b")}},
        {"an empty name", R"({"": ^1})", {member("")}},
        {"a name in Japanese", R"({"a": 0, "測定": ^1})", {member("測定")}},
        {"after a nested object", R"({"a": {"b": 1}, "b": ^2})", {member("b")}},
        {"a negative number", R"([^-1.5e3])", {element(0)}},
        {"the last of repeated members", R"({"a": 1, "a": ^2})", {member("a")}},
        {"within the last of repeated members",
         R"({"a": {"b": 1}, "a": {"b": ^2}})",
         {member("a"), member("b")}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto expected = row.text.find(placeMark);
        EXPECT_EQ(findJsonValue(takeMark(row.text).text, row.path), expected);
    }
}

TEST(JsonPositionTest, FindsNothingThatIsNotThere) {
    struct Row {
        const char* name;
        std::string text;
        Path path;
    };
    const std::vector<Row> rows = {
        {"no text", "", {}},
        {"no such member", R"({"a": 1})", {member("b")}},
        {"no such element", R"([1, 2])", {element(2)}},
        {"no element of none", R"([])", {element(0)}},
        {"a member of a list", R"([1])", {member("0")}},
        {"an element of an object", R"({"0": 1})", {element(0)}},
        {"a member of a number", R"({"a": 1})", {member("a"), member("b")}},
        {"only in a member that a later one hides",
         R"({"a": {"b": 1}, "a": {}})",
         {member("a"), member("b")}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(findJsonValue(row.text, row.path), std::nullopt);
    }
}

TEST(JsonPositionTest, FindsManyValuesInOnePass) {
    const std::string text = R"({"a": [1, {"b": 2}], "c": 3, "c": [4]})";
    EXPECT_THAT(findJsonValues(text, {{member("c")},
                                      {member("a"), element(1), member("b")},
                                      {},
                                      {member("c")},
                                      {member("c"), element(1)},
                                      {member("c"), element(0)}}),
                ElementsAre(text.find("[4"), text.find('2'), 0U, text.find("[4"), std::nullopt,
                            text.find('4')));
}

TEST(JsonPositionTest, ShortensLongNamesAtACharacter) {
    const std::string name(199, 'a');
    EXPECT_EQ(docset::shortened(name + "b"), name + "b");
    EXPECT_EQ(docset::shortened(name + "bc"), name + "b…");
    EXPECT_EQ(docset::shortened(name + "測定"), name + "…");
    EXPECT_EQ(toFieldName({member(name + "bc"), element(1)}), name + "b…[1]");
}

TEST(JsonPositionTest, FindsEveryRepeatedMember) {
    const std::string text = R"({"a": 1, "b": {"a": 2, "c": 3, "c": 4}, "a": [{"a": 5}], "a": 6})";
    EXPECT_THAT(repeatedMembers(text), ElementsAre("b.c at 4}", "a at [{", "a at 6}"));
}

TEST(JsonPositionTest, EqualNamesInDifferentObjectsAreNotRepeated) {
    EXPECT_THAT(repeatedMembers(R"([{"a": {"a": 1}}, {"a": 2, "A": 3}])"), ElementsAre());
}

TEST(JsonPositionTest, NamesAreRepeatedHoweverTheyAreEscaped) {
    EXPECT_EQ(repeatedMembers(R"({"a": 1, "\u0061": 2})").size(), 1U);
}

TEST(JsonPositionTest, WritesAPathAsAPersonWould) {
    EXPECT_EQ(toFieldName({}), "");
    EXPECT_EQ(toFieldName({member("products"), element(0), member("files"), member("en_US")}),
              "products[0].files.en_US");
    EXPECT_EQ(toFieldName({member("pages"), member("ref/plot.html"), element(1)}),
              R"(pages["ref/plot.html"][1])");
    EXPECT_EQ(toFieldName({member("a.b"), member("")}), R"(["a.b"][""])");
    EXPECT_EQ(toFieldName({element(2), member("type-alias")}), "[2].type-alias");
}

TEST(JsonPositionTest, CountsLinesAndBytesFromOne) {
    struct Row {
        std::size_t offset;
        std::size_t line;
        std::size_t column;
    };
    const std::string text = "ab\nc\n\né!";
    const std::vector<Row> rows = {{0, 1, 1}, {1, 1, 2}, {2, 1, 3}, {3, 2, 1}, {4, 2, 2},
                                   {5, 3, 1}, {6, 4, 1}, {8, 4, 3}, {9, 4, 4}, {99, 4, 4}};
    docset::LineCounter lines(text);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.offset);
        docset::LineCounter alone(text);
        for (auto* const counter : {&alone, &lines}) {
            const auto position = counter->positionOf(row.offset);
            EXPECT_EQ(position.line, row.line);
            EXPECT_EQ(position.column, row.column);
        }
    }
    EXPECT_EQ(lines.positionOf(0).line, 1U) << "an offset before the last one";
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
