#include "engines/Rivals.hpp"

#include "engines/FloorEngine.hpp"
#include "engines/LibraryEngine.hpp"
#include "engines/SqliteEngine.hpp"
#include "engines/WalkEngine.hpp"
#include "engines/XapianEngine.hpp"
#include "engines/fillSqlite.hpp"
#include "engines/fillXapian.hpp"

namespace reference::bench {
namespace {

bool isCurrent(const std::filesystem::path& database, const std::filesystem::path& set) {
    return std::filesystem::exists(database) &&
           std::filesystem::last_write_time(database) >=
               std::filesystem::last_write_time(set / "documentation-set.json");
}

}  // namespace

void fillRivals(const Corpus& corpus, const SetFolders& folders, bool withXapian) {
    std::filesystem::create_directories(folders.rivals);
    if (!isCurrent(folders.sqliteFile(), folders.set))
        fillSqlite(corpus, folders.sqliteFile());
    // The last one to be filled.
    if (withXapian && !isCurrent(folders.xapianFolder() / "items", folders.set))
        fillXapian(corpus, folders.xapianFolder());
}

std::vector<std::unique_ptr<Engine>> openEngines(const std::shared_ptr<const Corpus>& corpus,
                                                 const SetFolders& folders, bool withXapian) {
    std::vector<std::unique_ptr<Engine>> engines;
    engines.push_back(std::make_unique<LibraryEngine>());
    for (const auto form :
         {SqliteEngine::Form::Names, SqliteEngine::Form::Parts, SqliteEngine::Form::Words})
        engines.push_back(std::make_unique<SqliteEngine>(folders.sqliteFile(), form));
    if (withXapian)
        engines.push_back(std::make_unique<XapianEngine>(folders.xapianFolder()));
    engines.push_back(std::make_unique<WalkEngine>(corpus));
    engines.push_back(std::make_unique<FloorEngine>(corpus));
    return engines;
}

}  // namespace reference::bench
