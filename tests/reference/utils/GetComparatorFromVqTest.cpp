#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/core/except/IMsgIDException.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/comparator/CompoundReferenceComparator.hpp"
#include "reference/api/comparator/DeprecatedOrderComparator.hpp"
#include "reference/api/comparator/EntityDepthOrderComparator.hpp"
#include "reference/api/comparator/EntityMatchComparator.hpp"
#include "reference/api/comparator/EntityNameMatchComparator.hpp"
#include "reference/api/comparator/EntityTypeMatchComparator.hpp"
#include "reference/api/comparator/EntityTypeOrderComparator.hpp"
#include "reference/api/comparator/FunctionTypeOrderComparator.hpp"
#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/comparator/PageNameMatchComparator.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "reference/utils/getComparatorFromVq.hpp"
#include "support/Generator.hpp"
#include "support/HostValues.hpp"
#include "support/Print.hpp"

namespace reference::utils {
namespace {

using namespace api::comparator;
using api::EntityCaseSensitivity;
using api::ReferenceData;
using api::RefRequestComparator;
using property::RefEntityType;
using ::testing::ElementsAre;
using tests::construct;
using tests::Generator;
using tests::members;
using tests::nativeOf;
using tests::objects;

// A comparator twice: as a script sets it up, property by property, and natively.
struct Pair {
    std::string name;
    vqArrayPtr object;
    RefRequestComparator native;
};

template <typename T>
Pair stateless(std::string name) {
    return {std::move(name), construct<T>(), T()};
}

std::vector<Pair> allTwelve(Generator& generator, int depth = 0) {
    const auto name = generator.name();
    const auto type = generator.type();
    const auto fold = static_cast<EntityCaseSensitivity::Value>(generator.below(3));
    const std::u16string page = generator.pick<std::u16string>({u"a", u"Fit", u""});
    const std::u16string folder = generator.pick(tests::productNames);

    Pair entity{"entity", construct<EntityMatchComparator>(),
                EntityMatchComparator(name, type, fold)};
    auto& entityMatch = nativeOf<EntityMatchComparator>(entity.object);
    entityMatch.setEntityNameProperty(&name);
    entityMatch.setRefEntityTypeProperty(members<RefEntityType>({type}).get());
    entityMatch.setEntityCaseSensitivityProperty(members<EntityCaseSensitivity>({fold}).get());

    Pair entityName{"name", construct<EntityNameMatchComparator>(),
                    EntityNameMatchComparator(name, fold)};
    auto& entityNameMatch = nativeOf<EntityNameMatchComparator>(entityName.object);
    entityNameMatch.setEntityCaseSensitivityProperty(members<EntityCaseSensitivity>({fold}).get());
    entityNameMatch.setEntityNameProperty(&name);

    Pair entityType{"type match", construct<EntityTypeMatchComparator>(),
                    EntityTypeMatchComparator(type)};
    nativeOf<EntityTypeMatchComparator>(entityType.object)
        .setRefEntityTypeProperty(members<RefEntityType>({type}).get());

    Pair pageName{"page", construct<PageNameMatchComparator>(),
                  PageNameMatchComparator(page, fold)};
    auto& pageNameMatch = nativeOf<PageNameMatchComparator>(pageName.object);
    pageNameMatch.setPageNameProperty(&page);
    pageNameMatch.setEntityCaseSensitivityProperty(members<EntityCaseSensitivity>({fold}).get());

    Pair product{"product", construct<ProductMatchComparator>(), ProductMatchComparator(folder)};
    nativeOf<ProductMatchComparator>(product.object).setProductNameProperty(&folder);

    std::vector<Pair> all = {
        stateless<DeprecatedOrderComparator>("deprecated"),
        std::move(entity),
        std::move(entityName),
        std::move(entityType),
        stateless<EntityTypeOrderComparator>("type"),
        stateless<FunctionTypeOrderComparator>("function type"),
        stateless<IndexOrderComparator>("index"),
        std::move(pageName),
        stateless<PreferredOrderComparator>("preferred"),
        std::move(product),
        stateless<EntityDepthOrderComparator>("depth"),
    };

    // A compound of some of them; the outer one holds an inner one.
    std::vector<vqArrayPtr> cells;
    std::vector<RefRequestComparator> natives;
    for (int i = 0; i < 3; ++i) {
        const auto& chosen = generator.pick(all);
        cells.push_back(chosen.object);
        natives.push_back(chosen.native);
    }
    if (depth == 0) {
        auto inner = allTwelve(generator, depth + 1);
        cells.insert(cells.begin() + 1, inner.back().object);
        natives.insert(natives.begin() + 1, inner.back().native);
    }
    Pair compound{"compound", construct<CompoundReferenceComparator>(),
                  CompoundReferenceComparator(std::move(natives))};
    nativeOf<CompoundReferenceComparator>(compound.object)
        .setComparatorsProperty(matrix::createCellRow(std::move(cells)).get());
    all.push_back(std::move(compound));
    return all;
}

std::vector<std::string> sorted(const std::vector<ReferenceData>& results,
                                const RefRequestComparator& comparator) {
    std::vector<const ReferenceData*> order;
    for (const auto& result : results)
        order.push_back(&result);
    std::stable_sort(order.begin(), order.end(),
                     [&comparator](const ReferenceData* a, const ReferenceData* b) {
                         return comparator(*a, *b);
                     });
    std::vector<std::string> dumps;
    for (const auto* result : order)
        dumps.push_back(std::to_string(result - results.data()) + " " + tests::dump(*result));
    return dumps;
}

TEST(GetComparatorFromVqTest, OrdersAsTheSameComparatorDoesNatively) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        Generator generator(seed);
        const auto results = generator.results(30);
        const auto all = allTwelve(generator);
        ASSERT_EQ(all.size(), 12U);
        for (const auto& [name, object, native] : all)
            ASSERT_EQ(sorted(results, getComparatorFromVq(object.get())), sorted(results, native))
                << name << ", seed " << seed;
    }
}

TEST(GetComparatorFromVqTest, TakesTheFirstOfSeveral) {
    const std::u16string folders[] = {u"a", u"b"};
    const auto first = construct<ProductMatchComparator>();
    const auto second = construct<ProductMatchComparator>();
    nativeOf<ProductMatchComparator>(first).setProductNameProperty(&folders[0]);
    nativeOf<ProductMatchComparator>(second).setProductNameProperty(&folders[1]);
    const auto comparator = getComparatorFromVq(objects({first, second}).get());
    const ReferenceData a(property::HeaderInfo({}, u"a", {}, {}, {}), {});
    const ReferenceData b(property::HeaderInfo({}, u"b", {}, {}, {}), {});
    EXPECT_TRUE(comparator(a, b));
}

TEST(GetComparatorFromVqTest, HoldsACopyThatSharesTheHostValues) {
    const auto object = construct<EntityTypeMatchComparator>();
    const vqArray* shown = nativeOf<EntityTypeMatchComparator>(object).getRefEntityTypeProperty();
    const auto comparator = getComparatorFromVq(object.get());
    const auto* held = comparator.target<EntityTypeMatchComparator>();
    ASSERT_NE(held, nullptr);
    EXPECT_NE(held, &nativeOf<EntityTypeMatchComparator>(object));
    EXPECT_EQ(held->getRefEntityTypeProperty(), shown);
}

TEST(GetComparatorFromVqTest, OutlivesTheObject) {
    auto object = construct<ProductMatchComparator>();
    const std::u16string folder = u"a";
    nativeOf<ProductMatchComparator>(object).setProductNameProperty(&folder);
    const auto comparator = getComparatorFromVq(object.get());
    object.reset();
    const ReferenceData a(property::HeaderInfo({}, u"a", {}, {}, {}), {});
    EXPECT_TRUE(comparator(a, ReferenceData()));
}

// What the error for a value says of its class.
std::vector<std::string> argumentsFor(const vqArrayPtr& value) {
    try {
        static_cast<void>(getComparatorFromVq(value.get()));
    } catch (const foundation::core::except::IMsgIDException& error) {
        EXPECT_EQ(error.getIdentifier(), "VELTRA:referenceapi:InvalidComparator");
        return error.getArguments();
    }
    return {"nothing was thrown"};
}

TEST(GetComparatorFromVqTest, NamesTheClassOfWhatIsNoComparator) {
    EXPECT_THAT(argumentsFor(construct<api::ReferenceRequest>()),
                ElementsAre("veltra.internal.reference.api.ReferenceRequest"));
    EXPECT_THAT(argumentsFor(members<RefEntityType>({1})),
                ElementsAre(zorb::HostName<RefEntityType>::id().str()));
    EXPECT_THAT(argumentsFor(matrix::createString(u"preferred")), ElementsAre("string"));
    EXPECT_THAT(argumentsFor(matrix::createNumber(1)), ElementsAre("uint32"));
    EXPECT_THAT(argumentsFor(matrix::createCellRow({construct<IndexOrderComparator>()})),
                ElementsAre("cell"));
    EXPECT_THAT(argumentsFor(matrix::createObjectRow({})), ElementsAre("object"));
    EXPECT_THAT(argumentsFor(matrix::createObjectRow({nullptr})), ElementsAre("object"));
    EXPECT_THAT(argumentsFor(nullptr), ElementsAre("null"));
}

}  // namespace
}  // namespace reference::utils
