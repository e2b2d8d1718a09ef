#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fl/i18n/utf.hpp"
#include "property/RefEntityType.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "support/LibraryTest.hpp"
#include "vref/ClassMembers.hpp"

namespace reference::tools {
namespace {

using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ClassMembersTest : public tests::LibraryTest {
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
        for (const ClassMemberGroup& group : membersOf(found.front()))
            for (const ClassMember& member : group.members)
                result.push_back(group.title + ": " + fl::i18n::toUtf8(member.name) + " (" +
                                 fl::i18n::toUtf8(member.purpose) + ")");
        return result;
    }
};

TEST_F(ClassMembersTest, AreTheEntitiesDirectlyWithinTheClassInItsProduct) {
    tests::ProductBuilder product(u"p");
    product.classWith(u"m.C", u"m", u"C.html", {{u"Attributes", {u"a"}}})
        .entity(u"m.C.run", RefEntityType::Method, u"C.html#run", u"Runs.")
        .entity(u"m.C.go", RefEntityType::Method, u"C.html#go", u"Goes.")
        .entity(u"m.C.C", RefEntityType::Constructor, u"C.html#C", u"Makes one.")
        .entity(u"m.C.odd", RefEntityType::Term, u"C.html#odd", u"Is odd.")
        .entity(u"m.C.Inner", RefEntityType::Class, u"Inner.html", u"Within.")
        .entity(u"m.C.Inner.deep", RefEntityType::Method, u"Inner.html#deep", u"Deep.")
        .entity(u"m.CC.other", RefEntityType::Method, u"CC.html#other", u"Other.")
        .entity(u"m.f", RefEntityType::Function, u"f.html", u"No class.");
    add(product);
    tests::ProductBuilder other(u"q");
    other.entity(u"m.C.alien", RefEntityType::Method, u"C.html#alien", u"Elsewhere.");
    add(other);
    EXPECT_THAT(members(u"m.C"), ElementsAre("Constructors: C (Makes one.)", "Methods: go (Goes.)",
                                             "Methods: run (Runs.)", "Classes: Inner (Within.)",
                                             "Members: odd (Is odd.)"));
    EXPECT_THAT(members(u"m.C.Inner"), ElementsAre("Methods: deep (Deep.)"));
    EXPECT_THAT(members(u"m.f"), IsEmpty());
    EXPECT_THAT(members(u"m.C.run"), IsEmpty());
}

}  // namespace
}  // namespace reference::tools
