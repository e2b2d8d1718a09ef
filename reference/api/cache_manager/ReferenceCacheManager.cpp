#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "docparser/DocParserException.hpp"
#include "docparser/DocResourceParser.hpp"
#include "foundation/core/Mutex.hpp"
#include "reference/api/cache_manager/EntitySearch.hpp"
#include "reference/api/cache_manager/LookupSnapshot.hpp"
#include "reference/api/cache_manager/dataChange.hpp"
#include "reference/api/cache_manager/resourceReading.hpp"

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

// The two lookup caches; null: not loaded.
struct LookupCaches {
    LookupCachePtr installed;
    LookupCachePtr uninstalled;

    [[nodiscard]] bool isLoaded() const noexcept { return installed || uninstalled; }
};

// Both lookup caches as one value that is replaced in one step. A load stores only what is still to
// be stored then: when the caches were cleared while it read, what it read may be out of date.
//
// std::atomic<std::shared_ptr> would say the same as these functions, but in GCC 12's library its
// load() is a data race with a later store (it lets go of the pointer with relaxed order).
class LookupState {
  public:
    using Value = std::shared_ptr<const LookupCaches>;

    // Never null. Two values are the same as long as nothing was stored or cleared between them.
    [[nodiscard]] Value load() const { return std::atomic_load(&m_value); }

    // Stores `caches`, if the value is still `expected`; else `expected` becomes what it is.
    [[nodiscard]] bool storeInPlaceOf(Value& expected, LookupCaches caches) {
        return std::atomic_compare_exchange_strong(
            &m_value, &expected, Value(std::make_shared<LookupCaches>(std::move(caches))));
    }

    // Stores what `change` makes of the value, and returns the old one.
    template <typename Change>
    Value update(const Change& change) {
        Value old = load();
        while (!storeInPlaceOf(old, change(*old))) {
        }
        return old;
    }

  private:
    Value m_value = std::make_shared<LookupCaches>();
};

// Who reads or changes a cache holds its mutex, so that a second load waits for the first. No
// thread ever holds two of these.
Mutex s_lookupCacheMutex;
Mutex s_uninstalledLookupCacheMutex;
Mutex s_resourceCacheMutex;

// Not guarded by one mutex: a load fills both caches under the one that its caller chose.
LookupState s_lookupCaches;
const LookupCachePtr s_emptyLookupCache = std::make_shared<const LookupCache>();

// Grows in place, so that a map that was handed out is always the whole cache. Never null.
std::shared_ptr<ResourceCache> s_resourceCache VELTRA_GUARDED_BY(s_resourceCacheMutex) =
    std::make_shared<ResourceCache>();

constexpr std::array s_classLikeTypes = {RefEntityType::Class, RefEntityType::Enumeration,
                                         RefEntityType::Interface};

// Fills both lookup caches or neither. While either is filled there is nothing to do: the parser
// reads both in one go, and a cache that was cleared alone stays empty until its twin is cleared
// too, so that the two always come from the same reading.
// Requires: the caller holds one of the two lookup mutexes.
void loadLookupCaches() {
    auto found = s_lookupCaches.load();
    while (!found->isLoaded()) {
        docparser::ParsingResults results = DocResourceParser::getResourceLookupFiles();
        if (s_lookupCaches.storeInPlaceOf(
                found,
                {.installed = std::make_shared<const LookupCache>(std::move(results.installed)),
                 .uninstalled =
                     std::make_shared<const LookupCache>(std::move(results.uninstalled))}))
            return;
    }
}

LookupCachePtr orEmpty(const LookupCachePtr& cache) {
    return cache ? cache : s_emptyLookupCache;
}

// Takes the items out of `resource`.
std::shared_ptr<const ReferenceCacheManager::Resource> toShared(
    ReferenceCacheManager::Resource& resource) {
    return std::make_shared<const ReferenceCacheManager::Resource>(resource.getHeaderInfo(),
                                                                   resource.takeItems());
}

}  // namespace

std::map<std::u16string, ProductMatchData> ReferenceCacheManager::GetProductsWithEntity(
    const api::ReferenceRequest& request, SearchMethod method) {
    return LookupSnapshot().productsWithEntity(request, method);
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
    return orEmpty(s_lookupCaches.load()->installed);
}

std::shared_ptr<const LookupCache> ReferenceCacheManager::GetUninstalledLookupCache() {
    const MutexLock lock(s_uninstalledLookupCacheMutex);
    return orEmpty(s_lookupCaches.load()->uninstalled);
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
            cache.emplace(name, toShared(resource));
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
    LookupState::Value dropped;  // dies after the lock is released
    const MutexLock lock(s_lookupCacheMutex);
    dropped = s_lookupCaches.update([](const LookupCaches& caches) {
        return LookupCaches{.installed = nullptr, .uninstalled = caches.uninstalled};
    });
}

void ReferenceCacheManager::ClearUninstalledLookupCache() {
    LookupState::Value dropped;  // dies after the lock is released
    const MutexLock lock(s_uninstalledLookupCacheMutex);
    dropped = s_lookupCaches.update([](const LookupCaches& caches) {
        return LookupCaches{.installed = caches.installed, .uninstalled = nullptr};
    });
}

// Both in one step. Between two steps a search would find one cache filled, load nothing and answer
// that there is nothing.
void ReferenceCacheManager::ClearLookupCaches() {
    LookupState::Value dropped;  // dies after the lock is released
    const MutexLock lock(s_lookupCacheMutex);
    dropped = s_lookupCaches.update([](const LookupCaches&) { return LookupCaches(); });
}

void ReferenceCacheManager::ClearResourceCache() {
    auto replacement = std::make_shared<ResourceCache>();  // takes the old map along when it dies
    const MutexLock lock(s_resourceCacheMutex);
    s_resourceCache.swap(replacement);
}

void ReferenceCacheManager::ClearAllCaches() {
    ClearLookupCaches();
    ClearResourceCache();
    publishDataChange();
    DocResourceParser::clearSupportPackageCaches();
}

std::shared_ptr<const LookupCache> loadedLookupCache() {
    const MutexLock lock(s_lookupCacheMutex);
    loadLookupCaches();
    return orEmpty(s_lookupCaches.load()->installed);
}

std::shared_ptr<const ReferenceCacheManager::Resource> readResourceAgain(
    const std::u16string& resourceFile, const std::u16string& product, bool replacesCached) {
    std::shared_ptr<const ReferenceCacheManager::Resource> dropped;  // dies outside the lock
    const MutexLock lock(s_resourceCacheMutex);
    ResourceCache& cache = *s_resourceCache;
    const auto cached = cache.find(product);
    // Another thread may have mended the cache while this one waited.
    if (cached != cache.end() &&
        cached->second->getHeaderInfo().getReferenceFileName() == resourceFile)
        return cached->second;

    auto resources = DocResourceParser::getResourceFile(resourceFile);
    const auto found = resources.find(product);
    if (found == resources.end())
        return nullptr;
    auto read = toShared(found->second);
    if (replacesCached)
        dropped = std::exchange(cache[product], read);
    return read;
}

}  // namespace reference::cache_manager
