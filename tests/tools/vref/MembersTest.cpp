#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fl/i18n/utf.hpp"
#include "property/RefEntityType.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "vref/Members.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MembersTest : public tests::LibraryTest {
  protected:
    // "Group: name (purpose)" for each member of the entity with this name.
    static std::vector<std::string> members(const std::u16string& name) {
        const auto found =
            api::ReferenceDataRetriever(api::ReferenceRequest(name)).getReferenceData();
        if (found.size() != 1) {
            ADD_FAILURE() << found.size() << " results";
            return {};
        }
        std::vector<std::string> result;
        for (const MemberGroup& group : membersOf(found.front()))
            for (const Member& member : group.members)
                result.push_back(group.title + ": " + fl::i18n::toUtf8(member.name) + " (" +
                                 fl::i18n::toUtf8(member.purpose) + ")");
        return result;
    }
};

TEST_F(MembersTest, AreTheEntitiesDirectlyWithinTheClassInItsProduct) {
    tests::ProductBuilder product(u"p");
    product.classWith(u"m.C", u"m", u"C.html", {{u"Attributes", {u"a"}}})
        .entity(u"m.C.run", RefEntityType::Method, u"C.html#run", u"Runs.")
        .entity(u"m.C.go", RefEntityType::Method, u"C.html#go", u"Goes.")
        .entity(u"m.C.C", RefEntityType::Constructor, u"C.html#C", u"Makes one.")
        .entity(u"m.C.rang", RefEntityType::Event, u"C.html#rang", u"Rang.")
        .entity(u"m.C.odd", RefEntityType::Term, u"C.html#odd", u"Is odd.")
        .entity(u"m.C.Inner", RefEntityType::Class, u"Inner.html", u"Within.")
        .entity(u"m.C.Inner.deep", RefEntityType::Method, u"Inner.html#deep", u"Deep.")
        .entity(u"m.CC.other", RefEntityType::Method, u"CC.html#other", u"Other.")
        .entity(u"m.f", RefEntityType::Function, u"f.html", u"No class.");
    add(product);
    tests::ProductBuilder other(u"q");
    other.entity(u"m.C.alien", RefEntityType::Method, u"C.html#alien", u"Elsewhere.");
    add(other);
    EXPECT_THAT(members(u"m.C"),
                ElementsAre("Classes: Inner (Within.)", "Methods: go (Goes.)",
                            "Methods: run (Runs.)", "Events: rang (Rang.)",
                            "Constructors: C (Makes one.)", "Members: odd (Is odd.)"));
    EXPECT_THAT(members(u"m.C.Inner"), ElementsAre("Methods: deep (Deep.)"));
    EXPECT_THAT(members(u"m.f"), IsEmpty());
    EXPECT_THAT(members(u"m.C.run"), IsEmpty());
}

TEST_F(MembersTest, OfAPackageAreWhatItsNameStandsDirectlyBefore) {
    tests::ProductBuilder product(u"p");
    product.entity(u"m", RefEntityType::Package, u"m.html", u"All of it.")
        .entity(u"m.f", RefEntityType::Function, u"f.html", u"Does f.")
        .entity(u"m.e", RefEntityType::Function, u"e.html", u"Does e.")
        .entity(u"m.sub", RefEntityType::Package, u"sub.html", u"A part.")
        .entity(u"m.sub.g", RefEntityType::Function, u"g.html", u"Does g.")
        .entity(u"m.pi", RefEntityType::Variable, u"pi.html", u"A number.")
        .classWith(u"m.C", u"m", u"C.html", {{u"Attributes", {u"a"}}})
        .entity(u"m.C.run", RefEntityType::Method, u"C.html#run", u"Runs.")
        .entity(u"mm.other", RefEntityType::Function, u"mm.html", u"Other.");
    add(product);
    EXPECT_THAT(members(u"m"), ElementsAre("Functions: e (Does e.)", "Functions: f (Does f.)",
                                           "Classes: C (The class m.C)", "Packages: sub (A part.)",
                                           "Variables: pi (A number.)"));
    EXPECT_THAT(members(u"m.sub"), ElementsAre("Functions: g (Does g.)"));
}

TEST_F(MembersTest, SayWhetherTheyAreStillToBeUsed) {
    tests::ProductBuilder product(u"p");
    product.entity(u"C", RefEntityType::Class, u"C.html")
        .record(u"C.old", RefEntityType::Method, u"old.html")
        .item(tests::makeItem({.href = u"old.html",
                               .entities = {property::RefEntity(RefEntityType::Method, u"C.old",
                                                                property::FunctionType::Method)},
                               .deprecationStatus = property::DeprecationStatus::Deprecated}));
    add(product);
    const auto found = api::ReferenceDataRetriever(api::ReferenceRequest(u"C")).getReferenceData();
    ASSERT_EQ(found.size(), 1u);
    const auto groups = membersOf(found.front());
    ASSERT_EQ(groups.size(), 1u);
    EXPECT_EQ(groups[0].members.at(0).status, property::DeprecationStatus::Deprecated);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
