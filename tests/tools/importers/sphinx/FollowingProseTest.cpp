#include <string>

#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/PageReader.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using tests::described;

std::string empty(const std::string& name) {
    return described("py", "function", name, name, "");
}

// What is said of "f", as purpose and description.
std::string said(const std::string& body) {
    HtmlArena arena;
    const auto facts = readPage(arena, body, "m.html", {{0, "f", false}, {1, "g", false}});
    for (const DescriptionFacts& description : facts.descriptions)
        if (description.names.front() == "f")
            return description.purpose + "|" + description.description;
    return "not found";
}

TEST(FollowingProseTest, BelongsToAnEmptyDescription) {
    const struct {
        const char* name;
        std::string html;
        const char* expected;
    } rows[] = {
        {"up to the end",
         "<section><h2>F</h2>" + empty("f") + "<p>Does. So.</p><p>It.</p></section>",
         "Does.|So.\n\nIt."},
        {"up to the next description", empty("f") + "<p>Of f.</p>" + empty("g") + "<p>Of g.</p>",
         "Of f.|"},
        {"up to a heading", empty("f") + "<p>Of f.</p><h3>G</h3><p>Of g.</p>", "Of f.|"},
        {"up to a rubric", empty("f") + "<p>Of f.</p><p class=\"rubric\">G</p><p>Of g.</p>",
         "Of f.|"},
        {"up to a section", empty("f") + "<p>Of f.</p><section><p>Of g.</p></section>", "Of f.|"},
        {"up to a module", empty("f") + "<p>Of f.</p><span id=\"module-m\"></span><p>Of m.</p>",
         "Of f.|"},
        {"past marks", empty("f") + "<span id=\"x\"></span><p>Of f.</p>", "Of f.|"},
        {"in lists and notes", empty("f") + "<ul><li>a</li></ul><p>Of f.</p>", "Of f.|- a"},
        {"shared by neighbours", empty("f") + empty("g") + "<p>Of both.</p>", "Of both.|"},
        {"not beside its own", described("py", "function", "f", "f", "<p>Own.</p>") + "<p>No.</p>",
         "Own.|"},
        {"not that of a full neighbour",
         empty("f") + described("py", "function", "g", "g", "<p>Of g.</p>"), "|"},
        {"not an introduction of the next",
         empty("f") + "<p>Of f.</p><p>There is also:</p>" + empty("g"), "Of f.|"},
        {"not only an introduction of the next",
         empty("f") + "<p>The following is not used.</p>" + empty("g"), "|"},
        {"an introduction of a list", empty("f") + "<p>Either:</p><ul><li>a</li></ul>",
         "Either:|- a"},
        {"not where prose goes first", "<p>Of f.</p>" + empty("f") + "<p>Of g.</p>" + empty("g"),
         "|"},
        {"after an introduction of the section",
         "<p>All.</p>" + empty("f") + "<p>Of f.</p>" + empty("g") + "<p>Of g.</p>", "Of f.|"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(said(row.html), row.expected) << row.name;
}

TEST(FollowingProseTest, TellsVersions) {
    HtmlArena arena;
    const auto facts = readPage(arena,
                                empty("f") +
                                    "<p>Of f.</p><div class=\"versionadded\"><p><span "
                                    "class=\"versionmodified\">New in version 2.</span></p></div>",
                                "m.html", {{0, "f", false}});
    ASSERT_EQ(facts.descriptions.size(), 1u);
    EXPECT_EQ(facts.descriptions.front().introduced, "2");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
