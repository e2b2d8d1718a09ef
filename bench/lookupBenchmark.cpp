// How long start-up, the retrievers and the orders take over 30,000 entities in 100 products, with
// warm caches. Each benchmark checks its answer before it is timed.

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "ManyEntities.hpp"
#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Comparators.hpp"
#include "support/TempFolder.hpp"

namespace reference::bench {
namespace {

using api::EntityCaseSensitivity;
using api::EntityPrecision;
using api::ReferenceData;
using api::ReferenceRequest;
using api::RefRequestComparator;
using cache_manager::ReferenceCacheManager;

ReferenceRequest loose(std::u16string text) {
    ReferenceRequest request(std::move(text));
    request.setEntityCaseSensitivity(EntityCaseSensitivity::Insensitive);
    request.setEntityPrecision(EntityPrecision::Ignore_Package);
    return request;
}

template <typename Retriever>
void search(benchmark::State& state, const ReferenceRequest& request, std::size_t expected) {
    const Retriever retriever(request);
    const std::size_t found = retriever.getReferenceData().size();
    if (found != expected) {
        const std::string message =
            "found " + std::to_string(found) + ", not " + std::to_string(expected);
        state.SkipWithError(message.c_str());
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(retriever.getReferenceData());
    state.counters["found"] = static_cast<double>(found);
}

// One of each entity: 30,000 results to be ordered.
const std::vector<ReferenceData>& everything() {
    static const std::vector<ReferenceData> results =
        api::AllTextDataRetriever(ReferenceRequest(u"")).getReferenceData();
    return results;
}

// Orders pointers, so that what is timed is the comparator and not the moving of results.
void order(benchmark::State& state, const RefRequestComparator& comparator) {
    std::vector<const ReferenceData*> found;
    for (const auto& result : everything())
        found.push_back(&result);
    const auto byComparator = [&](const ReferenceData* a, const ReferenceData* b) {
        return comparator(*a, *b);
    };
    auto ordered = found;
    std::ranges::stable_sort(ordered, byComparator);
    if (found.size() != entityCount || !std::ranges::is_sorted(ordered, byComparator)) {
        state.SkipWithError("not the 30,000 results, or not in order");
        return;
    }
    for (auto _ : state) {
        state.PauseTiming();
        ordered = found;
        state.ResumeTiming();
        std::ranges::stable_sort(ordered, byComparator);
        benchmark::DoNotOptimize(ordered.data());
    }
}

void registerSearch(const char* name, std::function<void(benchmark::State&)> run) {
    benchmark::RegisterBenchmark(name, std::move(run))->Unit(benchmark::kMillisecond);
}

// Start-up from files on a disk whose contents the system has in memory already.
void startUp(benchmark::State& state) {
    const tests::TempFolder root;
    const std::size_t bytes = publishManyEntities(root.path());
    docparser::DocResourceParser::setSource(std::make_shared<docparser::FileDocSource>(
        [path = root.path()] { return docparser::DocumentationLocation{.docRoot = path}; }));
    const auto clear = [] {
        ReferenceCacheManager::ClearLookupCaches();
        ReferenceCacheManager::ClearResourceCache();
    };
    clear();
    ReferenceCacheManager::PerformStartupOperations();
    if (ReferenceCacheManager::GetLookupCache()->size() != productCount ||
        ReferenceCacheManager::GetResourceCache()->size() != 10)
        state.SkipWithError("not all of it was loaded");
    for (auto _ : state) {
        state.PauseTiming();
        clear();
        state.ResumeTiming();
        ReferenceCacheManager::PerformStartupOperations();
    }
    state.counters["megabytes"] = static_cast<double>(bytes) / 1e6;
    clear();
    docparser::DocResourceParser::setSource(makeManyEntities());
    ReferenceCacheManager::PopulateAllCaches();
}

void registerAll() {
    using namespace api;
    benchmark::RegisterBenchmark("startup/100 products of 300 entities", startUp)
        ->Unit(benchmark::kMillisecond);
    // A single look into each product's map.
    registerSearch("search/entity: exact name", [](benchmark::State& state) {
        search<ReferenceDataRetriever>(state, ReferenceRequest(u"product42.stats.fit7"), 1);
    });
    // A walk over all keys, each of them folded.
    registerSearch("search/entity: any case, no package", [](benchmark::State& state) {
        search<ReferenceDataRetriever>(state, loose(u"FIT7"), productCount);
    });
    registerSearch("search/class: with all properties", [](benchmark::State& state) {
        search<ClassEntityDataRetriever>(state, ReferenceRequest(u"product42.Class3"), 9);
    });
    registerSearch("search/purpose: part of names", [](benchmark::State& state) {
        search<EntityPurposeDataRetriever>(state, loose(u"Limit15"), 200);
    });
    registerSearch("search/page: by file name", [](benchmark::State& state) {
        search<PageNameDataRetriever>(state, loose(u"CLASS3.html"), productCount);
    });
    // Reads every text of every item, folded, and finds nothing: the most expensive search.
    registerSearch("search/text: nowhere, any case", [](benchmark::State& state) {
        search<AllTextDataRetriever>(state, loose(u"no such words"), 0);
    });
    registerSearch("search/text: everywhere, exact case", [](benchmark::State& state) {
        search<AllTextDataRetriever>(state, ReferenceRequest(u""), entityCount);
    });

    // Every comparator that there is, made for what one result has. The compound is the rival of
    // the preferred order: the same order as a chain of functions.
    const auto chained = [](const char* className, const char16_t* product = u"") {
        return tests::ComparatorPair{
            .className = className,
            .object = {},
            .native = tests::makeNatively(className, {.productName = product}),
            .fields = {}};
    };
    const tests::ComparatorFields fields{
        .entityName = u"PRODUCT42.Class3",
        .pageName = u"CLASS3",
        .productName = u"product42",
        .refEntityType = property::RefEntityType::Class,
        .caseSensitivity = EntityCaseSensitivity::Insensitive,
        .comparators = {
            chained("DeprecatedOrderComparator"), chained("ProductMatchComparator", u"veltra"),
            chained("ProductMatchComparator", u"pendrake"), chained("EntityTypeOrderComparator"),
            chained("FunctionTypeOrderComparator")}};
    for (const auto& className : tests::comparatorClassNames())
        benchmark::RegisterBenchmark(("order/" + className).c_str(),
                                     [comparator = tests::makeNatively(className, fields)](
                                         benchmark::State& state) { order(state, comparator); })
            ->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace reference::bench

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    reference::docparser::DocResourceParser::setSource(reference::bench::makeManyEntities());
    reference::cache_manager::ReferenceCacheManager::PopulateAllCaches();
    reference::bench::registerAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
