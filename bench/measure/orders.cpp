#include "measure/orders.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "engines/LibraryEngine.hpp"
#include "engines/Sqlite.hpp"
#include "measure/Clock.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
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

}  // namespace

boost::json::object measureOrders(const std::filesystem::path& set, std::ostream& out) {
    loadLibrary(set);
    const auto results = api::AllTextDataRetriever(api::ReferenceRequest(u"")).getReferenceData();
    if (results.size() < resultCount)
        throw std::runtime_error("The set has too few results to order.");
    std::vector<const ReferenceData*> shuffled;
    shuffled.reserve(results.size());
    for (const ReferenceData& result : results)
        shuffled.push_back(&result);
    std::mt19937_64 random(7);
    for (std::size_t n = shuffled.size(); n > 1; --n)
        std::swap(shuffled[n - 1], shuffled[random() % n]);
    shuffled.resize(resultCount);
    std::vector<Row> rows;
    rows.reserve(resultCount);
    for (const ReferenceData* const result : shuffled)
        rows.push_back(rowOf(*result, rows.size()));

    std::vector<Row> sorted = rows;
    const auto sortRows = [&] {
        std::ranges::stable_sort(sorted, {}, &Row::keys);
        Places places;
        places.reserve(sorted.size());
        for (const Row& row : sorted)
            places.push_back(row.place);
        return places;
    };
    const Places expected = sortRows();

    // Places and not results are moved, so that what is timed is the comparator.
    Places places;
    const double library = timeOf(
        [&] {
            places.resize(resultCount);
            for (std::size_t n = 0; n < resultCount; ++n)
                places[n] = n;
        },
        [&] {
            std::ranges::stable_sort(places, [&](std::size_t a, std::size_t b) {
                return api::comparator::PreferredOrderComparator()(*shuffled[a], *shuffled[b]);
            });
            return places;
        },
        expected);
    const double readyKeys = timeOf([&] { sorted = rows; }, sortRows, expected);
    SqliteDatabase database = tableOf(rows);
    auto select = database.prepare("SELECT place FROM result ORDER BY a, b, c, d, e, place");
    const double sqlite =
        timeOf([] {},
               [&] {
                   Places found;
                   found.reserve(resultCount);
                   while (select.step())
                       found.push_back(static_cast<std::size_t>(select.number(0)));
                   return found;
               },
               expected);
    out << "Ordering " << resultCount << " results: library " << library * 1e3
        << " ms  rows of ready keys " << readyKeys * 1e3 << " ms  SQLite ORDER BY " << sqlite * 1e3
        << " ms" << std::endl;
    return {{"results", resultCount},
            {"library", library},
            {"rows of ready keys", readyKeys},
            {"SQLite ORDER BY", sqlite}};
}

}  // namespace reference::bench
