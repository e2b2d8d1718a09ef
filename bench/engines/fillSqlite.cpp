#include "engines/fillSqlite.hpp"

#include <cstdint>
#include <string>
#include <string_view>

#include "engines/Sqlite.hpp"

namespace reference::bench {
namespace {

// Texts are folded already, so the indexes need not fold. Those of full text keep no text of their
// own and no lengths, which only ranking needs.
constexpr const char* schema = R"(
CREATE TABLE product(id INTEGER PRIMARY KEY, name TEXT);
CREATE TABLE record(id INTEGER PRIMARY KEY, page INTEGER, product INTEGER, href TEXT,
                    text TEXT);
CREATE TABLE by_key(name TEXT, record INTEGER, product INTEGER, href TEXT,
                    PRIMARY KEY(name, record)) WITHOUT ROWID;
CREATE TABLE by_folded_key(name TEXT, record INTEGER, product INTEGER, href TEXT,
                           PRIMARY KEY(name, record)) WITHOUT ROWID;
CREATE TABLE by_last(name TEXT, record INTEGER, product INTEGER, href TEXT,
                     PRIMARY KEY(name, record)) WITHOUT ROWID;
CREATE TABLE by_last_two(name TEXT, record INTEGER, product INTEGER, href TEXT,
                         PRIMARY KEY(name, record)) WITHOUT ROWID;
CREATE TABLE by_file(name TEXT, page INTEGER, PRIMARY KEY(name, page)) WITHOUT ROWID;
CREATE TABLE by_class(name TEXT, page INTEGER, PRIMARY KEY(name, page)) WITHOUT ROWID;
CREATE TABLE result(id INTEGER PRIMARY KEY, page INTEGER, item INTEGER, in_class INTEGER, is_property INTEGER,
                    product INTEGER, href TEXT, name TEXT, purpose TEXT, text TEXT);
CREATE TABLE record_result(record INTEGER, result INTEGER, PRIMARY KEY(record, result))
    WITHOUT ROWID;
CREATE TABLE item_text(id INTEGER PRIMARY KEY, text TEXT);
)";

void copyNames(SqliteDatabase& database, const Corpus& corpus, const std::string& table,
               const TextColumn& names) {
    auto insert = database.prepare("INSERT INTO " + table + " VALUES(?, ?, ?, ?)");
    for (std::uint32_t record = 0; record < names.size(); ++record) {
        insert.bind(1, names[record]);
        insert.bind(2, std::int64_t{record});
        insert.bind(3, std::int64_t{corpus.pageProducts[corpus.recordPages[record]]});
        insert.bind(4, corpus.hrefOfRecord(record));
        insert.run();
    }
}

void copyRecords(SqliteDatabase& database, const Corpus& corpus) {
    auto product = database.prepare("INSERT INTO product VALUES(?, ?)");
    for (std::size_t n = 0; n < corpus.products.size(); ++n) {
        product.bind(1, static_cast<std::int64_t>(n));
        product.bind(2, corpus.products[n]);
        product.run();
    }
    auto record = database.prepare("INSERT INTO record VALUES(?, ?, ?, ?, ?)");
    auto file = database.prepare("INSERT OR IGNORE INTO by_file VALUES(?, ?)");
    for (std::uint32_t n = 0; n < corpus.keys.size(); ++n) {
        record.bind(1, std::int64_t{n});
        record.bind(2, std::int64_t{corpus.recordPages[n]});
        record.bind(3, std::int64_t{corpus.pageProducts[corpus.recordPages[n]]});
        record.bind(4, corpus.hrefOfRecord(n));
        record.bind(5, corpus.recordTexts[n]);
        record.run();
        file.bind(1, corpus.fileNames[n]);
        file.bind(2, std::int64_t{corpus.recordPages[n]});
        file.run();
    }
    copyNames(database, corpus, "by_key", corpus.keys);
    copyNames(database, corpus, "by_folded_key", corpus.foldedKeys);
    copyNames(database, corpus, "by_last", corpus.lastComponents);
    copyNames(database, corpus, "by_last_two", corpus.lastTwoComponents);
    auto byClass = database.prepare("INSERT INTO by_class VALUES(?, ?)");
    for (const auto& [className, page] : corpus.classPages) {
        byClass.bind(1, className);
        byClass.bind(2, std::int64_t{page});
        byClass.run();
    }
}

void copyResults(SqliteDatabase& database, const Corpus& corpus) {
    auto result = database.prepare("INSERT INTO result VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    for (std::uint32_t n = 0; n < corpus.resultPages.size(); ++n) {
        result.bind(1, std::int64_t{n});
        result.bind(2, std::int64_t{corpus.resultPages[n]});
        result.bind(3, std::int64_t{corpus.resultItems[n]});
        result.bind(4, std::int64_t{corpus.resultIsInClass[n]});
        result.bind(5, std::int64_t{corpus.resultIsProperty[n]});
        result.bind(6, std::int64_t{corpus.pageProducts[corpus.resultPages[n]]});
        result.bind(7, corpus.resultHrefs[n]);
        result.bind(8, corpus.resultNames[n]);
        result.bind(9, corpus.resultPurposes[n]);
        result.bind(10, corpus.resultTexts[n]);
        result.run();
    }
    auto link = database.prepare("INSERT OR IGNORE INTO record_result VALUES(?, ?)");
    for (const auto& [record, found] : corpus.recordResults) {
        link.bind(1, std::int64_t{record});
        link.bind(2, std::int64_t{found});
        link.run();
    }
    auto item = database.prepare("INSERT INTO item_text VALUES(?, ?)");
    for (std::uint32_t n = 0; n < corpus.itemResults.size(); ++n) {
        item.bind(1, std::int64_t{corpus.itemResults[n]});
        item.bind(2, corpus.itemTexts[n]);
        item.run();
    }
    database.execute(
        "CREATE INDEX result_by_page ON result(page);"
        "CREATE INDEX property_by_item ON result(item) WHERE is_property");
}

// A full-text index over the column "text" of a table.
void indexTexts(SqliteDatabase& database, const std::string& index, const std::string& table,
                const std::string& tokenizer) {
    const std::string control = "INSERT INTO " + index + "(" + index;
    database.execute("CREATE VIRTUAL TABLE " + index +
                     " USING fts5(text, content='', columnsize=0, tokenize='" + tokenizer + "')");
    // Fewer and larger pieces while it is filled, since they are merged at the end anyway.
    database.execute(control + ", rank) VALUES('automerge', 0);" + control +
                     ", rank) VALUES('crisismerge', 2000);" + control +
                     ", rank) VALUES('hashsize', 67108864)");
    database.execute("INSERT INTO " + index + "(rowid, text) SELECT id, text FROM " + table);
    database.execute(control + ") VALUES('optimize')");
}

}  // namespace

void fillSqlite(const Corpus& corpus, const std::filesystem::path& file) {
    const std::filesystem::path unfinished = file.string() + ".new";
    {
        SqliteDatabase database = SqliteDatabase::create(unfinished);
        database.execute("BEGIN");
        database.execute(schema);
        copyRecords(database, corpus);
        copyResults(database, corpus);
        const std::string words = "unicode61 remove_diacritics 0";
        const std::string parts = "trigram case_sensitive 1";
        indexTexts(database, "record_words", "record", words);
        indexTexts(database, "record_parts", "record", parts);
        indexTexts(database, "result_words", "result", words);
        indexTexts(database, "item_words", "item_text", words);
        indexTexts(database, "item_parts", "item_text", parts);
        database.execute("COMMIT");
        database.execute("ANALYZE");
    }
    std::filesystem::rename(unfinished, file);
}

}  // namespace reference::bench
