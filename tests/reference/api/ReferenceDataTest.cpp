#include <optional>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "reference/api/ReferenceData.hpp"
#include "support/Items.hpp"

namespace reference::api {
namespace VELTRA_TEST_FILE {

using property::HeaderInfo;
using property::RefItem;

static_assert(!std::is_copy_constructible_v<ReferenceData>, "results are copied by name: copy()");
static_assert(!std::is_copy_assignable_v<ReferenceData>, "results are copied by name: copy()");
static_assert(std::is_nothrow_move_constructible_v<ReferenceData>);
static_assert(std::is_nothrow_move_assignable_v<ReferenceData>);

HeaderInfo makeHeader() {
    return {u"en_US/a-rather-long-file-name.json", u"help", u"short", u"Display", u"1.2"};
}

TEST(ReferenceDataTest, DefaultHoldsDefaultHeaderAndItem) {
    const ReferenceData data;
    EXPECT_EQ(data.getHeaderInfo(), HeaderInfo());
    EXPECT_EQ(data.getRefItem(), RefItem());
}

TEST(ReferenceDataTest, HoldsWhatItWasMadeOf) {
    const ReferenceData data(makeHeader(), tests::makeFullItem(u"ref/probe.html"));
    EXPECT_EQ(data.getHeaderInfo(), makeHeader());
    EXPECT_EQ(data.getRefItem(), tests::makeFullItem(u"ref/probe.html"));
}

TEST(ReferenceDataTest, CopyIsEqual) {
    const ReferenceData data(makeHeader(),
                             tests::makeFullItem(u"ref/a-page-with-a-long-name.html"));
    const ReferenceData copy = data.copy();
    EXPECT_EQ(copy.getHeaderInfo(), data.getHeaderInfo());
    EXPECT_EQ(copy.getRefItem(), data.getRefItem());
}

TEST(ReferenceDataTest, LaterChangeOfTheSourceDoesNotShowInTheCopy) {
    ReferenceData data(makeHeader(), tests::makeFullItem(u"ref/probe.html"));
    const ReferenceData copy = data.copy();
    data = ReferenceData();
    EXPECT_EQ(copy.getHeaderInfo(), makeHeader());
    EXPECT_EQ(copy.getRefItem(), tests::makeFullItem(u"ref/probe.html"));
}

TEST(ReferenceDataTest, MovedFromObjectIsDestroyedAndAssignedCleanly) {
    std::optional<ReferenceData> source(std::in_place, makeHeader(),
                                        tests::makeFullItem(u"ref/probe.html"));
    const ReferenceData target = std::move(*source);
    *source = ReferenceData(makeHeader(), RefItem());
    EXPECT_EQ(source->getHeaderInfo(), makeHeader());
    const ReferenceData other = std::move(*source);
    source.reset();
    EXPECT_EQ(target.getRefItem(), tests::makeFullItem(u"ref/probe.html"));
    EXPECT_EQ(other.getHeaderInfo(), makeHeader());
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api
