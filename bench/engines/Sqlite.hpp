#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace reference::bench {

class SqliteStatement;

// An open SQLite database. Each operation throws std::runtime_error with SQLite's own message. One
// thread at a time.
class SqliteDatabase {
  public:
    // Makes a new file, to be filled in one go: nothing protects it from a crash.
    [[nodiscard]] static SqliteDatabase create(const std::filesystem::path& file);

    // Makes one that lives and dies with this object.
    [[nodiscard]] static SqliteDatabase createInMemory();

    // Opens a file that nobody changes, mapped into memory as a whole, so that no lock is taken and
    // pages are not copied.
    [[nodiscard]] static SqliteDatabase openForReading(const std::filesystem::path& file);

    void execute(const std::string& sql);
    [[nodiscard]] SqliteStatement prepare(std::string_view sql);

  private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    explicit SqliteDatabase(sqlite3* database) : m_database(database) {}
    static SqliteDatabase open(const std::string& name, int flags);

    std::unique_ptr<sqlite3, Close> m_database;
};

// A prepared statement, to be used again and again.
class SqliteStatement {
  public:
    // Parameters and columns are numbered from 1 and from 0, as SQLite does. A bound text must
    // outlive its use.
    void bind(int parameter, std::string_view text);
    void bind(int parameter, std::int64_t number);

    // Whether there is another row. After the last one the statement can be run again.
    [[nodiscard]] bool step();
    void run();

    [[nodiscard]] std::int64_t number(int column) const;
    // Valid until the next step.
    [[nodiscard]] std::string_view text(int column) const;

  private:
    friend class SqliteDatabase;
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    explicit SqliteStatement(sqlite3_stmt* statement) : m_statement(statement) {}

    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

}  // namespace reference::bench
