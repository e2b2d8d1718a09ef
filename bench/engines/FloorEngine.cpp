#include "engines/FloorEngine.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

#include "engines/Names.hpp"

namespace reference::bench {
namespace {

std::size_t tableNumber(Ask ask) {
    switch (ask) {
        case Ask::AnyCaseHrefs:
            return 1;
        case Ask::LastComponentHrefs:
            return 2;
        case Ask::LastTwoComponentsHrefs:
            return 3;
        default:
            return 0;
    }
}

const TextColumn& searchedColumn(const Corpus& corpus, Ask ask) {
    return ask == Ask::TextResults ? corpus.itemTexts : corpus.recordTexts;
}

}  // namespace

FloorEngine::FloorEngine(std::shared_ptr<const Corpus> corpus) : m_corpus(std::move(corpus)) {
    auto tables = std::make_shared<Tables>();
    for (const Ask ask : {Ask::ExactHrefs, Ask::AnyCaseHrefs, Ask::LastComponentHrefs,
                          Ask::LastTwoComponentsHrefs}) {
        const TextColumn& names = nameColumn(*m_corpus, ask);
        for (std::uint32_t record = 0; record < names.size(); ++record)
            tables->names[tableNumber(ask)][names[record]].push_back(record);
    }
    for (std::uint32_t record = 0; record < m_corpus->fileNames.size(); ++record) {
        auto& pages = tables->fileNames[m_corpus->fileNames[record]];
        if (std::ranges::find(pages, m_corpus->recordPages[record]) == pages.end())
            pages.push_back(m_corpus->recordPages[record]);
    }
    for (const auto& [className, page] : m_corpus->classPages)
        tables->classes[className].push_back(page);
    m_tables = std::move(tables);
}

FloorEngine::FloorEngine(std::shared_ptr<const Corpus> corpus, std::shared_ptr<const Tables> tables)
    : m_corpus(std::move(corpus)), m_tables(std::move(tables)) {}

Meaning FloorEngine::meaning(Ask ask, const Query& /*query*/) const {
    return isAboutNames(ask) ? Meaning::Same : Meaning::Floor;
}

void FloorEngine::answer(Ask ask, const Query& query, Delivery& delivery) {
    if (!isAboutNames(ask)) {
        const std::string_view bytes = searchedColumn(*m_corpus, ask).bytes();
        // No UTF-8 text holds this byte, so that all of them are read.
        const void* const found = std::memchr(bytes.data(), 0xFF, bytes.size());
        delivery.add(std::string_view(), std::string_view(found == nullptr ? "" : "?"));
        return;
    }
    const bool asksForPages = ask == Ask::PageResults || ask == Ask::ClassResults;
    const Table& table = ask == Ask::PageResults    ? m_tables->fileNames
                         : ask == Ask::ClassResults ? m_tables->classes
                                                    : m_tables->names[tableNumber(ask)];
    const auto found = table.find(nameOf(query, ask));
    if (found == table.end())
        return;
    for (const std::uint32_t row : found->second)
        if (asksForPages)
            deliverPage(*m_corpus, ask, row, delivery);
        else
            deliverNamed(*m_corpus, ask, row, delivery);
}

std::unique_ptr<Engine> FloorEngine::another() const {
    return std::unique_ptr<Engine>(new FloorEngine(m_corpus, m_tables));
}

}  // namespace reference::bench
