// The parsed documentation that the process holds, and the locks on it. Internal: no public header
// includes it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "docparser/DocSource.hpp"
#include "foundation/core/Mutex.hpp"
#include "reference/search/LookupCaches.hpp"
#include "reference/search/Spare.hpp"

namespace reference::search {

using ReferenceResources = std::map<std::u16string, std::shared_ptr<const ReferenceResource>>;

class Snapshot;

// Three caches that are filled from one source: the lookup resources of installed products, those
// of products that are only known, and parsed reference resources. Any thread, at any time; what
// the source throws is thrown. The process has one (see ReferenceCacheManager); a test may make its
// own.
//
// Code that fills or changes a cache holds its mutex, so that a second load waits for the first. No
// thread ever holds two of these. What is dropped dies after the lock is released.
class ReferenceStore {
  public:
    // `source` must not be null.
    explicit ReferenceStore(std::shared_ptr<docparser::DocSource> source);

    // The documentation for a request that begins now; loads the lookup caches when they are not
    // loaded. Reads the lookup files once at most: when the caches are cleared meanwhile, what was
    // read serves this request and is not cached.
    [[nodiscard]] Snapshot snapshot();

    // What `ask(snapshot)` answers. Where it meets an image that is damaged, the source is told,
    // the caches are cleared, and `ask` is called again; where it meets one that was replaced, the
    // same without a word to the source.
    template <typename Ask>
    auto answer(Ask ask);

    // Never null; empty while nothing is loaded.
    [[nodiscard]] std::shared_ptr<const LookupResources> lookupCache();
    [[nodiscard]] std::shared_ptr<const LookupResources> uninstalledLookupCache();
    // Never null. Other threads may add to the very map that is returned.
    [[nodiscard]] std::shared_ptr<const ReferenceResources> resourceCache();

    // The cached resource of `product`, parsed from `resourceFile` when it is not cached; null when
    // the file does not hold it.
    [[nodiscard]] std::shared_ptr<const ReferenceResource> resourceForProduct(
        const std::u16string& resourceFile, const std::u16string& product);

    // Fill both lookup caches or neither: while either is filled there is nothing to do.
    void populateLookupCache();
    void populateUninstalledLookupCache();
    // Parses the files of all installed products; a product that cannot be parsed is left out.
    void populateResourceCache();

    void clearLookupCache();
    void clearUninstalledLookupCache();
    // Both in one step. Between two steps a search would find one cache filled, load nothing and
    // answer that there is nothing.
    void clearLookupCaches();
    void clearResourceCache();
    void clearSupportPackageCaches();

  private:
    friend class Snapshot;

    void recoverFrom(const docimage::DamagedImage& damage);

    using ResourcePtr = std::shared_ptr<const ReferenceResource>;
    // The reading of the lookups whose headers named the file that a cached resource was read from.
    // No entry for resources that were read by a product's name, at start-up or for clients.
    using Origins = std::map<std::u16string, std::weak_ptr<const Reading>>;

    std::shared_ptr<const LookupCaches> loadLookupCaches(foundation::core::Mutex& mutex);
    ResourcePtr resourceFor(const std::shared_ptr<Reading>& reading,
                            const LookupIndex::Product& product);
    ResourcePtr findCached(const std::u16string& product) const
        VELTRA_REQUIRES(m_resourceCacheMutex);
    ResourcePtr parseIntoCache(const std::u16string& resourceFile, const std::u16string& product,
                               const std::shared_ptr<const Reading>& reading)
        VELTRA_REQUIRES(m_resourceCacheMutex);
    ResourcePtr parseAlone(const std::u16string& resourceFile, const std::u16string& product);
    bool isOfReading(const Reading& reading, const LookupIndex::Product& product,
                     const ReferenceResource& resource) const VELTRA_REQUIRES(m_resourceCacheMutex);

    const std::shared_ptr<docparser::DocSource> m_source;
    const std::shared_ptr<const LookupResources> m_emptyLookupCache;

    foundation::core::Mutex m_lookupCacheMutex;
    foundation::core::Mutex m_uninstalledLookupCacheMutex;
    // No single mutex guards these: a load fills both caches under the one that its caller chose.
    LookupState m_lookupCaches;
    // What takes their place when they are cleared: where the language has changed, they must be,
    // even if there is no memory left.
    Spare<const LookupCaches> m_noLookupCaches VELTRA_GUARDED_BY(m_lookupCacheMutex);

    foundation::core::Mutex m_resourceCacheMutex;
    // Grows in place, so that a map that was handed out is always the whole cache. Never null.
    std::shared_ptr<ReferenceResources> m_resourceCache VELTRA_GUARDED_BY(m_resourceCacheMutex);
    Spare<ReferenceResources> m_noResources VELTRA_GUARDED_BY(m_resourceCacheMutex);
    Origins m_origins VELTRA_GUARDED_BY(m_resourceCacheMutex);
};

// The documentation that one request works with from its first look to its last result, however
// often the caches are cleared and the language is changed meanwhile. One thread.
class Snapshot {
  public:
    // Null when the cache of installed products was cleared alone: there is nothing to be found.
    [[nodiscard]] const LookupIndex* index() const;

    // The pages of a product of the index; null when its file does not hold it. Valid as long as
    // the snapshot. Throws what the source throws where the product is not cached.
    //
    // While the language is being changed, the cache may hold the product in one language and this
    // may have it in the other. An answer that mixed the two would be wrong in both. The product is
    // then read from the file that the lookups name, once at most for one reading.
    [[nodiscard]] const JoinedPages* pagesOf(std::uint32_t product) const;

    // The words of items that have the parts of a text, by product. Requires: pagesOf() has
    // returned the pages of every product of the index.
    [[nodiscard]] std::vector<JoinedLexicon::Found> wordsOfAll(const TextQuery& query) const {
        return m_pages->wordsOfAll(query);
    }

  private:
    friend class ReferenceStore;
    Snapshot(ReferenceStore& store, std::shared_ptr<const LookupCaches> caches);

    ReferenceStore& m_store;
    const std::shared_ptr<const LookupCaches> m_caches;
    // Those of the first call; null until then.
    mutable std::shared_ptr<ReadingPages> m_pages;
};

template <typename Ask>
auto ReferenceStore::answer(Ask ask) {
    // What replaced an image may be damaged in turn.
    for (int recoveries = 0; recoveries < 2; ++recoveries)
        try {
            return ask(snapshot());
        } catch (const docimage::DamagedImage& damage) {
            recoverFrom(damage);
        }
    return ask(snapshot());
}

}  // namespace reference::search
