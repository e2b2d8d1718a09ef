// What the shells make of a tab.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "RunningShell.hpp"
#include "docset/publish.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using testing::HasSubstr;
using testing::Not;

// Names that mean something to a shell are documented, too.
void publishOddNames(const TempFolder& root) {
    docset::publishProduct(
        root.path(), "en_US",
        ProductBuilder(u"odd")
            .entity(u"odd.start", RefEntityType::Function, u"start.html", u"Starts.")
            .entity(u"odd.pay$me", RefEntityType::Function, u"pay.html", u"Pays.")
            .entity(u"odd.go there", RefEntityType::Function, u"go.html", u"Goes there.")
            .entity(u"odd.it's", RefEntityType::Function, u"it.html", u"It is.")
            .entity(u"odd.`run`", RefEntityType::Function, u"run.html", u"Runs.")
            .entity(u"odd.inner.deep.Thing", RefEntityType::Class, u"thing.html", u"A thing.")
            .build());
}

class ShellCompletionTest : public testing::TestWithParam<Shell> {
  protected:
    ShellCompletionTest() { publishOddNames(m_root); }

    [[nodiscard]] std::string root() const { return m_root.path().string(); }

    // What this shell makes of a line, where shells differ.
    static std::string ofShells(const char* bash, const char* zsh, const char* fish) {
        return GetParam() == Shell::Bash ? bash : GetParam() == Shell::Zsh ? zsh : fish;
    }

  private:
    TempFolder m_root;
};

INSTANTIATE_TEST_SUITE_P(Shells, ShellCompletionTest,
                         testing::Values(Shell::Bash, Shell::Zsh, Shell::Fish),
                         [](const auto& shell) { return nameOf(shell.param); });

TEST_P(ShellCompletionTest, FinishesTheWordAtTheCursor) {
    RunningShell shell(GetParam(), root());
    const struct {
        std::string typed;
        std::string line;
    } rows[] = {
        {"vref sho", "vref show "},
        {"vref import sph", "vref import sphinx "},
        {"vref help impo", "vref help import "},
        {"vref show --nt", "vref show --nth "},
        {"vref --expl", "vref --explain "},
        {"vref find --product od", "vref find --product odd "},
        {"vref find --product=od", "vref find --product=odd "},
        {"vref find --type ope", "vref find --type operator "},
        {"vref find --search pur", "vref find --search purpose "},
        {"vref find --order index,prod", "vref find --order index,product="},
        {"vref products --language en", "vref products --language en_US "},
        {"vref start type:ope", "vref start type:operator "},
        {"vref start type:class,ope", "vref start type:class,operator "},
        {"vref start product:od", "vref start product:odd "},
        {"vref start in:pur", "vref start in:purpose "},
        {"vref start is:curr", "vref start is:current "},
        {"vref odd.sta", "vref odd.start "},
        {"vref find odd.sta", "vref find odd.start "},
        {"vref show odd.inn", "vref show odd.inner."},
        {"vref complete odd.sta", "vref complete odd.start "},
        {"vref odd.pa", "vref odd.pay\\$me "},
        {"vref odd.go", "vref odd.go\\ there "},
        {"vref odd.it", ofShells("vref odd.it\\'s ", "vref odd.it\\'s ", "vref odd.it\\'s ")},
        {"vref \"odd.go", "vref \"odd.go there\" "},
        {"vref 'odd.pa", "vref 'odd.pay$me' "},
        {"vref \"odd.pa", "vref \"odd.pay\\$me\" "},
        {"vref 'odd.start odd.pa", "vref 'odd.start odd.pay$me' "},
        {"vref nothing.is.so.cal", "vref nothing.is.so.cal"},
        {"vref find --limit 1", "vref find --limit 1"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shell.lineAfter(row.typed + "\t"), row.line) << row.typed;
    EXPECT_THAT(shell.written(), Not(HasSubstr("vref:")));
}

TEST_P(ShellCompletionTest, CompletesFoldersWhereThatIsWhatAnOptionTakes) {
    RunningShell shell(GetParam(), root());
    shell.makeFolder("some folder/within");
    EXPECT_EQ(shell.lineAfter("vref validate som\t"), "vref validate some\\ folder/");
    EXPECT_EQ(shell.lineAfter("vref find --doc-root som\t"), "vref find --doc-root some\\ folder/");
    EXPECT_EQ(shell.lineAfter("vref find --doc-root=som\t"), "vref find --doc-root=some\\ folder/");
}

TEST_P(ShellCompletionTest, TakesTheDocumentationThatTheLineNames) {
    RunningShell shell(GetParam(), "/nowhere");
    EXPECT_EQ(shell.lineAfter("vref --doc-root " + root() + " odd.sta\t"),
              "vref --doc-root " + root() + " odd.start ");
}

TEST_P(ShellCompletionTest, CompletesCommandsAndOptionsWithoutDocumentation) {
    RunningShell shell(GetParam(), "/nowhere");
    EXPECT_EQ(shell.lineAfter("vref sho\t"), "vref show ");
    EXPECT_EQ(shell.lineAfter("vref show --nt\t"), "vref show --nth ");
    EXPECT_EQ(shell.lineAfter("vref odd.sta\t"), "vref odd.sta");
    EXPECT_EQ(shell.lineAfter("vref find --product od\t"), "vref find --product od");
    EXPECT_THAT(shell.written(), Not(HasSubstr("/nowhere")));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
