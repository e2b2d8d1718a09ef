// What the library asks of host functions whose answers the embedded host cannot show to be asked
// rightly. This program brings functions of its own, which stand in for the host's: the dynamic
// linker finds them first.
#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fl/i18n/transform.hpp"
#include "foundation/msg_svc/eventmgr/EventMgr.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/cache_manager/ReferenceDataChangeEvent.hpp"
#include "reference/api/comparator/EntityNameMatchComparator.hpp"
#include "refutils/matchUnqualifiedString.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "vvm/Factory.hpp"

namespace {

// A call of matchUnqualifiedString; all of them match.
struct NameTest {
    std::u16string pattern;
    std::size_t components;
    std::u16string candidate;
    bool qualified;

    friend bool operator==(const NameTest&, const NameTest&) = default;
};
void PrintTo(const NameTest& test, std::ostream* out) {
    *out << testing::PrintToString(test.pattern) << " of " << test.components << " in "
         << testing::PrintToString(test.candidate) << (test.qualified ? ", qualified" : "");
}
std::vector<NameTest> nameTests;

// The capacities that transform was called with. Its rule here: 'A' becomes 'a', 'W' becomes "vv",
// '!' cannot be folded.
std::vector<std::size_t> capacities;

std::function<std::shared_ptr<vvm::VVM>(vvm::NoActiveUSMBehavior)> currentVVM;

}  // namespace

[[gnu::visibility("default")]] bool reference::utils::matchUnqualifiedString(
    std::u16string_view pattern, std::size_t patternComponents, std::u16string_view candidate,
    bool qualified) noexcept {
    nameTests.push_back(
        {std::u16string(pattern), patternComponents, std::u16string(candidate), qualified});
    return true;
}

[[gnu::visibility("default")]] std::size_t fl::i18n::detail::transform(char16_t* out,
                                                                       std::size_t capacity,
                                                                       const char16_t* in,
                                                                       std::size_t length,
                                                                       const to_lower& /*rule*/) {
    capacities.push_back(capacity);
    std::u16string result;
    for (const char16_t unit : std::u16string_view(in, length)) {
        if (unit == u'!')
            throw std::invalid_argument("not today");
        if (unit == u'W')
            result += u"vv";
        else
            result += unit == u'A' ? u'a' : unit;
    }
    std::copy_n(result.begin(), std::min(capacity, result.size()), out);
    return result.size();
}

[[gnu::visibility("default")]] std::shared_ptr<vvm::VVM> vvm::Factory::getCurrentLocalVVM(
    NoActiveUSMBehavior behavior) {
    return currentVVM(behavior);
}

namespace reference::tests {
namespace {

using api::EntityCaseSensitivity;
using api::EntityPrecision;
using api::ReferenceDataRetriever;
using api::ReferenceRequest;
using api::comparator::EntityNameMatchComparator;
using cache_manager::ReferenceCacheManager;
using cache_manager::ReferenceDataChangeEvent;
using foundation::msg_svc::eventmgr::ScopedConnection;
using property::RefEntityType;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

// The library over a class with a property, and a topic.
class HostCallsTest : public LibraryTest {
  protected:
    HostCallsTest() {
        currentVVM = [](auto) { return nullptr; };
        add(m_product.record(u"geo.ShApe", RefEntityType::Class, u"ref/ShApe.html")
                .record(u"geo.ShApe.drAw", RefEntityType::Method, u"ref/drAw.html")
                .record(u"topic", RefEntityType::Topic, u"topic.html")
                .item(makeItem(
                    {.href = u"ref/ShApe.html",
                     .entities = {{RefEntityType::Class, u"geo.ShApe",
                                   property::FunctionType::NotCallable}},
                     .classPropertyGroups = {property::ClassPropertyGroup(
                         u"", {property::ClassProperty(u"AreA", u"", u"ref/ShApe.html", {})})}})));
    }

    ProductBuilder m_product{u"p"};

    static ReferenceRequest request(const std::u16string& text, bool caseSensitive, bool exact) {
        ReferenceRequest made(text);
        made.setEntityCaseSensitivity(caseSensitive ? EntityCaseSensitivity::Sensitive
                                                    : EntityCaseSensitivity::Insensitive);
        made.setEntityPrecision(exact ? EntityPrecision::Exact_Match
                                      : EntityPrecision::Ignore_Package);
        return made;
    }

    // The questions that a search of the lookup files asks.
    static std::vector<NameTest> asked(const ReferenceRequest& request,
                                       ReferenceCacheManager::SearchMethod method) {
        nameTests.clear();
        static_cast<void>(ReferenceCacheManager::GetProductsWithEntity(request, method));
        return std::exchange(nameTests, {});
    }

    // Those that a retriever asks about properties; the search before them asks none, as it looks
    // for the very key.
    static std::vector<NameTest> askedOfProperties(const ReferenceDataRetriever& retriever) {
        nameTests.clear();
        EXPECT_EQ(retriever.getReferenceData().size(), 1U);
        return std::exchange(nameTests, {});
    }
};

struct ComponentCase {
    std::u16string text;
    std::size_t components;
};
const std::vector<ComponentCase> componentCases = {
    {u"a.b.c", 3}, {u"a", 1}, {u"", 1}, {u"a..c", 3}, {u".a.", 3}, {u"a/b::c", 1}, {u"a.b", 2}};

// The index proposes only names that end with the text, so each text gets a class of its name.
TEST_F(HostCallsTest, ASearchTellsHowManyComponentsItsTextHas) {
    ProductBuilder named(u"named");
    for (const auto& [text, components] : componentCases)
        named.record(text, RefEntityType::Class, text);
    add(named);
    for (const auto& [text, components] : componentCases)
        for (const auto method :
             {ReferenceCacheManager::ReferenceSearch, ReferenceCacheManager::ClassEntitySearch,
              ReferenceCacheManager::PageNameSearch}) {
            const auto calls = asked(request(text, true, false), method);
            EXPECT_FALSE(calls.empty()) << testing::PrintToString(text);
            EXPECT_THAT(calls, Each(Field(&NameTest::components, components)))
                << testing::PrintToString(text);
            EXPECT_THAT(calls, Each(Field(&NameTest::pattern, text)));
        }
}

TEST_F(HostCallsTest, ASearchFoldsTextAndKeysUnlessCaseCounts) {
    EXPECT_THAT(asked(request(u"drAw", true, false), ReferenceCacheManager::ReferenceSearch),
                ElementsAre(NameTest{u"drAw", 1, u"geo.ShApe.drAw", false}));
    EXPECT_THAT(asked(request(u"topic", true, false), ReferenceCacheManager::ReferenceSearch),
                ElementsAre(NameTest{u"topic", 1, u"topic", true}));
    EXPECT_THAT(asked(request(u"geo.ShApe", false, true), ReferenceCacheManager::ReferenceSearch),
                ElementsAre(NameTest{u"geo.Shape", 2, u"geo.Shape", true}));
    EXPECT_THAT(asked(request(u"drAw.html", false, false), ReferenceCacheManager::PageNameSearch),
                ElementsAre(NameTest{u"draw.html", 2, u"ref/draw.html", false}));
    EXPECT_THAT(asked(request(u"ShApe", true, false), ReferenceCacheManager::ClassEntitySearch),
                ElementsAre(NameTest{u"ShApe", 1, u"geo.ShApe", false},
                            NameTest{u"ShApe", 1, u"geo.ShApe", false}));
}

TEST_F(HostCallsTest, ASearchDoesNotAskOfNamesThatDoNotEndWithItsText) {
    for (const auto* text : {u"drA", u"hApe.drAw", u"geo", u"eo.ShApe", u""})
        for (const auto method :
             {ReferenceCacheManager::ReferenceSearch, ReferenceCacheManager::PageNameSearch})
            EXPECT_THAT(asked(request(text, true, false), method), IsEmpty())
                << testing::PrintToString(std::u16string(text));
}

TEST_F(HostCallsTest, ARetrieverTellsHowManyComponentsItsTextHas) {
    // Properties are asked only of names that end with the text.
    const ReferenceDataRetriever ofClass(request(u"geo.ShApe", true, true));
    EXPECT_THAT(askedOfProperties(ofClass), IsEmpty());

    add(m_product.record(u"geo.ShApe.AreA", RefEntityType::Property, u"ref/ShApe.html"));
    ReferenceCacheManager::ClearAllCaches();
    const NameTest test{u"geo.ShApe.AreA", 3, u"geo.ShApe.AreA", true};
    const ReferenceDataRetriever exact(request(u"geo.ShApe.AreA", true, true));
    EXPECT_THAT(askedOfProperties(exact), ElementsAre(test));

    // A request that a script sets is set up in the same way.
    ReferenceDataRetriever retriever;
    retriever.setReferenceRequestProperty(exact.getReferenceRequestProperty());
    EXPECT_THAT(askedOfProperties(retriever), ElementsAre(test));
}

TEST_F(HostCallsTest, ARetrieverFoldsTextAndPropertiesUnlessCaseCounts) {
    struct PropertyCase {
        std::u16string text;
        std::u16string folded;
        std::size_t components;
    };
    const std::vector<PropertyCase> cases = {{u"AreA", u"area", 1},
                                             {u"ShApe.AreA", u"Shape.area", 2},
                                             {u"geo.ShApe.AreA", u"geo.Shape.area", 3}};
    add(m_product.record(u"geo.ShApe.AreA", RefEntityType::Property, u"ref/ShApe.html"));
    for (const auto& [text, folded, components] : cases)
        for (const bool caseSensitive : {false, true}) {
            ReferenceCacheManager::ClearAllCaches();
            nameTests.clear();
            EXPECT_EQ(ReferenceDataRetriever(request(text, caseSensitive, false))
                          .getReferenceData()
                          .size(),
                      1U);
            ASSERT_FALSE(nameTests.empty());
            EXPECT_EQ(nameTests.back(),
                      (NameTest{caseSensitive ? text : folded, components,
                                caseSensitive ? u"geo.ShApe.AreA" : u"geo.Shape.area", false}));
        }
}

// What a fold of a name asks the host for: here, that of a comparator's own name.
std::vector<std::size_t> capacitiesFor(const std::u16string& name) {
    capacities.clear();
    const EntityNameMatchComparator comparator(name, EntityCaseSensitivity::Insensitive);
    return std::exchange(capacities, {});
}

bool isMatch(const std::u16string& asked, const std::u16string& name) {
    const EntityNameMatchComparator comparator(asked, EntityCaseSensitivity::Insensitive);
    const api::ReferenceData named(
        {}, makeItem(
                {.entities = {{RefEntityType::Class, name, property::FunctionType::NotCallable}}}));
    return comparator(named, api::ReferenceData());
}

TEST_F(HostCallsTest, AFoldTriesItsBufferFirstAndTheReportedLengthOnlyBeyondIt) {
    constexpr std::size_t most = 1024;
    EXPECT_THAT(capacitiesFor(u""), ElementsAre(most));
    EXPECT_THAT(capacitiesFor(std::u16string(1023, u'A')), ElementsAre(most));
    EXPECT_THAT(capacitiesFor(std::u16string(1024, u'A')), ElementsAre(most));
    EXPECT_THAT(capacitiesFor(std::u16string(1025, u'A')), ElementsAre(most, 1025U));
    EXPECT_THAT(capacitiesFor(std::u16string(512, u'W')), ElementsAre(most));
    EXPECT_THAT(capacitiesFor(u"A" + std::u16string(512, u'W')), ElementsAre(most, 1025U));
    EXPECT_THAT(capacitiesFor(u"A!"), ElementsAre(most));
}

TEST_F(HostCallsTest, AFoldIsWholeOnBothSidesOfItsBuffersEnd) {
    for (const std::size_t length : {0U, 1U, 1023U, 1024U, 1025U, 1026U, 5000U}) {
        const std::u16string upper(length, u'A');
        EXPECT_TRUE(isMatch(upper, std::u16string(length, u'a'))) << length;
        EXPECT_TRUE(isMatch(std::u16string(length, u'a'), upper)) << length;
        EXPECT_FALSE(isMatch(upper, std::u16string(length + 1, u'a'))) << length;
        EXPECT_FALSE(isMatch(upper + u"x", std::u16string(length, u'A') + u"y")) << length;
    }
    EXPECT_TRUE(isMatch(std::u16string(512, u'W'), std::u16string(1024, u'v')));
    EXPECT_TRUE(isMatch(std::u16string(1026, u'v'), std::u16string(513, u'W')));
    EXPECT_TRUE(isMatch(u"A!", u"A!"));
    EXPECT_FALSE(isMatch(u"A!", u"a!"));
}

class EventMgrOfTheHostTest : public HostCallsTest {
  protected:
    void subscribe() {
        ReferenceCacheManager::SubscribeToDataChangeEvent(
            m_connection, [this](const ReferenceDataChangeEvent&) { ++m_events; });
    }

    [[nodiscard]] int events() const noexcept { return m_events; }
    [[nodiscard]] bool isSubscribed() const { return static_cast<bool>(m_connection); }

  private:
    ScopedConnection m_connection;
    int m_events = 0;
};

TEST_F(EventMgrOfTheHostTest, IsThatOfTheCurrentVirtualMachineWhichMayBeMissing) {
    std::vector<vvm::NoActiveUSMBehavior> behaviors;
    const auto machine = std::make_shared<vvm::VVM>();
    currentVVM = [&](vvm::NoActiveUSMBehavior behavior) {
        behaviors.push_back(behavior);
        return machine;
    };
    subscribe();
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(events(), 1);
    EXPECT_EQ(static_cast<int>(vvm::ReturnNothing), 0);
    EXPECT_THAT(behaviors, ElementsAre(vvm::ReturnNothing, vvm::ReturnNothing));

    currentVVM = [](auto) { return nullptr; };
    EXPECT_NO_THROW(ReferenceCacheManager::ClearAllCaches());
    EXPECT_EQ(events(), 1);
}

TEST_F(EventMgrOfTheHostTest, IsMissingWhenTheHostThrowsAnything) {
    const std::vector<std::function<std::shared_ptr<vvm::VVM>(vvm::NoActiveUSMBehavior)>> hosts = {
        [](auto) -> std::shared_ptr<vvm::VVM> { throw std::runtime_error("no machine today"); },
        [](auto) -> std::shared_ptr<vvm::VVM> { throw 5; }};
    for (const auto& host : hosts) {
        currentVVM = host;
        EXPECT_NO_THROW(subscribe());
        EXPECT_FALSE(isSubscribed());
        ReferenceCacheManager::PopulateLookupCaches();
        const int before = source().clearCalls();
        EXPECT_NO_THROW(ReferenceCacheManager::ClearAllCaches());
        EXPECT_THAT(*ReferenceCacheManager::GetLookupCache(), IsEmpty());
        EXPECT_EQ(source().clearCalls(), before + 1);
    }
    currentVVM = [](auto) { return nullptr; };
}

}  // namespace
}  // namespace reference::tests
