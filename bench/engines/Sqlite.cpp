#include "engines/Sqlite.hpp"

#include <sqlite3.h>
#include <stdexcept>

namespace reference::bench {
namespace {

[[noreturn]] void fail(sqlite3* database) {
    throw std::runtime_error(std::string("SQLite: ") + sqlite3_errmsg(database));
}

}  // namespace

void SqliteDatabase::Close::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

SqliteDatabase SqliteDatabase::open(const std::string& name, int flags) {
    sqlite3* opened = nullptr;
    const int status = sqlite3_open_v2(name.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    SqliteDatabase database(opened);
    if (status != SQLITE_OK)
        fail(opened);
    return database;
}

SqliteDatabase SqliteDatabase::create(const std::filesystem::path& file) {
    std::filesystem::remove(file);
    SqliteDatabase database = open(file.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    database.execute(
        "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA cache_size = -500000;"
        "PRAGMA temp_store = MEMORY");
    return database;
}

SqliteDatabase SqliteDatabase::createInMemory() {
    return open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

SqliteDatabase SqliteDatabase::openForReading(const std::filesystem::path& file) {
    SqliteDatabase database =
        open("file:" + std::filesystem::absolute(file).string() + "?immutable=1",
             SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    database.execute("PRAGMA mmap_size = 68719476736; PRAGMA cache_size = -200000");
    return database;
}

void SqliteDatabase::execute(const std::string& sql) {
    if (sqlite3_exec(m_database.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(m_database.get());
}

SqliteStatement SqliteDatabase::prepare(std::string_view sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(m_database.get(), sql.data(), static_cast<int>(sql.size()),
                           SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK)
        fail(m_database.get());
    return SqliteStatement(statement);
}

void SqliteStatement::bind(int parameter, std::string_view text) {
    if (sqlite3_bind_text64(m_statement.get(), parameter, text.data(), text.size(), nullptr,
                            SQLITE_UTF8) != SQLITE_OK)
        fail(sqlite3_db_handle(m_statement.get()));
}

void SqliteStatement::bind(int parameter, std::int64_t number) {
    if (sqlite3_bind_int64(m_statement.get(), parameter, number) != SQLITE_OK)
        fail(sqlite3_db_handle(m_statement.get()));
}

bool SqliteStatement::step() {
    const int status = sqlite3_step(m_statement.get());
    if (status == SQLITE_ROW)
        return true;
    if (sqlite3_reset(m_statement.get()) != SQLITE_OK || status != SQLITE_DONE)
        fail(sqlite3_db_handle(m_statement.get()));
    return false;
}

void SqliteStatement::run() {
    while (step()) {
    }
}

std::int64_t SqliteStatement::number(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

std::string_view SqliteStatement::text(int column) const {
    const void* const text = sqlite3_column_text(m_statement.get(), column);
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return {static_cast<const char*>(text), static_cast<std::size_t>(size)};
}

}  // namespace reference::bench
