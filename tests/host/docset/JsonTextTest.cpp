#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>

#include "docset/JsonText.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;

std::string written(const json::value& value) {
    std::ostringstream out;
    docset::writeJson(out, value);
    return out.str();
}

// A value of every kind, at most `depth` levels deep.
json::value randomValue(std::mt19937& random, int depth) {
    const auto upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    const auto text = [&] {
        static const std::vector<std::string> pieces = {"a",  "\"",   "\\", "\n",
                                                        "測", "\x01", "/",  ""};
        std::string made;
        for (int count = upTo(6); count > 0; --count)
            made += pieces[static_cast<std::size_t>(upTo(static_cast<int>(pieces.size()) - 1))];
        return made;
    };
    switch (upTo(depth > 0 ? 6 : 4)) {
        case 0:
            return nullptr;
        case 1:
            return upTo(1) == 1;
        case 2:
            return upTo(1'000'000) - 500'000;
        case 3:
            return upTo(1000) / 8.0;
        case 4:
            return json::value(text());
        case 5: {
            json::array array;
            for (int count = upTo(4); count > 0; --count)
                array.push_back(randomValue(random, depth - 1));
            return array;
        }
        default: {
            json::object object;
            for (int count = upTo(4); count > 0; --count)
                object.insert_or_assign(text(), randomValue(random, depth - 1));
            return object;
        }
    }
}

TEST(JsonTextTest, ReadsBackAsTheSameValue) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 500; ++round) {
        const json::value value = randomValue(random, 5);
        const std::string text = written(value);
        json::error_code error;
        ASSERT_EQ(json::parse(text, error), value) << error.message() << " in\n" << text;
    }
}

TEST(JsonTextTest, IsLaidOutForAPersonToRead) {
    const json::value value = json::parse(
        R"({"name":"Größe \"1\"","none":{},"list":[],"texts":["a","b"],"items":[{"on":true},[1]]})");
    EXPECT_EQ(written(value), R"({
  "name": "Größe \"1\"",
  "none": {},
  "list": [],
  "texts": ["a","b"],
  "items": [
    {
      "on": true
    },
    [1]
  ]
})");
}

TEST(JsonTextTest, BreaksAListThatWouldMakeALongLine) {
    const std::string longText(60, 'x');
    EXPECT_EQ(written(json::array{longText, longText}),
              "[\n  \"" + longText + "\",\n  \"" + longText + "\"\n]");
    EXPECT_EQ(written(json::array{longText}), "[\"" + longText + "\"]");
}

TEST(JsonTextTest, KeepsMembersInTheirOrder) {
    EXPECT_EQ(written(json::parse(R"({"z":1,"a":2,"m":3})")),
              "{\n  \"z\": 1,\n  \"a\": 2,\n  \"m\": 3\n}");
}

TEST(JsonTextTest, EscapesWhatATerminalMayObeyAndNothingElse) {
    struct Row {
        std::string text;
        std::string written;
    };
    const std::vector<Row> rows = {
        {"a\x1B[2Jb", R"("a\u001b[2Jb")"},
        {"a\x7F", R"("a\u007f")"},
        {"\u0080b", R"("\u0080b")"},
        {"\u009B2J", R"("\u009b2J")"},
        {"a\u2028b", R"("a\u2028b")"},
        {"\u202A\u202E", R"("\u202a\u202e")"},
        {"\u2066x\u2069", R"("\u2066x\u2069")"},
        {"\u009F\x7F\u2029", R"("\u009f\u007f\u2029")"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(docset::toJsonText(json::string(row.text)), row.written);
        EXPECT_EQ(json::parse(row.written), json::value(row.text));
        EXPECT_EQ(written(json::object{{row.text, row.text}}),
                  "{\n  " + row.written + ": " + row.written + "\n}");
    }
    for (const std::string text :
         {"~", "\u00A0", "\u00A9 é", "\u2027", "\u202F", "\u2065", "\u206A", "€", "\u2126"})
        EXPECT_EQ(docset::toJsonText(json::string(text)), '"' + text + '"');
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
