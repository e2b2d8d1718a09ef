#include "engines/WalkEngine.hpp"

#include <utility>

#include "engines/Names.hpp"

namespace reference::bench {

WalkEngine::WalkEngine(std::shared_ptr<const Corpus> corpus) : m_corpus(std::move(corpus)) {}

Meaning WalkEngine::meaning(Ask /*ask*/, const Query& /*query*/) const {
    return Meaning::Same;
}

void WalkEngine::answer(Ask ask, const Query& query, Delivery& delivery) {
    const Corpus& corpus = *m_corpus;
    switch (ask) {
        case Ask::PartHrefs:
            corpus.recordTexts.forEachWith(query.folded, [&](std::uint32_t record) {
                deliverRecord(corpus, record, delivery);
                return true;
            });
            return;
        case Ask::PartResults:
            for (const std::uint32_t page : pagesWithPart(query.folded))
                deliverParts(corpus, query.folded, page, delivery);
            return;
        case Ask::TextResults:
            corpus.itemTexts.forEachWith(query.folded, [&](std::uint32_t item) {
                deliverResult(corpus, corpus.itemResults[item], delivery);
                return true;
            });
            return;
        case Ask::ClassResults:
            for (const auto& [className, page] : corpus.classPages)
                if (className == query.utf8)
                    deliverPage(corpus, ask, page, delivery);
            return;
        default:
            break;
    }
    const TextColumn& names = nameColumn(corpus, ask);
    const std::string_view name = nameOf(query, ask);
    std::set<std::uint32_t> pages;
    for (std::uint32_t record = 0; record < names.size(); ++record) {
        if (names[record] != name)
            continue;
        if (ask == Ask::PageResults)
            pages.insert(corpus.recordPages[record]);
        else
            deliverNamed(corpus, ask, record, delivery);
    }
    for (const std::uint32_t page : pages)
        deliverPage(corpus, ask, page, delivery);
}

std::set<std::uint32_t> WalkEngine::pagesWithPart(std::string_view part) const {
    std::set<std::uint32_t> pages;
    m_corpus->recordTexts.forEachWith(part, [&](std::uint32_t record) {
        pages.insert(m_corpus->recordPages[record]);
        return true;
    });
    return pages;
}

std::unique_ptr<Engine> WalkEngine::another() const {
    return std::make_unique<WalkEngine>(m_corpus);
}

}  // namespace reference::bench
