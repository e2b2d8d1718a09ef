// `--search page`: a person names a page and gets its entries.
#include <string>
#include <vector>

#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTool.hpp"
#include "docset/publish.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PageSearchTest : public ::testing::Test {
  protected:
    PageSearchTest() {
        docset::publishProduct(
            root(), "en_US",
            ProductBuilder(u"py")
                .entity(u"os.chdir", RefEntityType::Function, u"library/os.html#os.chdir")
                .entity(u"os.getcwd", RefEntityType::Function, u"library/os.html#os.getcwd")
                .entity(u"os.environ", RefEntityType::Variable, u"library/os.html#os.environ")
                .entity(u"os.path", RefEntityType::Package, u"library/os.path.html")
                .entity(u"tutorial", RefEntityType::Topic, u"tutorial/index.html#t")
                .classWith(u"io.File", u"io", u"library/io.html#io.File", {{u"", {u"name"}}})
                .build());
        docset::publishProduct(
            root(), "en_US",
            ProductBuilder(u"c").entity(u"getcwd", RefEntityType::Function, u"os.html#c").build());
    }

    [[nodiscard]] std::vector<std::string> find(const std::string& page,
                                                std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"find", "--search", "page", "--json", "--order", "index",
                                         "--doc-root", root(), page});
        std::vector<std::string> names;
        for (const auto& element : runTool(options).json())
            names.emplace_back(element.at("entities").as_array().at(0).at("name").as_string());
        return names;
    }
    [[nodiscard]] std::string root() const { return m_folder.path() / "set"; }

    TempFolder m_folder;
};

TEST_F(PageSearchTest, AWholeNameFindsTheEntriesOfThePage) {
    for (const char* const page : {"library/os.html", "library/os", "py/library/os.html"})
        EXPECT_THAT(find(page), ElementsAre("os.chdir", "os.environ", "os.getcwd")) << page;
    EXPECT_THAT(find("library/os.path.html"), ElementsAre("os.path"));
    EXPECT_THAT(find("tutorial"), ElementsAre("tutorial"));
    EXPECT_THAT(find("tutorial/"), ElementsAre("tutorial"));
}

TEST_F(PageSearchTest, AClassComesWithoutItsProperties) {
    EXPECT_THAT(find("library/io.html"), ElementsAre("io.File"));
}

TEST_F(PageSearchTest, TheEndOfANameFindsThePagesThatEndSoWhereNoWholeNameDoes) {
    EXPECT_THAT(find("os.path"), ElementsAre("os.path"));
    EXPECT_THAT(find("io.html"), ElementsAre("io.File"));
    EXPECT_THAT(find("io"), ElementsAre("io.File"));
    EXPECT_THAT(find("os.html"), ElementsAre("getcwd"));
    EXPECT_THAT(find("os.html", {"--product", "py"}),
                ElementsAre("os.chdir", "os.environ", "os.getcwd"));
    EXPECT_THAT(find("os", {"--product", "py"}),
                ElementsAre("os.chdir", "os.environ", "os.getcwd"));
    EXPECT_THAT(find("s.html"), IsEmpty());
    EXPECT_THAT(find("rary/os.html"), IsEmpty());
}

TEST_F(PageSearchTest, AFragmentNamesOneEntry) {
    EXPECT_THAT(find("library/os.html#os.getcwd"), ElementsAre("os.getcwd"));
    EXPECT_THAT(find("os.html#os.getcwd"), ElementsAre("os.getcwd"));
    EXPECT_THAT(find("library/os.html#os"), IsEmpty());
}

TEST_F(PageSearchTest, TypesProductsAndCaseCount) {
    EXPECT_THAT(find("library/os.html", {"--type", "variable"}), ElementsAre("os.environ"));
    EXPECT_THAT(find("library/os.html", {"--product", "c"}), IsEmpty());
    EXPECT_THAT(find("LIBRARY/OS"), IsEmpty());
    EXPECT_THAT(find("LIBRARY/OS", {"-i"}), ElementsAre("os.chdir", "os.environ", "os.getcwd"));
}

TEST_F(PageSearchTest, WhatTheLibraryFindsIsFoundStill) {
    EXPECT_THAT(find("getcwd", {"--ignore-package"}), ElementsAre("os.getcwd"));
    EXPECT_THAT(find("os.html", {"--ignore-package", "--product", "py"}),
                ElementsAre("os.chdir", "os.environ", "os.getcwd"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
