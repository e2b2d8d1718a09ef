#include "engines/SqliteEngine.hpp"

#include <algorithm>
#include <utility>

namespace reference::bench {
namespace {

std::string nameQuery(Ask ask) {
    const std::string hits = "SELECT product, href FROM ";
    const std::string results = "SELECT r.product, r.href, r.name, r.purpose FROM ";
    switch (ask) {
        case Ask::ExactHrefs:
            return hits + "by_key WHERE name = ?1";
        case Ask::AnyCaseHrefs:
            return hits + "by_folded_key WHERE name = ?1";
        case Ask::LastComponentHrefs:
            return hits + "by_last WHERE name = ?1";
        case Ask::LastTwoComponentsHrefs:
            return hits + "by_last_two WHERE name = ?1";
        case Ask::ExactResults:
            return results +
                   "by_key k JOIN record_result l ON l.record = k.record "
                   "JOIN result r ON r.id = l.result WHERE k.name = ?1";
        case Ask::ClassResults:
            return results +
                   "by_class c JOIN result r ON r.page = c.page WHERE c.name = ?1 AND r.in_class";
        case Ask::PageResults:
            return results +
                   "by_file f JOIN result r ON r.page = f.page "
                   "WHERE f.name = ?1 AND NOT r.is_property";
        default:
            return {};
    }
}

constexpr const char* resultColumns = "SELECT r.product, r.href, r.name, r.purpose FROM ";

// Of the pages with the part, the results that contain it, and each item of which no property does.
std::string partResultsQuery(const std::string& pages) {
    return resultColumns + ("(SELECT DISTINCT page FROM " + pages) +
           ") p JOIN result r ON r.page = p.page WHERE instr(r.text, ?2) OR NOT (r.is_property OR "
           "EXISTS (SELECT 1 FROM result q WHERE q.item = r.id AND q.is_property AND "
           "instr(q.text, ?2)))";
}

// The first parameter is a phrase, the second its text.
std::string trigramQuery(Ask ask) {
    const std::string records =
        "record_parts f JOIN record r ON r.id = f.rowid WHERE record_parts MATCH ?1";
    switch (ask) {
        case Ask::PartHrefs:
            return "SELECT r.product, r.href FROM " + records;
        case Ask::PartResults:
            return partResultsQuery(records);
        default:
            return resultColumns + std::string(
                                       "item_parts f JOIN result r ON r.id = f.rowid "
                                       "WHERE item_parts MATCH ?1");
    }
}

// For a text that the trigrams do not hold: the same without them.
std::string scanQuery(Ask ask) {
    const std::string records = "record r WHERE instr(r.text, ?2)";
    switch (ask) {
        case Ask::PartHrefs:
            return "SELECT r.product, r.href FROM " + records;
        case Ask::PartResults:
            return partResultsQuery(records);
        default:
            return resultColumns + std::string(
                                       "item_text t JOIN result r ON r.id = t.id "
                                       "WHERE instr(t.text, ?2)");
    }
}

std::string wordQuery(Ask ask) {
    switch (ask) {
        case Ask::PartHrefs:
            return "SELECT r.product, r.href FROM record_words f JOIN record r ON r.id = f.rowid "
                   "WHERE record_words MATCH ?1";
        case Ask::PartResults:
            return resultColumns + std::string(
                                       "result_words f JOIN result r ON r.id = f.rowid "
                                       "WHERE result_words MATCH ?1");
        default:
            return resultColumns + std::string(
                                       "item_words f JOIN result r ON r.id = f.rowid "
                                       "WHERE item_words MATCH ?1");
    }
}

// As a phrase, in which nothing is an operator.
std::string quoted(const std::string& text) {
    std::string phrase = "\"";
    for (const char sign : text) {
        phrase += sign;
        if (sign == '"')
            phrase += sign;
    }
    return phrase + '"';
}

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

bool hasWords(const std::string& text) {
    return std::ranges::any_of(text, [](char byte) {
        return byte < 0 || (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z');
    });
}

}  // namespace

SqliteEngine::SqliteEngine(std::filesystem::path file, Form form)
    : m_file(std::move(file)), m_form(form), m_database(SqliteDatabase::openForReading(m_file)) {
    auto products = m_database.prepare("SELECT name FROM product ORDER BY id");
    while (products.step())
        m_products.emplace_back(products.text(0));
}

std::string SqliteEngine::name() const {
    switch (m_form) {
        case Form::Names:
            return "SQLite b-tree";
        case Form::Words:
            return "SQLite words";
        case Form::Parts:
            break;
    }
    return "SQLite trigrams";
}

Meaning SqliteEngine::meaning(Ask ask, const Query& query) const {
    if (m_form == Form::Names)
        return isAboutNames(ask) ? Meaning::Same : Meaning::None;
    if (isAboutNames(ask))
        return Meaning::None;
    if (m_form == Form::Parts)
        return Meaning::Same;
    return hasWords(query.folded) ? Meaning::WholeWords : Meaning::None;
}

void SqliteEngine::answer(Ask ask, const Query& query, Delivery& delivery) {
    const bool isScan = m_form == Form::Parts && characters(query.folded) < 3;
    SqliteStatement& found = statement(ask, isScan);
    std::string phrase;
    if (m_form == Form::Names) {
        found.bind(1, ask == Ask::AnyCaseHrefs ? query.folded : query.utf8);
    } else {
        phrase = quoted(query.folded);
        if (!isScan)
            found.bind(1, phrase);
        if (m_form == Form::Parts && (isScan || ask == Ask::PartResults))
            found.bind(2, query.folded);
    }
    const bool hasResults = answersWithResults(ask);
    while (found.step()) {
        const std::string_view product = m_products[static_cast<std::size_t>(found.number(0))];
        if (hasResults)
            delivery.add(product, found.text(1), found.text(2), found.text(3));
        else
            delivery.add(product, found.text(1));
    }
}

std::unique_ptr<Engine> SqliteEngine::another() const {
    return std::make_unique<SqliteEngine>(m_file, m_form);
}

SqliteStatement& SqliteEngine::statement(Ask ask, bool isScan) {
    auto& prepared = m_statements[static_cast<std::size_t>(ask)][isScan ? 1 : 0];
    if (!prepared) {
        const std::string sql = m_form == Form::Names   ? nameQuery(ask)
                                : m_form == Form::Words ? wordQuery(ask)
                                : isScan                ? scanQuery(ask)
                                                        : trigramQuery(ask);
        prepared = m_database.prepare(sql);
    }
    return *prepared;
}

}  // namespace reference::bench
