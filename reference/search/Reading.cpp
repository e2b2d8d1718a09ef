#include "reference/search/Reading.hpp"

namespace reference::search {

ReadingPages::~ReadingPages() {
    for (const auto& pages : m_pages)
        delete pages.load(std::memory_order_relaxed);
}

std::vector<JoinedLexicon::Found> ReadingPages::wordsOfAll(const TextQuery& query) const {
    return m_joinedWords.wordsOf(query, m_pages.size(),
                                 [this](std::uint32_t product) -> const docimage::Lexicon& {
                                     return find(product)->pages().words();
                                 });
}

const JoinedPages& ReadingPages::keep(std::uint32_t product,
                                      std::unique_ptr<const JoinedPages> pages) {
    const JoinedPages* kept = nullptr;
    if (m_pages[product].compare_exchange_strong(kept, pages.get(), std::memory_order_acq_rel))
        return *pages.release();
    return *kept;
}

const LookupIndex& Reading::makeIndex() const {
    m_indexMade.call([this] {
        m_index = std::make_unique<const LookupIndex>(*m_installed, m_known);
        m_madeIndex.store(m_index.get(), std::memory_order_release);
    });
    return *m_index;
}

}  // namespace reference::search
