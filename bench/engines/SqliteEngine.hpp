#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "engines/Engine.hpp"
#include "engines/Sqlite.hpp"

namespace reference::bench {

// SQLite over a database that fillSqlite() made, with prepared statements, in one of its forms. The
// file is mapped; it is in the system's file cache after the first answers.
class SqliteEngine final : public Engine {
  public:
    enum class Form {
        // Names in b-trees.
        Names,
        // Texts in an index of words.
        Words,
        // Texts in an index of three letters; a text of fewer letters is looked for in all rows.
        Parts,
    };

    SqliteEngine(std::filesystem::path file, Form form);

    [[nodiscard]] std::string name() const override;
    [[nodiscard]] Meaning meaning(Ask ask, const Query& query) const override;
    void answer(Ask ask, const Query& query, Delivery& delivery) override;
    [[nodiscard]] std::unique_ptr<Engine> another() const override;

  private:
    SqliteStatement& statement(Ask ask, bool isScan);

    std::filesystem::path m_file;
    Form m_form;
    SqliteDatabase m_database;
    std::vector<std::string> m_products;
    // By what is asked, for the index and for going through all rows; prepared when first used.
    std::array<std::array<std::optional<SqliteStatement>, 2>, askCount> m_statements;
};

}  // namespace reference::bench
