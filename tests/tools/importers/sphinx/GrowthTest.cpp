// Hostile inventories and pages take time that grows as they do, not with the square of their size.
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/HtmlDocument.hpp"
#include "sphinx/ImportTree.hpp"
#include "sphinx/Inventory.hpp"
#include "sphinx/PageReader.hpp"
#include "support/Growth.hpp"
#include "support/TempFolder.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using tests::growsLinearly;
using tests::inventoryFile;

std::string repeated(std::string_view piece, std::size_t times) {
    std::string text;
    text.reserve(piece.size() * times);
    for (std::size_t each = 0; each < times; ++each)
        text += piece;
    return text;
}

struct Row {
    const char* name;
    std::string (*make)(std::size_t size);
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class InventoryGrowthTest : public testing::TestWithParam<Row> {};

TEST_P(InventoryGrowthTest, IsLinear) {
    EXPECT_TRUE(growsLinearly([](std::size_t size) {
        static_cast<void>(parseInventory(inventoryFile(GetParam().make(size))));
    }));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, InventoryGrowthTest,
    testing::Values(
        Row{"Spaces", [](std::size_t size) { return "x" + std::string(size, ' ') + "y\n"; }},
        Row{"Words", [](std::size_t size) { return repeated("a ", size) + "\n"; }},
        Row{"TypesWithoutPriority", [](std::size_t size) { return repeated("a:b ", size) + "\n"; }},
        Row{"LongWords",
            [](std::size_t size) { return "x " + std::string(size, 'a') + " " + "1 2\n"; }},
        Row{"DotSlashes",
            [](std::size_t size) { return "x py:data 1 " + repeated("./", size) + " -\n"; }},
        Row{"ShortLines", [](std::size_t size) { return repeated("\n", size); }},
        Row{"IllFormedBytes", [](std::size_t size) { return repeated("\xFF ", size) + "\n"; }}),
    [](const auto& row) { return row.param.name; });

class PageGrowthTest : public testing::TestWithParam<Row> {};

TEST_P(PageGrowthTest, IsLinear) {
    HtmlArena arena;
    EXPECT_TRUE(growsLinearly(
        [&](std::size_t size) {
            static_cast<void>(readPage(arena, GetParam().make(size), "p.html",
                                       {{.object = 0, .anchor = "f", .isModule = false}}));
        },
        {.smallest = 500, .largest = 100'000}));
}

// A description of the object "f", around what a test puts into its signature and its body.
std::string description(const std::string& signature, const std::string& body) {
    return "<dl class=\"py function\"><dt class=\"sig\" id=\"f\"><span "
           "class=\"descname\">f</span>" +
           signature + "</dt><dd>" + body + "</dd></dl>";
}

INSTANTIATE_TEST_SUITE_P(
    Texts, PageGrowthTest,
    testing::Values(
        Row{"OpenParagraphs", [](std::size_t size) { return repeated("<p", size); }},
        Row{"Paragraphs", [](std::size_t size) { return repeated("<p>", size); }},
        Row{"OpenAngles", [](std::size_t size) { return repeated("<", size); }},
        Row{"Brackets",
            [](std::size_t size) {
                return description(std::string(size, '(') + std::string(size, ')'), "");
            }},
        Row{"SpacedBrackets",
            [](std::size_t size) {
                return description(repeated("( [ ) ] , ", size) + "<dl><dd>x</dd></dl>", "");
            }},
        Row{"StrayEndTags",
            [](std::size_t size) { return repeated("<b>", size) + repeated("</i>", size); }},
        Row{"StrayEndTagsBetween", [](std::size_t size) { return repeated("<b></i>", size); }},
        Row{"FormattingElements", [](std::size_t size) { return repeated("<b><p></p>", size); }},
        Row{"UnclosedFormatting",
            [](std::size_t size) { return repeated("<p><b><i><u></p>", size); }},
        Row{"NestedAnchors", [](std::size_t size) { return repeated("<a>", size); }},
        Row{"DistinctFormatting",
            [](std::size_t size) {
                std::string page;
                for (std::size_t each = 0; each < size; ++each)
                    page += "<p><b id=\"b" + std::to_string(each) + "\"></p>";
                return page;
            }},
        Row{"WideTable",
            [](std::size_t size) {
                return description("", "<table>" +
                                           repeated("<td colspan=\"100\">x</td>", size) +
                                           repeated("<tr><td>x</td></tr>", size) + "</table>");
            }},
        Row{"OpenBracketsInProse",
            [](std::size_t size) { return description("", repeated("(a. ", size)); }},
        Row{"CodeInProse",
            [](std::size_t size) { return description("", repeated("<code>x</code>. b", size)); }},
        Row{"SentencesBeforeCode",
            [](std::size_t size) {
                return description("", "<p>" + repeated("<code>x</code> ends. It is. ", size) +
                                           "so:</p><div class=\"highlight\"><pre>x</pre></div>");
            }},
        Row{"PromptLines",
            [](std::size_t size) {
                return description("", "<div class=\"highlight\"><pre>" +
                                           repeated("In [\n", size) + "</pre></div>");
            }},
        Row{"EscapedQuotes",
            [](std::size_t size) {
                return description("", "<div class=\"highlight\"><pre>" +
                                           repeated("\"\"\"\\", size) + "</pre></div>");
            }},
        Row{"EmptyDescriptions",
            [](std::size_t size) {
                return repeated("<dl class=\"py function\"><dt class=\"sig\" id=\"f\">f</dt></dl>",
                                size);
            }},
        Row{"EmptyDescriptionsWithin",
            [](std::size_t size) {
                return description("", repeated("<dl class=\"py function\"><dt class=\"sig\" "
                                                "id=\"g\">g</dt></dl><p></p>",
                                                size));
            }},
        Row{"SpansBeforeNothing", [](std::size_t size) { return repeated("<span id=\"f\"></span>", size); }},
        Row{"NestedLists",
            [](std::size_t size) { return description("", repeated("<ul><li>x", 200) + repeated("<br>x", size)); }},
        Row{"BoxesAndParameters",
            [](std::size_t size) {
                return description("(" + repeated("a, ", size) + ")",
                                   repeated("<div class=\"deprecated\"><p>Deprecated since version "
                                            "1.0: b is deprecated</p></div>",
                                            size / 8));
            }},
        Row{"Returns",
            [](std::size_t size) {
                return description("", "<dl class=\"field-list\">" +
                                           repeated("<dt>Returns:</dt><dd>x</dd>"
                                                    "<dt>Return type:</dt><dd>y</dd>",
                                                    size) +
                                           "</dl>");
            }},
        Row{"ListItems", [](std::size_t size) { return repeated("<li>", size); }},
        Row{"Definitions", [](std::size_t size) { return repeated("<dd>", size); }},
        Row{"Options", [](std::size_t size) { return repeated("<option>", size); }},
        Row{"Rows", [](std::size_t size) { return "<table>" + repeated("<tr><td>", size); }},
        Row{"TextInTable", [](std::size_t size) { return "<table>" + repeated("x<tr>", size); }},
        Row{"Attributes",
            [](std::size_t size) {
                std::string page = "<p";
                for (std::size_t each = 0; each < size; ++each)
                    page += " a" + std::to_string(each) + "=1";
                return page + ">x</p>";
            }},
        Row{"SameAttributes",
            [](std::size_t size) { return "<p" + repeated(" a=1", size) + ">x</p>"; }},
        Row{"Entities", [](std::size_t size) { return description("", repeated("&amp;", size)); }},
        Row{"Comments", [](std::size_t size) { return repeated("<!--", size); }},
        Row{"CommentEnds", [](std::size_t size) { return "<!--" + repeated("--!", size); }},
        Row{"SignatureLines",
            [](std::size_t size) {
                return "<dl class=\"py function\"><dt class=\"sig\" id=\"f\">f</dt>" +
                       repeated("<dt class=\"sig\">g</dt>", size) + "<dd>x</dd></dl>";
            }},
        Row{"Sentences", [](std::size_t size) { return description("", repeated("a. ", size)); }},
        Row{"Pipes", [](std::size_t size) { return description("", repeated("| ", size)); }},
        Row{"Formulas",
            [](std::size_t size) {
                return description("", "<span class=\"math\">" + repeated("\\frac{", size) +
                                           "</span>");
            }},
        Row{"CodeBlocks",
            [](std::size_t size) {
                return description("",
                                   repeated("<div class=\"highlight\"><pre>x</pre></div>", size));
            }},
        Row{"Prompts",
            [](std::size_t size) {
                return description("", "<div class=\"highlight-python\"><div class=\"highlight\">"
                                       "<pre>" + repeated("In [", size) + "</pre></div></div>");
            }},
        Row{"Quotes",
            [](std::size_t size) {
                return description("", "<div class=\"highlight-python\"><div class=\"highlight\">"
                                       "<pre>" + repeated("\"\"\" '", size) +
                                       "</pre></div></div>");
            }},
        Row{"Classes",
            [](std::size_t size) {
                return "<dl class=\"" + repeated("a ", size) + "\"><dt id=\"f\">f</dt></dl>";
            }},
        Row{"SeeAlso",
            [](std::size_t size) {
                return description("", "<div class=\"seealso\">" +
                                           repeated("<a href=\"../../x\">x</a>, ", size) +
                                           "</div>");
            }},
        Row{"VersionBoxes",
            [](std::size_t size) {
                return description(
                    "", repeated("<div class=\"versionadded\"><p>New in 1.0: x</p></div>", size));
            }},
        Row{"Fields",
            [](std::size_t size) {
                return description("", "<dl class=\"field-list\">" +
                                           repeated("<dt>Parameters:</dt><dd>x</dd>", size) +
                                           "</dl>");
            }},
        Row{"HeadingsAndSections",
            [](std::size_t size) { return repeated("<h2>Examples</h2><p>x</p>", size); }}),
    [](const auto& row) { return row.param.name; });

// Whole trees, of an inventory and of one page or none.
struct TreeRow {
    const char* name;
    std::string (*inventory)(std::size_t size);
    std::string (*page)(std::size_t size);
};

void PrintTo(const TreeRow& row, std::ostream* out) {
    *out << row.name;
}

class TreeGrowthTest : public testing::TestWithParam<TreeRow> {};

TEST_P(TreeGrowthTest, IsLinear) {
    EXPECT_TRUE(growsLinearly(
        [](std::size_t size) {
            const tests::TempFolder tree;
            tree.write("objects.inv", inventoryFile(GetParam().inventory(size)));
            tree.write("p.html", GetParam().page(size));
            ImportOptions options;
            options.source = tree.path();
            options.shortName = u"p";
            static_cast<void>(importTree(options));
        },
        {.smallest = 500, .largest = 32'000}));
}

// A line of the inventory for each number below `size`.
std::string numbered(std::size_t size, std::string (*line)(const std::string& number)) {
    std::string lines;
    for (std::size_t each = 0; each < size; ++each)
        lines += line(std::to_string(each)) + "\n";
    return lines;
}

std::string emptyPage(std::size_t) {
    return "<p>x</p>";
}

INSTANTIATE_TEST_SUITE_P(
    Trees, TreeGrowthTest,
    testing::Values(
        TreeRow{"ManyObjectsOnOneSignature",
                [](std::size_t size) {
                    return numbered(size, [](const std::string& number) {
                        return "f" + number + " py:function 1 p.html#f -";
                    });
                },
                [](std::size_t) { return description("()", "x"); }},
        TreeRow{"ManyObjectsOfOneName",
                [](std::size_t size) {
                    return numbered(size, [](const std::string& number) {
                        return "f py:function 1 p.html#f" + number + " -";
                    });
                },
                [](std::size_t size) {
                    return numbered(size, [](const std::string& number) {
                        return "<dl class=\"py function\"><dt class=\"sig\" id=\"f" + number +
                               "\">f(" + number + ")</dt><dd>x</dd></dl>";
                    });
                }},
        TreeRow{"ManyPagesThatAreMissing",
                [](std::size_t size) {
                    return numbered(size, [](const std::string& number) {
                        return "f" + number + " py:function 1 q" + number + ".html#f -";
                    });
                },
                &emptyPage},
        TreeRow{"ManyPropertiesOfOneClass",
                [](std::size_t size) {
                    return "C py:class 1 p.html#C -\n" +
                           numbered(size, [](const std::string& number) {
                               return "C.p" + number + " py:attribute 1 p.html#p" + number + " -";
                           });
                },
                [](std::size_t size) {
                    return "<dl class=\"py class\"><dt class=\"sig\" id=\"C\">C</dt><dd>" +
                           numbered(size,
                                    [](const std::string& number) {
                                        return "<dl class=\"py attribute\"><dt class=\"sig\" "
                                               "id=\"p" +
                                               number + "\">p" + number + "</dt><dd>x</dd></dl>";
                                    }) +
                           "</dd></dl>";
                }},
        TreeRow{"ManyAliasesOfAClassWithManyMembers",
                [](std::size_t size) {
                    return "C py:class 1 p.html#C -\n" +
                           numbered(size,
                                    [](const std::string& number) {
                                        return "C.p" + number + " py:attribute 1 p.html#p" +
                                               number + " -";
                                    }) +
                           numbered(size, [](const std::string& number) {
                               return "A" + number + " py:class -1 p.html#C -";
                           });
                },
                &emptyPage},
        TreeRow{
            "OneNameOfManyParts",
            [](std::size_t size) { return repeated("a.", size) + "b py:function 1 p.html#f -\n"; },
            &emptyPage}),
    [](const auto& row) { return row.param.name; });

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
