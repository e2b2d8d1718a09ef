#include "engines/fillXapian.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <vector>
#include <xapian.h>

#include "corpus/words.hpp"

namespace reference::bench {
namespace {

constexpr std::size_t longestTerm = 240;

void addWords(Xapian::Document& document, std::string_view text) {
    Xapian::termpos position = 0;
    forEachWord(text, [&](std::string_view word) {
        document.add_posting(xapianTerm("", word), ++position);
        return true;
    });
}

std::string joined(std::initializer_list<std::string_view> texts) {
    std::string data;
    for (const std::string_view text : texts)
        data.append(text).push_back(textSeparator);
    data.pop_back();
    return data;
}

void fill(const std::filesystem::path& folder, const std::string& name, std::size_t count,
          const std::function<Xapian::Document(std::uint32_t)>& documentOf) {
    const std::filesystem::path raw = folder / (name + ".raw");
    const std::filesystem::path unfinished = folder / (name + ".new");
    {
        Xapian::WritableDatabase database(raw.string(),
                                          Xapian::DB_CREATE_OR_OVERWRITE | Xapian::DB_DANGEROUS |
                                              Xapian::DB_NO_SYNC | Xapian::DB_BACKEND_GLASS);
        for (std::uint32_t row = 0; row < count; ++row)
            database.replace_document(row + 1, documentOf(row));
        database.commit();
    }
    std::filesystem::remove_all(unfinished);
    Xapian::Database(raw.string()).compact(unfinished.string(), Xapian::DBCOMPACT_NO_RENUMBER);
    std::filesystem::remove_all(raw);
    std::filesystem::remove_all(folder / name);
    std::filesystem::rename(unfinished, folder / name);
}

std::string dataOfResult(const Corpus& corpus, std::uint32_t result) {
    return joined({corpus.productOfResult(result), corpus.resultHrefs[result],
                   corpus.resultNames[result], corpus.resultPurposes[result]});
}

void fillRecords(const Corpus& corpus, const std::filesystem::path& folder) {
    fill(folder, "records", corpus.keys.size(), [&](std::uint32_t record) {
        Xapian::Document document;
        document.set_data(joined({corpus.productOfRecord(record), corpus.hrefOfRecord(record)}));
        document.add_boolean_term(xapianTerm("XKEY:", corpus.keys[record]));
        document.add_boolean_term(xapianTerm("XFOLDED:", corpus.foldedKeys[record]));
        document.add_boolean_term(xapianTerm("XLAST:", corpus.lastComponents[record]));
        document.add_boolean_term(xapianTerm("XLASTTWO:", corpus.lastTwoComponents[record]));
        addWords(document, corpus.recordTexts[record]);
        return document;
    });
}

void fillResults(const Corpus& corpus, const std::filesystem::path& folder) {
    std::multimap<std::uint32_t, std::string> terms;
    for (const auto& [record, result] : corpus.recordResults)
        terms.emplace(result, xapianTerm("XKEY:", corpus.keys[record]));
    std::vector<std::set<std::string_view>> fileNames(corpus.pageHrefs.size());
    for (std::uint32_t record = 0; record < corpus.keys.size(); ++record)
        fileNames[corpus.recordPages[record]].insert(corpus.fileNames[record]);
    std::multimap<std::uint32_t, std::string_view> classes;
    for (const auto& [className, page] : corpus.classPages)
        classes.emplace(page, className);
    fill(folder, "results", corpus.resultPages.size(), [&](std::uint32_t result) {
        Xapian::Document document;
        document.set_data(dataOfResult(corpus, result));
        for (auto [term, end] = terms.equal_range(result); term != end; ++term)
            document.add_boolean_term(term->second);
        const std::uint32_t page = corpus.resultPages[result];
        if (!corpus.resultIsProperty[result])
            for (const std::string_view name : fileNames[page])
                document.add_boolean_term(xapianTerm("XFILE:", name));
        if (corpus.resultIsInClass[result])
            for (auto [name, end] = classes.equal_range(page); name != end; ++name)
                document.add_boolean_term(xapianTerm("XCLASS:", name->second));
        addWords(document, corpus.resultTexts[result]);
        return document;
    });
}

void fillItems(const Corpus& corpus, const std::filesystem::path& folder) {
    fill(folder, "items", corpus.itemResults.size(), [&](std::uint32_t item) {
        Xapian::Document document;
        document.set_data(dataOfResult(corpus, corpus.itemResults[item]));
        addWords(document, corpus.itemTexts[item]);
        return document;
    });
}

}  // namespace

std::string xapianTerm(std::string_view prefix, std::string_view name) {
    std::string term(prefix);
    if (prefix.size() + name.size() <= longestTerm)
        return term.append(name);
    const std::string hash = std::to_string(std::hash<std::string_view>()(name));
    return term.append(name.substr(0, longestTerm - prefix.size() - hash.size())).append(hash);
}

void fillXapian(const Corpus& corpus, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    fillRecords(corpus, folder);
    fillResults(corpus, folder);
    fillItems(corpus, folder);
}

}  // namespace reference::bench
