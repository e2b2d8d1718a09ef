#include "measure/orders.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "engines/LibraryEngine.hpp"
#include "engines/Sqlite.hpp"
#include "measure/Clock.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"

namespace reference::bench {
namespace {

using api::ReferenceData;

constexpr std::size_t resultCount = 30'000;
constexpr std::size_t keyCount = 5;

// The keys of the preferred order as numbers, the smaller first, and the place before the sort.
struct Row {
    std::array<std::int64_t, keyCount> keys;
    std::size_t place;
};

Row rowOf(const ReferenceData& result, std::size_t place) {
    const auto& entities = result.getRefItem().getRefEntities();
    const auto smallest = [&](auto keyOf) {
        // After everything that has an entity.
        std::int64_t key = std::int64_t{1} << 40U;
        for (const auto& entity : entities)
            key = std::min<std::int64_t>(key, static_cast<std::int32_t>(keyOf(entity)));
        return key;
    };
    const std::u16string& folder = result.getHeaderInfo().getHelpFolder();
    return {.keys = {static_cast<std::int32_t>(result.getRefItem().getDeprecationStatus()),
                     folder == u"veltra" ? 0 : 1, folder == u"pendrake" ? 0 : 1,
                     smallest([](const auto& entity) { return entity.getRefEntityType(); }),
                     smallest([](const auto& entity) { return entity.getFunctionType(); })},
            .place = place};
}

SqliteDatabase tableOf(const std::vector<Row>& rows) {
    SqliteDatabase database = SqliteDatabase::create(":memory:");
    database.execute(
        "CREATE TABLE result(place INTEGER PRIMARY KEY, a INTEGER, b INTEGER, c INTEGER, "
        "d INTEGER, e INTEGER); BEGIN");
    auto insert = database.prepare("INSERT INTO result VALUES(?, ?, ?, ?, ?, ?)");
    for (const Row& row : rows) {
        insert.bind(1, static_cast<std::int64_t>(row.place));
        for (std::size_t key = 0; key < keyCount; ++key)
            insert.bind(static_cast<int>(key) + 2, row.keys[key]);
        insert.run();
    }
    database.execute("COMMIT; ANALYZE");
    return database;
}

using Places = std::vector<std::size_t>;

Places placesOf(const std::vector<Row>& rows) {
    Places places;
    places.reserve(rows.size());
    for (const Row& row : rows)
        places.push_back(row.place);
    return places;
}

// The median of some runs, each of which must give the same places. What `prepare` does is not
// timed.
double timeOf(const std::function<void()>& prepare, const std::function<Places()>& order,
              const Places& expected) {
    std::vector<double> figures;
    for (int n = 0; n < 11; ++n) {
        prepare();
        const double begin = processorSeconds();
        const Places places = order();
        figures.push_back(processorSeconds() - begin);
        if (places != expected)
            throw std::runtime_error("The orders differ.");
    }
    std::ranges::sort(figures);
    return figures[figures.size() / 2];
}

// The median time of an answer of these products in an order.
double timeOf(const std::vector<std::u16string>& products, const api::RefRequestComparator& order) {
    api::ReferenceRequest request(u"", {}, products);
    request.setRefRequestComparator(order);
    const api::AllTextDataRetriever retriever(request);
    std::vector<double> figures;
    for (int n = 0; n < 11; ++n) {
        const double begin = processorSeconds();
        const auto results = retriever.getReferenceData();
        figures.push_back(processorSeconds() - begin);
        if (results.size() < resultCount)
            throw std::runtime_error("There are too few results to order.");
    }
    std::ranges::sort(figures);
    return figures[figures.size() / 2];
}

// Products that have the wanted number of items, and few more.
std::vector<std::u16string> productsWithResults() {
    std::vector<std::u16string> products;
    std::size_t items = 0;
    for (const auto& [name, resource] : *cache_manager::ReferenceCacheManager::GetResourceCache()) {
        if (items >= resultCount)
            break;
        products.push_back(name);
        for (const auto& page : resource->getItems())
            items += page.second.size();
    }
    return products;
}

}  // namespace

boost::json::object measureOrders(const std::filesystem::path& set, std::ostream& out) {
    loadLibrary(set);
    const auto products = productsWithResults();
    const double asFound = timeOf(products, api::comparator::IndexOrderComparator());
    const double preferred = timeOf(products, api::comparator::PreferredOrderComparator());

    std::vector<Row> rows;
    rows.reserve(resultCount);
    const auto results =
        api::AllTextDataRetriever(api::ReferenceRequest(u"", {}, products)).getReferenceData();
    for (const ReferenceData& result : results)
        rows.push_back(rowOf(result, rows.size()));
    std::vector<Row> sorted;
    const auto sortRows = [&] {
        std::ranges::stable_sort(sorted, {}, &Row::keys);
        return placesOf(sorted);
    };
    sorted = rows;
    const Places expected = sortRows();
    const double readyKeys = timeOf([&] { sorted = rows; }, sortRows, expected);
    SqliteDatabase database = tableOf(rows);
    auto select = database.prepare("SELECT place FROM result ORDER BY a, b, c, d, e, place");
    const double sqlite =
        timeOf([] {},
               [&] {
                   Places found;
                   found.reserve(rows.size());
                   while (select.step())
                       found.push_back(static_cast<std::size_t>(select.number(0)));
                   return found;
               },
               expected);
    const double library = preferred - asFound;
    out << "Ordering " << rows.size() << " results: library " << library * 1e3
        << " ms  rows of ready keys " << readyKeys * 1e3 << " ms  SQLite ORDER BY " << sqlite * 1e3
        << " ms" << std::endl;
    return {{"results", rows.size()},
            {"library", library},
            {"rows of ready keys", readyKeys},
            {"SQLite ORDER BY", sqlite}};
}

}  // namespace reference::bench
