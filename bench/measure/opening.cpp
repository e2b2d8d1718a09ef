#include "measure/opening.hpp"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/object.hpp>

#include "engines/LibraryEngine.hpp"
#include "engines/SqliteEngine.hpp"
#include "engines/XapianEngine.hpp"
#include "fl/i18n/utf.hpp"
#include "measure/Clock.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::bench {
namespace {

using cache_manager::ReferenceCacheManager;

constexpr std::size_t repetitions = 5;

// A name from the middle of the middle product.
Query someName(const std::filesystem::path& set) {
    openLibrary(set);
    ReferenceCacheManager::PopulateLookupCaches();
    const auto lookup = ReferenceCacheManager::GetLookupCache();
    const auto& product =
        *std::next(lookup->begin(), static_cast<std::ptrdiff_t>(lookup->size() / 2));
    const auto& items = product.second.getItems();
    const std::u16string& name =
        std::next(items.begin(), static_cast<std::ptrdiff_t>(items.size() / 2))->first;
    return {.text = name, .utf8 = fl::i18n::toUtf8(name), .folded = {}};
}

struct Contestant {
    std::string name;
    std::function<std::unique_ptr<Engine>()> open;
    // Not timed.
    std::function<void()> prepare;
};

boost::json::object measure(const Contestant& contestant, const Query& query, Ask ask,
                            const std::vector<std::string>& expected) {
    std::vector<double> processor;
    std::vector<double> wall;
    for (std::size_t n = 0; n < repetitions; ++n) {
        contestant.prepare();
        Delivery delivery(Delivery::Mode::Kept);
        const double processorBegin = processorSeconds();
        const double wallBegin = wallSeconds();
        const auto engine = contestant.open();
        engine->answer(ask, query, delivery);
        wall.push_back(wallSeconds() - wallBegin);
        processor.push_back(processorSeconds() - processorBegin);
        if (delivery.takeHits() != expected)
            throw std::runtime_error(contestant.name + "'s first answer is wrong: " + query.utf8);
    }
    std::ranges::sort(processor);
    std::ranges::sort(wall);
    return {{"engine", contestant.name},
            {"seconds", processor[repetitions / 2]},
            {"wallSeconds", wall[repetitions / 2]}};
}

}  // namespace

boost::json::array measureOpening(const SetFolders& folders, bool withXapian, std::ostream& out) {
    const Query query = someName(folders.set);
    std::vector<Contestant> contestants = {
        {"library", [] { return std::make_unique<LibraryEngine>(); },
         [&] { openLibrary(folders.set); }},
        {"SQLite b-tree",
         [&] {
             return std::make_unique<SqliteEngine>(folders.sqliteFile(), SqliteEngine::Form::Names);
         },
         [] {}}};
    if (withXapian)
        contestants.push_back(
            {"Xapian", [&] { return std::make_unique<XapianEngine>(folders.xapianFolder()); },
             [] {}});
    boost::json::array rows;
    for (const auto& [name, ask] : {std::pair("first hrefs", Ask::ExactHrefs),
                                    std::pair("first results", Ask::ExactResults)}) {
        Delivery delivery(Delivery::Mode::Kept);
        LibraryEngine().answer(ask, query, delivery);
        const auto expected = delivery.takeHits();
        boost::json::array figures;
        out << name;
        for (const Contestant& contestant : contestants) {
            auto figure = measure(contestant, query, ask, expected);
            out << "  " << contestant.name << ' ' << figure.at("seconds").to_number<double>() * 1e3
                << " ms";
            figures.push_back(std::move(figure));
        }
        out << std::endl;
        rows.push_back({{"class", name}, {"name", query.utf8}, {"figures", std::move(figures)}});
    }
    return rows;
}

}  // namespace reference::bench
