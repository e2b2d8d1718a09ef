#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "reference/api/comparator/PageNameMatchComparator.hpp"
#include "support/Items.hpp"

namespace reference::api::comparator {
namespace VELTRA_TEST_FILE {

using enum EntityCaseSensitivity::Value;

bool matches(const PageNameMatchComparator& comparator, std::u16string href) {
    const ReferenceData data(property::HeaderInfo(), tests::makeItem({.href = std::move(href)}));
    const ReferenceData nothing(property::HeaderInfo(), tests::makeItem({.href = u"no such page"}));
    EXPECT_FALSE(comparator(nothing, data));
    return comparator(data, nothing);
}

TEST(PageNameMatchComparatorTest, ComparesTheFileNameWithItsEnding) {
    const PageNameMatchComparator comparator(u"plot", Sensitive);
    EXPECT_TRUE(matches(comparator, u"ref/plot.html"));
    EXPECT_TRUE(matches(comparator, u"plot.html"));
    EXPECT_TRUE(matches(comparator, u"/plot.html"));
    EXPECT_TRUE(matches(comparator, u"a/b/plot.html"));
    EXPECT_FALSE(matches(comparator, u"ref/plot.html#top"));
    EXPECT_FALSE(matches(comparator, u"ref/plot.html?x"));
    EXPECT_FALSE(matches(comparator, u"ref/plot.htm"));
    EXPECT_FALSE(matches(comparator, u"ref/PLOT.HTML"));
    EXPECT_FALSE(matches(comparator, u"plot.html/"));
}

TEST(PageNameMatchComparatorTest, FoldsAsciiFileNames) {
    const PageNameMatchComparator comparator(u"Plot", Insensitive);
    EXPECT_TRUE(matches(comparator, u"ref/PLOT.HTML"));
    EXPECT_TRUE(matches(comparator, u"ref/plot.html"));
    EXPECT_FALSE(matches(comparator, u"ref/plot.html#top"));
}

TEST(PageNameMatchComparatorTest, DefaultHasDerivedNothingUntilAPropertyIsSet) {
    PageNameMatchComparator comparator;
    EXPECT_TRUE(matches(comparator, u"ref/"));
    EXPECT_TRUE(matches(comparator, u""));
    EXPECT_FALSE(matches(comparator, u".html"));
    EXPECT_FALSE(matches(comparator, u"ref/plot.html"));

    PageNameMatchComparator named = comparator;
    const std::u16string empty;
    named.setPageNameProperty(&empty);
    EXPECT_TRUE(matches(named, u"ref/.html"));
    EXPECT_FALSE(matches(named, u"ref/"));

    comparator.setEntityCaseSensitivity(Sensitive);
    EXPECT_TRUE(matches(comparator, u".html"));
    EXPECT_FALSE(matches(comparator, u""));
}

TEST(PageNameMatchComparatorTest, NullChangesNothingNotEvenWhatWasNotDerived) {
    PageNameMatchComparator comparator;
    comparator.setPageNameProperty(nullptr);
    EXPECT_TRUE(matches(comparator, u"ref/"));
}

TEST(PageNameMatchComparatorTest, PageAndFileNameAreFoldedByDifferentRules) {
    // The page name's capital is folded by the full rule; the file name holds a letter beyond ASCII
    // and is compared as it stands.
    const PageNameMatchComparator comparator(u"\u00C4rger", Insensitive);
    EXPECT_TRUE(matches(comparator, u"\u00E4rger.html"));
    EXPECT_FALSE(matches(comparator, u"\u00C4rger.html"));
    EXPECT_FALSE(matches(comparator, u"\u00E4RGER.html"));
}

TEST(PageNameMatchComparatorTest, TheEndingIsAppendedAfterTheFold) {
    // A sigma at the end of a word has a form of its own; before ".html" it would not be at the
    // end.
    const PageNameMatchComparator comparator(u"\u0391\u03A3", Insensitive);
    EXPECT_TRUE(matches(comparator, u"ref/\u03B1\u03C2.html"));
    EXPECT_FALSE(matches(comparator, u"ref/\u03B1\u03C3.html"));
}

TEST(PageNameMatchComparatorTest, FileNamesAreFoldedFromAToZAndUpTo127) {
    const PageNameMatchComparator letters(u"@AZ[\x7F", Insensitive);
    EXPECT_TRUE(matches(letters, u"@AZ[\x7F.html"));
    EXPECT_TRUE(matches(letters, u"@az[\x7F.HTML"));
    EXPECT_FALSE(matches(letters, u"`az[\x7F.html"));
    EXPECT_FALSE(matches(letters, u"@az{\x7F.html"));
    EXPECT_FALSE(matches(PageNameMatchComparator(u"`{", Insensitive), u"@[.html"));
    // The next unit is beyond ASCII: the name is compared as it stands.
    const PageNameMatchComparator beyond(u"az\u0080", Insensitive);
    EXPECT_TRUE(matches(beyond, u"az\u0080.html"));
    EXPECT_FALSE(matches(beyond, u"AZ\u0080.html"));
}

TEST(PageNameMatchComparatorTest, LongFileNamesAreCutByTheFold) {
    // "xx…x.html" in exactly 1,024 units, as the page name that is compared.
    const std::u16string page(1019, u'x');
    const std::u16string file = page + u".html";
    const PageNameMatchComparator insensitive(page, Insensitive);
    EXPECT_TRUE(matches(insensitive, file));
    EXPECT_TRUE(matches(insensitive, file + u"-and-what-comes-after"));
    EXPECT_FALSE(matches(PageNameMatchComparator(page, Sensitive), file + u"-and-more"));
    // Beyond the cut a letter outside ASCII is not seen.
    EXPECT_TRUE(matches(insensitive, file + u"\u00E4"));
    // Before it, the name is compared whole.
    const std::u16string odd = u"\u00E4" + std::u16string(1018, u'x');
    const PageNameMatchComparator oddPage(odd, Insensitive);
    EXPECT_TRUE(matches(oddPage, odd + u".html"));
    EXPECT_FALSE(matches(oddPage, odd + u".html-and-more"));
    // A page name of more than 1,024 units matches no ASCII file name.
    const std::u16string longer(2000, u'x');
    EXPECT_FALSE(matches(PageNameMatchComparator(longer, Insensitive), longer + u".html"));
}

TEST(PageNameMatchComparatorTest, SettersDeriveAgain) {
    PageNameMatchComparator comparator(u"Plot", Sensitive);
    comparator.setEntityCaseSensitivity(Insensitive);
    EXPECT_TRUE(matches(comparator, u"PLOT.html"));
    const std::u16string other = u"Draw";
    comparator.setPageNameProperty(&other);
    EXPECT_EQ(*comparator.getPageNameProperty(), u"Draw");
    EXPECT_TRUE(matches(comparator, u"draw.html"));
    comparator.setPageNameProperty(comparator.getPageNameProperty());
    EXPECT_TRUE(matches(comparator, u"draw.html"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api::comparator
