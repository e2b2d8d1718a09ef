#pragma once

#include <string>
#include <vector>

#include "engines/Sqlite.hpp"
#include "relevance/Entities.hpp"
#include "relevance/Searcher.hpp"

namespace reference::bench {

// SQLite's FTS5, in memory: the name, its last component, its parts, the purpose and the text as
// columns of different weights, compared by the stems of words; and the trigrams of the name, which
// find it in spite of slips. Keeps a reference to the entities.
class FtsSearcher final : public Searcher {
  public:
    explicit FtsSearcher(const std::vector<Entity>& entities);
    [[nodiscard]] std::string name() const override { return "SQLite FTS5"; }
    [[nodiscard]] std::vector<std::string> ask(const std::string& question,
                                               std::size_t count) override;

  private:
    static void add(AnswerList& answer, SqliteStatement& query, const std::string& expression);

    const std::vector<Entity>& m_entities;
    SqliteDatabase m_database;
    SqliteStatement m_byWords;
    SqliteStatement m_byLetters;
};

}  // namespace reference::bench
