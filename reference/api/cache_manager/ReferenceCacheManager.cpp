#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "docparser/DocParserException.hpp"
#include "docparser/DocResourceParser.hpp"
#include "foundation/core/Mutex.hpp"
#include "reference/api/cache_manager/EntitySearch.hpp"

namespace reference::cache_manager {
namespace {

using docparser::DocParserException;
using docparser::DocResourceParser;
using foundation::core::Mutex;
using foundation::core::MutexLock;
using property::RefEntityType;
using LookupCache = ReferenceCacheManager::LookupCache;
using ResourceCache = ReferenceCacheManager::ResourceCache;
using LookupCachePtr = std::shared_ptr<const LookupCache>;

// The place of a lookup cache's pointer; null: not loaded. Readers and clearers of a cache hold its
// own mutex, and no thread ever holds two of these. But one load fills both lookup caches under the
// one mutex that its caller chose, so that the place itself must be safe to share.
//
// std::atomic<std::shared_ptr> would say the same, but in GCC 12's library its load() is a data
// race with a later store (it lets go of the pointer with relaxed order).
class LookupSlot {
  public:
    [[nodiscard]] LookupCachePtr load() const { return std::atomic_load(&m_pointer); }
    void store(LookupCachePtr pointer) { std::atomic_store(&m_pointer, std::move(pointer)); }
    [[nodiscard]] LookupCachePtr takeOut() {
        return std::atomic_exchange(&m_pointer, LookupCachePtr());
    }

  private:
    LookupCachePtr m_pointer;
};

Mutex s_lookupCacheMutex;
Mutex s_uninstalledLookupCacheMutex;
Mutex s_resourceCacheMutex;
Mutex s_startupMutex;

LookupSlot s_lookupCache;
LookupSlot s_uninstalledLookupCache;
const LookupCachePtr s_emptyLookupCache = std::make_shared<const LookupCache>();

// Grows in place, so that a map that was handed out is always the whole cache. Never null.
std::shared_ptr<ResourceCache> s_resourceCache VELTRA_GUARDED_BY(s_resourceCacheMutex) =
    std::make_shared<ResourceCache>();

bool m_startupProcessDone VELTRA_GUARDED_BY(s_startupMutex) = false;

constexpr std::array s_classLikeTypes = {RefEntityType::Class, RefEntityType::Enumeration,
                                         RefEntityType::Interface};

// Fills both lookup caches or neither. While either is filled there is nothing to do: the parser
// reads both in one go, and a cache that was cleared alone stays empty until its twin is cleared
// too, so that the two always come from the same reading.
// Requires: the caller holds one of the two lookup mutexes.
void loadLookupCaches() {
    if (s_lookupCache.load() || s_uninstalledLookupCache.load())
        return;
    docparser::ParsingResults results = DocResourceParser::getResourceLookupFiles();
    s_lookupCache.store(std::make_shared<const LookupCache>(std::move(results.installed)));
    s_uninstalledLookupCache.store(
        std::make_shared<const LookupCache>(std::move(results.uninstalled)));
}

LookupCachePtr orEmpty(const LookupCachePtr& cache) {
    return cache ? cache : s_emptyLookupCache;
}

}  // namespace

std::map<std::u16string, ProductMatchData> ReferenceCacheManager::GetProductsWithEntity(
    const api::ReferenceRequest& request, SearchMethod method) {
    PopulateLookupCache();
    const LookupCachePtr lookup = GetLookupCache();
    return EntitySearch(request, method).run(*lookup);
}

bool ReferenceCacheManager::IsNameAndPurposeContentMatch(const std::u16string& searchText,
                                                         const std::u16string& name,
                                                         const std::u16string& purpose,
                                                         bool caseSensitive) {
    return isNameOrPurposePart(searchText, name, purpose, caseSensitive);
}

bool ReferenceCacheManager::IsClassLikeType(RefEntityType::Value type) {
    return std::ranges::find(s_classLikeTypes, type) != s_classLikeTypes.end();
}

std::shared_ptr<const LookupCache> ReferenceCacheManager::GetLookupCache() {
    const MutexLock lock(s_lookupCacheMutex);
    return orEmpty(s_lookupCache.load());
}

std::shared_ptr<const LookupCache> ReferenceCacheManager::GetUninstalledLookupCache() {
    const MutexLock lock(s_uninstalledLookupCacheMutex);
    return orEmpty(s_uninstalledLookupCache.load());
}

std::shared_ptr<const ResourceCache> ReferenceCacheManager::GetResourceCache() {
    const MutexLock lock(s_resourceCacheMutex);
    return s_resourceCache;
}

std::shared_ptr<const ReferenceCacheManager::Resource>
ReferenceCacheManager::GetResourceCacheForProduct(const std::u16string& resourceFile,
                                                  const std::u16string& product) {
    // Held while the file is parsed, so that two threads never parse at once.
    const MutexLock lock(s_resourceCacheMutex);
    ResourceCache& cache = *s_resourceCache;
    if (const auto cached = cache.find(product); cached != cache.end())
        return cached->second;

    for (auto& [name, resource] : DocResourceParser::getResourceFile(resourceFile))
        if (!cache.contains(name))
            cache.emplace(name, std::make_shared<const Resource>(resource.getHeaderInfo(),
                                                                 resource.takeItems()));
    const auto parsed = cache.find(product);
    return parsed == cache.end() ? nullptr : parsed->second;
}

void ReferenceCacheManager::PopulateLookupCache() {
    const MutexLock lock(s_lookupCacheMutex);
    loadLookupCaches();
}

void ReferenceCacheManager::PopulateUninstalledLookupCache() {
    const MutexLock lock(s_uninstalledLookupCacheMutex);
    loadLookupCaches();
}

void ReferenceCacheManager::PopulateLookupCaches() {
    PopulateLookupCache();
    PopulateUninstalledLookupCache();
}

void ReferenceCacheManager::PopulateResourceCache() {
    const docparser::ReferenceRoots roots = DocResourceParser::getReferenceRoots();
    const auto locales = DocResourceParser::ParsingTools::getSupportedDocLocales();
    // Products are listed for all locales at once; the parser has no use for a single one.
    const docparser::ProductLists lists =
        DocResourceParser::getAllProducts(roots.docRoot, locales, u"_locale_unused");
    std::vector<std::u16string> installed;
    for (const auto& product : lists.products)
        if (DocResourceParser::isProductInstalled(product.getName()))
            installed.push_back(product.getName());
    for (const auto& name : installed) {
        try {
            static_cast<void>(GetResourceCacheForProduct(name, name));
        } catch (const DocParserException&) {
            // One product's broken file leaves the others usable.
        }
    }
}

void ReferenceCacheManager::PopulateAllCaches() {
    PopulateLookupCaches();
    PopulateResourceCache();
    SetStartupDone();
}

void ReferenceCacheManager::ClearLookupCache() {
    LookupCachePtr dropped;  // dies after the lock is released
    const MutexLock lock(s_lookupCacheMutex);
    dropped = s_lookupCache.takeOut();
}

void ReferenceCacheManager::ClearUninstalledLookupCache() {
    LookupCachePtr dropped;  // dies after the lock is released
    const MutexLock lock(s_uninstalledLookupCacheMutex);
    dropped = s_uninstalledLookupCache.takeOut();
}

void ReferenceCacheManager::ClearLookupCaches() {
    ClearLookupCache();
    ClearUninstalledLookupCache();
}

void ReferenceCacheManager::ClearResourceCache() {
    auto replacement = std::make_shared<ResourceCache>();  // takes the old map along when it dies
    const MutexLock lock(s_resourceCacheMutex);
    s_resourceCache.swap(replacement);
}

void ReferenceCacheManager::ClearAllCaches() {
    ClearLookupCache();
    ClearUninstalledLookupCache();
    ClearResourceCache();
    DocResourceParser::clearSupportPackageCaches();
}

bool ReferenceCacheManager::IsStartupDone() {
    const MutexLock lock(s_startupMutex);
    return m_startupProcessDone;
}

void ReferenceCacheManager::SetStartupDone() {
    const MutexLock lock(s_startupMutex);
    m_startupProcessDone = true;
}

}  // namespace reference::cache_manager
