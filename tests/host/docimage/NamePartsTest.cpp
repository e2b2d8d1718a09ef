#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "docimage/nameParts.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::ElementsAreArray;

TEST(NamePartsTest, APartBeginsWhereAReaderSeesOne) {
    struct Case {
        std::u16string identifier;
        std::vector<std::string> parts;
    };
    const Case cases[] = {
        {u"", {}},
        {u"read_csv", {"read", "csv"}},
        {u"DataFrame", {"data", "frame"}},
        {u"HTTPServer2", {"http", "server", "2"}},
        {u"HTTP", {"http"}},
        {u"log10", {"log", "10"}},
        {u"x2y", {"x", "2", "y"}},
        {u"__init__", {"init"}},
        {u"rowCount", {"row", "count"}},
        {u"A", {"a"}},
        {u"aB", {"a", "b"}},
        {u"ABc", {"a", "bc"}},
        {u"is-file", {"is", "file"}},
        {u"GroßeÄnderung",
         {"gro\xc3\x9f"
          "e",
          "\xc3\xa4nderung"}},
        {u"表示", {"\xe8\xa1\xa8\xe7\xa4\xba"}},
        {u"->", {"->"}},
        {u"_", {"_"}},
    };
    for (const auto& c : cases)
        EXPECT_THAT(docimage::nameParts(c.identifier), ElementsAreArray(c.parts))
            << fl::i18n::toUtf8(c.identifier);
}

TEST(NamePartsTest, JoinedPartsAreTheSameForEverySpellingOfAName) {
    for (const char16_t* name : {u"read_csv", u"ReadCsv", u"readCSV", u"readcsv", u"READ_CSV"})
        EXPECT_EQ(docimage::joinedParts(name), "readcsv");
}

TEST(NamePartsTest, ALongNameIsCutOff) {
    std::u16string name;
    for (int part = 0; part < 1000; ++part)
        name += u"a_";
    EXPECT_EQ(docimage::nameParts(name).size(), docimage::maxParts);
}

TEST(NamePartsTest, RunsAreUpToThreePartsAndTheWhole) {
    const auto runs = [](std::size_t parts) {
        std::vector<std::pair<std::size_t, std::size_t>> all;
        docimage::forEachRun(
            parts, [&](std::size_t begin, std::size_t end) { all.emplace_back(begin, end); });
        return all;
    };
    using Run = std::pair<std::size_t, std::size_t>;
    EXPECT_THAT(runs(0), testing::IsEmpty());
    EXPECT_THAT(runs(2), testing::ElementsAre(Run{0, 1}, Run{0, 2}, Run{1, 2}));
    EXPECT_THAT(runs(4),
                testing::ElementsAre(Run{0, 1}, Run{0, 2}, Run{0, 3}, Run{1, 2}, Run{1, 3},
                                     Run{1, 4}, Run{2, 3}, Run{2, 4}, Run{3, 4}, Run{0, 4}));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
