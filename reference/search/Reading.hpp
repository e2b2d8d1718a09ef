// What the parser said of all products at one time. Internal: no public header includes it.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "docparser/ParsingResults.hpp"
#include "foundation/core/Once.hpp"
#include "reference/search/AtomicShared.hpp"
#include "reference/search/JoinedLexicon.hpp"
#include "reference/search/LookupIndex.hpp"
#include "reference/search/ProductPages.hpp"

namespace reference::search {

// The pages of a reading's products, as far as they have been asked for. Any thread.
class ReadingPages {
  public:
    explicit ReadingPages(std::size_t products) : m_pages(products) {}
    ReadingPages(const ReadingPages&) = delete;  // shared by pointer
    ReadingPages& operator=(const ReadingPages&) = delete;
    ~ReadingPages();

    // Null until keep() was called for the product. Valid as long as this object.
    [[nodiscard]] const JoinedPages* find(std::uint32_t product) const noexcept {
        return m_pages[product].load(std::memory_order_acquire);
    }

    // The words of items that have the parts of a text, by product. Requires: all products' pages
    // are kept.
    [[nodiscard]] std::vector<JoinedLexicon::Found> wordsOfAll(const TextQuery& query) const;

    // Keeps the pages, unless those of the product are kept already; returns what is kept.
    const JoinedPages& keep(std::uint32_t product, std::unique_ptr<const JoinedPages> pages);

  private:
    std::vector<std::atomic<const JoinedPages*>> m_pages;  // owned
    JoinedLexicon m_joinedWords;
};

// One reading of the lookup files: the resources of installed products with their index, and what
// was read for this reading alone. Shared; immutable but for what is made on first use.
class Reading {
  public:
    // `known`: what is known of exactly these resources.
    Reading(std::shared_ptr<const LookupResources> installed, docparser::InstalledIndex known)
        : m_installed(std::move(installed)),
          m_known(std::move(known)),
          m_pages(std::make_shared<ReadingPages>(m_installed->size())) {}

    [[nodiscard]] const LookupResources& installed() const noexcept { return *m_installed; }
    // Never null.
    [[nodiscard]] std::shared_ptr<const LookupResources> sharedInstalled() const {
        return m_installed;
    }

    // Made when it is first asked for; throws std::length_error where a product is too large.
    [[nodiscard]] const LookupIndex& index() const {
        const LookupIndex* const made = m_madeIndex.load(std::memory_order_acquire);
        return made != nullptr ? *made : makeIndex();
    }

    // The pages for requests that begin now.
    [[nodiscard]] std::shared_ptr<ReadingPages> pages() const { return m_pages.load(); }
    // Requests that begin from now on ask for their pages again. Returns what earlier ones have.
    [[nodiscard]] std::shared_ptr<ReadingPages> dropPages() {
        return m_pages.exchange(std::make_shared<ReadingPages>(m_installed->size()));
    }

    // Resources that requests of this reading keep to themselves, because the cache has, or will
    // have, those of another reading. Guarded by the mutex of the resource cache.
    std::map<std::u16string, std::shared_ptr<const ReferenceResource>> ownResources;

  private:
    const LookupIndex& makeIndex() const;

    const std::shared_ptr<const LookupResources> m_installed;
    const docparser::InstalledIndex m_known;
    mutable foundation::core::Once m_indexMade;
    mutable std::unique_ptr<const LookupIndex> m_index;
    mutable std::atomic<const LookupIndex*> m_madeIndex{nullptr};
    AtomicShared<ReadingPages> m_pages;
};

}  // namespace reference::search
