#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "docparser/DocParserException.hpp"
#include "docparser/DocResourceParser.hpp"
#include "foundation/core/Mutex.hpp"
#include "foundation/core/NeverDestroyed.hpp"
#include "reference/api/cache_manager/EntitySearch.hpp"
#include "reference/api/cache_manager/LookupSnapshot.hpp"
#include "reference/api/cache_manager/dataChange.hpp"
#include "reference/api/cache_manager/requestCaches.hpp"

namespace reference::cache_manager {
namespace {

using docparser::DocParserException;
using docparser::DocResourceParser;
using foundation::core::Mutex;
using foundation::core::MutexLock;
using foundation::core::NeverDestroyed;
using property::RefEntityType;
using LookupCache = ReferenceCacheManager::LookupCache;
using ResourceCache = ReferenceCacheManager::ResourceCache;

// Code that reads or changes a cache holds its mutex, so that a second load waits for the first. No
// thread ever holds two of these.
Mutex s_lookupCacheMutex;
Mutex s_uninstalledLookupCacheMutex;
Mutex s_resourceCacheMutex;

// No single mutex guards these: a load fills both caches under the one that its caller chose.
NeverDestroyed<LookupState> s_lookupCaches;
const NeverDestroyed<LookupCachePtr> s_emptyLookupCache(std::make_shared<const LookupCache>());

// Grows in place, so that a map that was handed out is always the whole cache. Never null.
NeverDestroyed<std::shared_ptr<ResourceCache>> s_resourceCache
    VELTRA_GUARDED_BY(s_resourceCacheMutex)(std::make_shared<ResourceCache>());

// The reading of the lookups whose headers named the file that a cached resource was read from. No
// entry for resources that were read by a product's name, at start-up or for clients.
using Origins = std::map<std::u16string, std::weak_ptr<const LookupReading>>;
NeverDestroyed<Origins> s_origins VELTRA_GUARDED_BY(s_resourceCacheMutex);

constexpr std::array s_classLikeTypes = {RefEntityType::Class, RefEntityType::Enumeration,
                                         RefEntityType::Interface};

// Fills both lookup caches or neither, holding `mutex`, one of their two. While either is filled
// there is nothing to do: the parser reads both in one go, and a cache that was cleared alone stays
// empty until its twin is cleared too, so that the two always come from the same reading.
//
// Returns what is cached then, or what was read, if the caches were cleared meanwhile: they stay
// empty, as if they had been cleared right after the load. Reading again until nothing is cleared
// might never end.
std::shared_ptr<const LookupCaches> loadLookupCaches(Mutex& mutex) {
    const MutexLock lock(mutex);
    auto found = s_lookupCaches->load();
    if (found->isLoaded())
        return found;
    docparser::ParsingResults results = DocResourceParser::getResourceLookupFiles();
    auto read = std::make_shared<const LookupCaches>(LookupCaches{
        .installed = std::make_shared<const LookupCache>(std::move(results.installed)),
        .uninstalled = std::make_shared<const LookupCache>(std::move(results.uninstalled)),
        .reading = std::make_shared<LookupReading>()});
    s_lookupCaches->storeInPlaceOf(found, read);
    return read;
}

LookupCachePtr orEmpty(const LookupCachePtr& cache) {
    return cache ? cache : *s_emptyLookupCache;
}

// Takes the items out of `resource`.
ResourcePtr toShared(ReferenceCacheManager::Resource& resource) {
    return std::make_shared<const ReferenceCacheManager::Resource>(resource.getHeaderInfo(),
                                                                   resource.takeItems());
}

// Null when the cache does not hold the product.
ResourcePtr findCached(const std::u16string& product) VELTRA_REQUIRES(s_resourceCacheMutex) {
    const ResourceCache& cache = **s_resourceCache;
    const auto cached = cache.find(product);
    return cached == cache.end() ? nullptr : cached->second;
}

// Parses the file for a product that is not cached, and caches all that the file holds and the
// cache does not. `reading`: the lookups that name the file; null for none.
ResourcePtr parseIntoCache(const std::u16string& resourceFile, const std::u16string& product,
                           const std::shared_ptr<const LookupReading>& reading)
    VELTRA_REQUIRES(s_resourceCacheMutex) {
    ResourceCache& cache = **s_resourceCache;
    for (auto& [name, resource] : DocResourceParser::getResourceFile(resourceFile)) {
        if (cache.contains(name))
            continue;
        s_origins->insert_or_assign(name, reading);
        cache.emplace(name, toShared(resource));
    }
    return findCached(product);
}

// Null when the file does not hold the product.
ResourcePtr parseAlone(const std::u16string& resourceFile, const std::u16string& product) {
    auto resources = DocResourceParser::getResourceFile(resourceFile);
    const auto found = resources.find(product);
    return found == resources.end() ? nullptr : toShared(found->second);
}

// Whether a cached resource was read for these lookups. Where that is not known, the name of its
// file decides: it must be a file that these lookups know. It need not be the file that the product
// is listed with, because a product that came along in another product's file stays cached from
// there. Where the source does not name its files, the resource is accepted.
bool isOfReading(const LookupCaches& lookups, const std::u16string& product,
                 const ReferenceCacheManager::Resource& resource,
                 const std::u16string& resourceFile) VELTRA_REQUIRES(s_resourceCacheMutex) {
    const auto origin = s_origins->find(product);
    if (origin != s_origins->end() && origin->second.lock() == lookups.reading)
        return true;
    const std::u16string& file = resource.getHeaderInfo().getReferenceFileName();
    if (file == resourceFile || file.empty() || resourceFile.empty())
        return true;
    return std::ranges::any_of(*lookups.installed, [&](const auto& other) {
        return other.second.getHeaderInfo().getReferenceFileName() == file;
    });
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
    return orEmpty(s_lookupCaches->load()->installed);
}

std::shared_ptr<const LookupCache> ReferenceCacheManager::GetUninstalledLookupCache() {
    const MutexLock lock(s_uninstalledLookupCacheMutex);
    return orEmpty(s_lookupCaches->load()->uninstalled);
}

std::shared_ptr<const ResourceCache> ReferenceCacheManager::GetResourceCache() {
    const MutexLock lock(s_resourceCacheMutex);
    return *s_resourceCache;
}

std::shared_ptr<const ReferenceCacheManager::Resource>
ReferenceCacheManager::GetResourceCacheForProduct(const std::u16string& resourceFile,
                                                  const std::u16string& product) {
    // Held while the file is parsed, so that two threads never parse at once.
    const MutexLock lock(s_resourceCacheMutex);
    if (auto cached = findCached(product))
        return cached;
    return parseIntoCache(resourceFile, product, nullptr);
}

void ReferenceCacheManager::PopulateLookupCache() {
    static_cast<void>(loadLookupCaches(s_lookupCacheMutex));
}

void ReferenceCacheManager::PopulateUninstalledLookupCache() {
    static_cast<void>(loadLookupCaches(s_uninstalledLookupCacheMutex));
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
    dropped = s_lookupCaches->update([](LookupCaches caches) {
        caches.installed.reset();
        caches.reading.reset();
        return caches;
    });
}

void ReferenceCacheManager::ClearUninstalledLookupCache() {
    LookupState::Value dropped;  // dies after the lock is released
    const MutexLock lock(s_uninstalledLookupCacheMutex);
    dropped = s_lookupCaches->update([](LookupCaches caches) {
        caches.uninstalled.reset();
        return caches;
    });
}

// Both in one step. Between two steps a search would find one cache filled, load nothing and answer
// that there is nothing.
void ReferenceCacheManager::ClearLookupCaches() {
    LookupState::Value dropped;  // dies after the lock is released
    const MutexLock lock(s_lookupCacheMutex);
    dropped = s_lookupCaches->update([](const LookupCaches&) { return LookupCaches(); });
}

void ReferenceCacheManager::ClearResourceCache() {
    auto replacement = std::make_shared<ResourceCache>();  // takes the old map along when it dies
    const MutexLock lock(s_resourceCacheMutex);
    s_resourceCache->swap(replacement);
    s_origins->clear();
}

void ReferenceCacheManager::ClearAllCaches() {
    ClearLookupCaches();
    ClearResourceCache();
    publishDataChange();
    DocResourceParser::clearSupportPackageCaches();
}

std::shared_ptr<const LookupCaches> loadedLookupCaches() {
    return loadLookupCaches(s_lookupCacheMutex);
}

ResourcePtr resourceFor(const LookupCaches& lookups, const std::u16string& product,
                        const std::u16string& resourceFile) {
    // Held while a file is parsed, so that two threads never parse at once.
    const MutexLock lock(s_resourceCacheMutex);
    auto& own = lookups.reading->ownResources;
    if (const auto known = own.find(product); known != own.end())
        return known->second;

    ResourcePtr cached = findCached(product);
    if (cached && isOfReading(lookups, product, *cached, resourceFile))
        return cached;
    // While the lookups are current, a change of language has yet to clear the resource cache, and
    // will clear what is put into it now.
    if (!cached && s_lookupCaches->load()->reading == lookups.reading)
        return parseIntoCache(resourceFile, product, lookups.reading);

    ResourcePtr resource;
    try {
        resource = parseAlone(resourceFile, product);
    } catch (...) {
        // The cached one serves this request and the later ones of the reading.
        if (!cached)
            throw;
    }
    if (!resource)
        resource = cached;
    if (resource)
        own.emplace(product, resource);
    return resource;
}

}  // namespace reference::cache_manager
