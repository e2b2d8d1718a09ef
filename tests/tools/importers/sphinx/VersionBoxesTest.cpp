#include <string>

#include <gtest/gtest.h>

#include "sphinx/HtmlDocument.hpp"
#include "sphinx/VersionBoxes.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

VersionBox read(const std::string& html) {
    HtmlArena arena;
    const HtmlDocument document(arena, html);
    const Node box = document.root().findTag("body").firstElement();
    EXPECT_TRUE(isVersionBox(box)) << html;
    return readVersionBox(box);
}

TEST(VersionBoxesTest, GiveVersionAndExplanationInAnyLanguage) {
    const struct {
        const char* text;
        const char* rest;
        const char* version;
        const char* explanation;
    } rows[] = {
        {"New in version 3.2.", "", "3.2", ""},
        {"Added in version 3.13.", "", "3.13", ""},
        {"New in version 1.2.0: ", "Text here.", "1.2.0", "Text here."},
        {"New in version 0.9b1.", "", "0.9b1", ""},
        {"バージョン 3.4 で追加.", "", "3.4", ""},
        {"3.5 版新加入.", "", "3.5", ""},
        {"3.6新版功能.", "", "3.6", ""},
        {"Nouveau dans la version 3.3 : ", "Texte.", "3.3", "Texte."},
        {"New in version NEXT.", "", "", ""},
    };
    for (const auto& row : rows) {
        const VersionBox box =
            read("<div class=\"versionadded\"><p><span class=\"versionmodified\">" +
                 std::string(row.text) + "</span>" + row.rest + "</p></div>");
        EXPECT_EQ(box.change, VersionChange::Added) << row.text;
        EXPECT_EQ(box.version, row.version) << row.text;
        EXPECT_EQ(box.explanation, row.explanation) << row.text;
    }
}

TEST(VersionBoxesTest, TellWhatChanged) {
    EXPECT_EQ(read("<div class=\"versionchanged\"><p>Changed</p></div>").change,
              VersionChange::Changed);
    EXPECT_EQ(read("<div class=\"deprecated\"><p>Deprecated since 2: x</p></div>").explanation,
              "x");
    EXPECT_EQ(read("<div class=\"deprecated-removed\"><p>x</p></div>").change,
              VersionChange::Deprecated);
}

TEST(VersionBoxesTest, SpeakOfTheWholeOrOfAPart) {
    const BoxOwner function{{"open_file"}, {"name", "mode", "seed"}};
    const BoxOwner flag{{"OP_FAST"}, {}};
    const struct {
        const BoxOwner& owner;
        const char* text;
        bool isPart;
    } rows[] = {
        {function, "", false},
        {function, "Use other() instead.", false},
        {function, "Use the mode argument of other() instead.", false},
        {function, "This function is superseded by the mode parameter of other().", false},
        {function, "Calls to this function can be replaced.", false},
        {function, "open_file is deprecated.", false},
        {function, "The lib.open_file() method is deprecated.", false},
        {function, "In favour of other().", false},
        {function, "It will not be removed.", false},
        {function, "collections.other now does the same.", false},
        {function, "Renamed to file_open.", false},
        {function, "The mode parameter is deprecated.", true},
        {function, "The mode parameter.", true},
        {function, "mode is deprecated.", true},
        {function, "name and mode are deprecated in favour of path.", true},
        {function, "In the future, the seed must be a number.", true},
        {function, "The keyword argument order is deprecated.", true},
        {function, "The optional value None is deprecated.", true},
        {function, "Passing None for it will fail.", true},
        {function, "Support for text has been removed.", true},
        {function, "Calling this function with two arguments is deprecated.", true},
        {function, "Parameter x is replaced by y.", true},
        {function, "If mode is not given, a warning is issued.", true},
        {function, "DeprecationWarning is raised if mode is None.", true},
        {function, "It is deprecated to leave the mode out.", true},
        {function, "other_file is deprecated.", true},
        {function, "The SEEK_SET constants.", true},
        {function, "Automatic closing of files.", true},
        {function, "This function.", false},
        {function, "Names of files can only hold letters.", true},
        {function, "It can be replaced.", false},
        {function, "The function should not be called.", false},
        {function, "The system takes care of this automatically.", false},
        {function, "The name won’t be stored.", true},
        {function, "The file won’t be stored.", false},
        {function, "The lib.other module is deprecated.", true},
        {function, "open_file() now needs a name; creating it without one is deprecated.", true},
        {flag, "The option is deprecated.", false},
        {flag, "This flag is not needed any more.", false},
        {flag, "FAST is deprecated.", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(concernsPart(row.text, row.owner), row.isPart) << row.text;
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
