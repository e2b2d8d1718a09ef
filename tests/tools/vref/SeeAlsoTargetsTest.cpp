#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "property/RefEntityType.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "vref/SeeAlsoTargets.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using property::SeeAlso;
using ::testing::ElementsAre;

class SeeAlsoTargetsTest : public tests::LibraryTest {
  protected:
    SeeAlsoTargetsTest() {
        tests::ProductBuilder product(u"p");
        product.entity(u"m.f", RefEntityType::Function, u"f.html", u"Does f.")
            .entity(u"m.g", RefEntityType::Function, u"both.html", u"Does g.")
            .entity(u"m.h", RefEntityType::Function, u"both.html", u"Does h.");
        add(product);
        tests::ProductBuilder other(u"q");
        other.entity(u"far", RefEntityType::Function, u"ref/far.html", u"Is far.")
            .entity(u"near", RefEntityType::Function, u"ref/near.html", u"Is elsewhere.");
        add(other);
    }

    // The purposes of what an item of "p" with these entries points at.
    static std::vector<std::u16string> purposes(std::vector<SeeAlso> entries) {
        // What the caches hold is loaded by the first search.
        static_cast<void>(
            api::ReferenceDataRetriever(api::ReferenceRequest(u"m.f")).getReferenceData());
        const api::ReferenceData result(
            property::HeaderInfo(u"file", u"p", u"p", u"", u""),
            tests::makeItem({.href = u"x.html", .seeAlso = std::move(entries)}));
        std::vector<std::u16string> found;
        for (const SeeAlsoTarget& target : seeAlsoTargets(result))
            found.push_back(target.purpose);
        return found;
    }
};

TEST_F(SeeAlsoTargetsTest, AreFoundByPageElseByName) {
    EXPECT_THAT(purposes({SeeAlso(u"f.html", u"another word"), SeeAlso(u"", u"m.f"),
                          SeeAlso(u"gone.html", u"m.f – with a remark")}),
                ElementsAre(u"Does f.", u"Does f.", u"Does f."));
}

TEST_F(SeeAlsoTargetsTest, OnAPageOfSeveralTheNameDecides) {
    EXPECT_THAT(purposes({SeeAlso(u"both.html", u"h"), SeeAlso(u"both.html", u"m.g"),
                          SeeAlso(u"both.html", u"both")}),
                ElementsAre(u"Does h.", u"Does g.", u""));
}

TEST_F(SeeAlsoTargetsTest, MayBeAnotherProducts) {
    EXPECT_THAT(purposes({SeeAlso(u"../q/ref/far.html", u"far"),
                          SeeAlso(u"../unknown/ref/far.html", u"far"), SeeAlso(u"", u"near"),
                          SeeAlso(u"../../q/ref/far.html", u"far")}),
                ElementsAre(u"Is far.", u"", u"", u""));
}

TEST_F(SeeAlsoTargetsTest, ThatAreNotDocumentedAreUnknown) {
    EXPECT_THAT(purposes({SeeAlso(u"", u"nowhere"), SeeAlso(u"gone.html", u""), SeeAlso(u"", u"")}),
                ElementsAre(u"", u"", u""));
}

TEST(SeeAlsoNameTest, EndsBeforeTheRemark) {
    EXPECT_EQ(nameOf(SeeAlso(u"", u"f – does it, too")), u"f");
    EXPECT_EQ(nameOf(SeeAlso(u"", u"a - b")), u"a - b");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
