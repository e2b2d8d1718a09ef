// What can be wrong with a file as a whole, in each of the three files of a set.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docset/validate.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docset::Fault;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;

constexpr const char* paths[] = {manifestPath, lookupPath, referencePath};

// The text without its last brace and everything after it.
std::string withoutLastBrace(const std::string& text) {
    return text.substr(0, text.rfind('}'));
}

// Breaks a sound file; the mark says where the fault is.
struct Row {
    const char* name;
    std::string (*spoil)(const std::string& sound);
    const char* problem;
};

const std::vector<Row> rows = {
    {"empty", [](const std::string&) { return std::string("^"); }, "ends in the middle"},
    {"byte order mark", [](const std::string& sound) { return "^\xEF\xBB\xBF" + sound; },
     "byte order mark"},
    {"UTF-16", [](const std::string&) { return std::string("^\xFF\xFE{\0}\0", 7); },
     "not UTF-8. The text is not well-formed UTF-8 at byte 0"},
    {"Latin-1 in a text",
     [](const std::string& sound) {
         return replaced(sound, "\"formatVersion\": 1", "\"formatVersion\": \"Gr^\xF6\"");
     },
     "not UTF-8"},
    {"no JSON", [](const std::string&) { return std::string("^<html></html>"); }, "not JSON"},
    {"a comma too many",
     [](const std::string& sound) {
         return replaced(sound, "\"formatVersion\": 1,", "\"formatVersion\": 1,^,");
     },
     "not JSON"},
    {"a comment",
     [](const std::string& sound) {
         return replaced(sound, "\"formatVersion\": 1,", "\"formatVersion\": 1, ^// one\n");
     },
     "not JSON"},
    {"a single quote",
     [](const std::string& sound) {
         return replaced(sound, "\"formatVersion\": 1", "\"formatVersion\": ^'1'");
     },
     "not JSON"},
    {"cut off", [](const std::string& sound) { return withoutLastBrace(sound) + "^"; },
     "ends in the middle"},
    {"cut off within a text",
     [](const std::string& sound) { return sound.substr(0, sound.find("documentation")) + "^"; },
     "ends in the middle"},
    {"more text after the end", [](const std::string& sound) { return sound + "^{}"; },
     "more text after the end"},
    {"no object", [](const std::string&) { return std::string("\n ^[]"); },
     "An object was expected"},
};

TEST(BrokenFileTest, IsNamedWithTheFirstWrongByte) {
    for (const auto* path : paths)
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(path) + ": " + row.name);
            const TempFolder root;
            SetTexts texts = soundSet();
            const MarkedText marked = takeMark(row.spoil(fileOf(texts, path)));
            fileOf(texts, path) = marked.text;
            writeSet(root, texts);
            EXPECT_THAT(
                docset::validate(root.path()).faults,
                ElementsAre(AllOf(Field(&Fault::file, (root.path() / path).string()),
                                  Field(&Fault::line, marked.line),
                                  Field(&Fault::column, marked.column), Field(&Fault::field, ""),
                                  Field(&Fault::problem, HasSubstr(row.problem)))));
        }
}

TEST(BrokenFileTest, NestedADeepWayIsRefusedNotFollowed) {
    for (const auto* path : paths)
        for (const char* bracket : {"[", "{\"a\":"}) {
            SCOPED_TRACE(std::string(path) + ": " + bracket);
            const TempFolder root;
            SetTexts texts = soundSet();
            std::string deep;
            for (int level = 0; level < 1000; ++level)
                deep += bracket;
            fileOf(texts, path) = deep;
            writeSet(root, texts);
            EXPECT_THAT(
                docset::validate(root.path()).faults,
                ElementsAre(AllOf(Field(&Fault::file, (root.path() / path).string()),
                                  Field(&Fault::line, 1U),
                                  Field(&Fault::column, 32 * std::string(bracket).size() + 1),
                                  Field(&Fault::problem, HasSubstr("more than 32 levels")))));
        }
}

TEST(BrokenFileTest, OfAnotherFormatOrVersionIsRefusedAtTheMemberThatSaysSo) {
    struct Head {
        const char* name;
        const char* from;
        const char* to;
        const char* field;
        const char* problem;
    };
    const std::vector<Head> heads = {
        {"another format", "\"format\": \"veltra-", "\"format\": ^\"other-", "format",
         "was expected here"},
        {"no text as the format", "\"format\": ", "\"format\": ^1, \"title\": ", "format",
         "A text was expected"},
        {"no format", "{\n  \"format\": ", "^{\n  \"title\": ", "",
         "The member \"format\" is missing"},
        {"a later version", "\"formatVersion\": 1", "\"formatVersion\": ^2", "formatVersion",
         "Version 2 of the format is not known; this program reads version 1"},
        {"version 0", "\"formatVersion\": 1", "\"formatVersion\": ^0", "formatVersion",
         "Version 0"},
        {"a version below 0", "\"formatVersion\": 1", "\"formatVersion\": ^-1", "formatVersion",
         "whole number"},
        {"a broken version", "\"formatVersion\": 1", "\"formatVersion\": ^1.5", "formatVersion",
         "whole number"},
        {"an enormous version", "\"formatVersion\": 1", "\"formatVersion\": ^1e300",
         "formatVersion", "whole number"},
        {"a text as version", "\"formatVersion\": 1", "\"formatVersion\": ^\"1\"", "formatVersion",
         "whole number"},
        {"no version", "{\n  \"format\": \"veltra", "^{\n  \"format\": \"veltra", "",
         "The member \"formatVersion\" is missing"},
    };
    for (const auto* path : paths)
        for (const auto& head : heads) {
            SCOPED_TRACE(std::string(path) + ": " + head.name);
            const TempFolder root;
            SetTexts texts = soundSet();
            std::string text = replaced(fileOf(texts, path), head.from, head.to);
            if (std::string(head.name) == "no version")
                text = replaced(text, "\"formatVersion\": 1,", "");
            const MarkedText marked = takeMark(text);
            fileOf(texts, path) = marked.text;
            writeSet(root, texts);
            EXPECT_THAT(docset::validate(root.path()).faults,
                        ElementsAre(AllOf(Field(&Fault::file, (root.path() / path).string()),
                                          Field(&Fault::line, marked.line),
                                          Field(&Fault::column, marked.column),
                                          Field(&Fault::field, head.field),
                                          Field(&Fault::problem, HasSubstr(head.problem)))));
        }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
