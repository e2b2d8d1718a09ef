// Hostile documentation sets take time that grows as they do, not with the square of their size.
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "docparser/FileDocSource.hpp"
#include "docset/validate.hpp"
#include "host/docparser/Roots.hpp"
#include "host/docset/Sets.hpp"
#include "support/Growth.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

// A text for each number below `size`, with commas between.
std::string listed(std::size_t size, std::string (*element)(const std::string& number)) {
    std::string text;
    for (std::size_t each = 0; each < size; ++each)
        text += (each == 0 ? "" : ",\n") + element(std::to_string(each));
    return text;
}

std::string manifestOf(const std::string& locales, const std::string& products) {
    return R"({"format": "veltra-documentation-set", "formatVersion": 1, "locales": [)" + locales +
           R"(], "products": [)" + products + "]}";
}

struct Row {
    const char* name;
    // Changes the sound set.
    void (*change)(SetTexts& texts, std::size_t size);
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

const auto rows = testing::Values(
    Row{"FaultyProducts",
        [](SetTexts& texts, std::size_t size) {
            texts.manifest = manifestOf(
                R"("en_US")", listed(size, [](const std::string& number) { return number; }));
        }},
    Row{"ProductsOfOneLookupFile",
        [](SetTexts& texts, std::size_t size) {
            texts.manifest = manifestOf(
                R"("en_US")", listed(size, [](const std::string& number) {
                    return R"({"shortName": "p)" + number +
                           R"(", "installed": true, "files": {"en_US": {"lookup": ")" + lookupPath +
                           R"(", "reference": ")" + referencePath + R"("}}})";
                }));
        }},
    Row{"ProductsWithoutFiles",
        [](SetTexts& texts, std::size_t size) {
            texts.manifest =
                manifestOf(R"("en_US")", listed(size, [](const std::string& number) {
                               return R"({"shortName": "p)" + number +
                                      R"(", "installed": true, "files": {"en_US": {"lookup": "l)" +
                                      number + R"(", "reference": "r)" + number + R"("}}})";
                           }));
        }},
    Row{"ProductsOfManyLocales",
        [](SetTexts& texts, std::size_t size) {
            texts.manifest = manifestOf(
                listed(1000, [](const std::string& number) { return "\"l" + number + '"'; }),
                listed(size, [](const std::string& number) {
                    return R"({"shortName": "p)" + number +
                           R"(", "installed": true, "files": {"l999": {"lookup": "l)" + number +
                           R"(", "reference": "r"}}})";
                }));
        }},
    Row{"LocalesOfAProduct",
        [](SetTexts& texts, std::size_t size) {
            texts.manifest = manifestOf(
                listed(size, [](const std::string& number) { return "\"l" + number + '"'; }),
                R"({"shortName": "demo", "installed": true, "files": {)" +
                    listed(size,
                           [](const std::string& number) {
                               return "\"l" + number + R"(": {"lookup": ")" + lookupPath +
                                      R"(", "reference": ")" + referencePath + "\"}";
                           }) +
                    "}}");
        }},
    Row{"ProductsOfOneName",
        [](SetTexts& texts, std::size_t size) {
            texts.manifest = manifestOf(R"("en_US")", listed(size, [](const std::string&) {
                                            return std::string(R"({"shortName": "demo"})");
                                        }));
        }},
    Row{"RepeatedMembers",
        [](SetTexts& texts, std::size_t size) {
            texts.manifest = replaced(
                texts.manifest, R"("title": "Demo documentation")",
                listed(size, [](const std::string&) { return std::string(R"("title": "x")"); }));
        }},
    Row{"RepeatedMembersBelowALongName",
        [](SetTexts& texts, std::size_t size) {
            texts.lookup = replaced(
                texts.lookup, "\"twice\": [",
                '"' + std::string(size, 'n') + "\": [{" + listed(size, [](const std::string&) {
                    return std::string(R"("href": "x")");
                }) + "}], \"twice\": [");
        }},
    Row{"UnknownMembers",
        [](SetTexts& texts, std::size_t size) {
            texts.lookup = replaced(texts.lookup, "\"twice\": [",
                                    "\"thrice\": [" + listed(size, [](const std::string& number) {
                                        return "{\"x" + number + "\": 1}";
                                    }) + "], \"twice\": [");
        }},
    Row{"RecordsWithoutPages",
        [](SetTexts& texts, std::size_t size) {
            texts.lookup =
                replaced(texts.lookup, "\"twice\": [",
                         listed(size, [](const std::string& number) {
                             return "\"n" + number +
                                    R"(": [{"type": "function", "functionType": "function",
                                                "href": "x.html"}])";
                         }) + ", \"twice\": [");
        }},
    Row{"NestedLists",
        [](SetTexts& texts, std::size_t size) { texts.manifest = std::string(size, '['); }},
    Row{"LongTexts", [](SetTexts& texts, std::size_t size) {
            texts.manifest =
                replaced(texts.manifest, "[\"en_US\"", "[\"" + std::string(size, '/') + '"');
        }});

class SetGrowthTest : public testing::TestWithParam<Row> {};

TEST_P(SetGrowthTest, ValidatingIsLinear) {
    EXPECT_TRUE(growsLinearly(
        [](std::size_t size) {
            const TempFolder root;
            SetTexts texts = soundSet();
            GetParam().change(texts, size);
            writeSet(root, texts);
            static_cast<void>(docset::validate(root.path()));
        },
        {.smallest = 500, .largest = 32'000}));
}

TEST_P(SetGrowthTest, ReadingIsLinear) {
    EXPECT_TRUE(growsLinearly(
        [](std::size_t size) {
            const TempFolder root;
            SetTexts texts = soundSet();
            GetParam().change(texts, size);
            writeSet(root, texts);
            docparser::FileDocSource source =
                sourceOf({.docRoot = root.path(), .language = "en_US"});
            try {
                static_cast<void>(source.getResourceLookupFiles());
                static_cast<void>(source.listProducts());
            } catch (const std::exception&) {  // a manifest that is of no use
            }
        },
        {.smallest = 500, .largest = 32'000}));
}

INSTANTIATE_TEST_SUITE_P(Sets, SetGrowthTest, rows, [](const auto& row) { return row.param.name; });

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
