#include "reference/search/ReferenceStore.hpp"

#include <algorithm>
#include <utility>

#include "docparser/DocParserException.hpp"

namespace reference::search {

using docparser::DocParserException;
using foundation::core::Mutex;
using foundation::core::MutexLock;

ReferenceStore::ReferenceStore(std::shared_ptr<docparser::DocSource> source)
    : m_source(std::move(source)),
      m_emptyLookupCache(std::make_shared<const LookupResources>()),
      m_resourceCache(std::make_shared<ReferenceResources>()) {}

Snapshot ReferenceStore::snapshot() {
    auto caches = m_lookupCaches.load();
    if (!caches->isLoaded())
        caches = loadLookupCaches(m_lookupCacheMutex);
    return {*this, std::move(caches)};
}

// Holds `mutex`, that of one of the two caches: a cache that was cleared alone stays empty until
// its twin is cleared too, so that the two always come from the same reading.
//
// Returns what is cached then, or what was read, if the caches were cleared meanwhile: they stay
// empty, as if they had been cleared right after the load. Reading again until nothing is cleared
// might never end.
std::shared_ptr<const LookupCaches> ReferenceStore::loadLookupCaches(Mutex& mutex) {
    const MutexLock lock(mutex);
    auto found = m_lookupCaches.load();
    if (found->isLoaded())
        return found;
    docparser::ParsingResults results = m_source->getResourceLookupFiles();
    auto read = std::make_shared<const LookupCaches>(LookupCaches{
        .reading = std::make_shared<Reading>(
            std::make_shared<const LookupResources>(std::move(results.installed)),
            std::move(results.installedIndex)),
        .uninstalled = std::make_shared<const LookupResources>(std::move(results.uninstalled))});
    m_lookupCaches.storeInPlaceOf(found, read);
    return read;
}

std::shared_ptr<const LookupResources> ReferenceStore::lookupCache() {
    const MutexLock lock(m_lookupCacheMutex);
    const auto reading = m_lookupCaches.load()->reading;
    return reading ? reading->sharedInstalled() : m_emptyLookupCache;
}

std::shared_ptr<const LookupResources> ReferenceStore::uninstalledLookupCache() {
    const MutexLock lock(m_uninstalledLookupCacheMutex);
    const auto uninstalled = m_lookupCaches.load()->uninstalled;
    return uninstalled ? uninstalled : m_emptyLookupCache;
}

std::shared_ptr<const ReferenceResources> ReferenceStore::resourceCache() {
    const MutexLock lock(m_resourceCacheMutex);
    return m_resourceCache;
}

std::shared_ptr<const ReferenceResource> ReferenceStore::resourceForProduct(
    const std::u16string& resourceFile, const std::u16string& product) {
    // Held while the file is parsed, so that two threads never parse at once.
    const MutexLock lock(m_resourceCacheMutex);
    if (auto cached = findCached(product))
        return cached;
    return parseIntoCache(resourceFile, product, nullptr);
}

void ReferenceStore::populateLookupCache() {
    static_cast<void>(loadLookupCaches(m_lookupCacheMutex));
}

void ReferenceStore::populateUninstalledLookupCache() {
    static_cast<void>(loadLookupCaches(m_uninstalledLookupCacheMutex));
}

void ReferenceStore::populateResourceCache() {
    const docparser::ReferenceRoots roots = m_source->getReferenceRoots();
    const auto locales = m_source->getSupportedDocLocales();
    // Products are listed for all locales at once; the source has no use for a single one.
    const docparser::ProductLists lists =
        m_source->getAllProducts(roots.docRoot, locales, u"_locale_unused");
    std::vector<std::u16string> installed;
    for (const auto& product : lists.products)
        if (m_source->isProductInstalled(product.getName()))
            installed.push_back(product.getName());
    for (const auto& name : installed) {
        try {
            static_cast<void>(resourceForProduct(name, name));
        } catch (const DocParserException&) {
            // One product's broken file leaves the others usable.
        }
    }
}

void ReferenceStore::clearLookupCache() {
    LookupState::Value dropped;
    const MutexLock lock(m_lookupCacheMutex);
    dropped = m_lookupCaches.update([](LookupCaches caches) {
        caches.reading.reset();
        return caches;
    });
}

void ReferenceStore::clearUninstalledLookupCache() {
    LookupState::Value dropped;
    const MutexLock lock(m_uninstalledLookupCacheMutex);
    dropped = m_lookupCaches.update([](LookupCaches caches) {
        caches.uninstalled.reset();
        return caches;
    });
}

void ReferenceStore::clearLookupCaches() {
    LookupState::Value dropped;
    const MutexLock lock(m_lookupCacheMutex);
    dropped = m_lookupCaches.replace(m_noLookupCaches.take());
}

void ReferenceStore::clearResourceCache() {
    std::shared_ptr<ReferenceResources> replacement;  // takes the old map along
    std::shared_ptr<ReadingPages> dropped;
    const MutexLock lock(m_resourceCacheMutex);
    replacement = m_noResources.take();
    m_resourceCache.swap(replacement);
    m_origins.clear();
    if (const auto reading = m_lookupCaches.load()->reading)
        dropped = reading->dropPages();
}

void ReferenceStore::clearSupportPackageCaches() {
    m_source->clearSupportPackageCaches();
}

// An image that was replaced is no reason to do without images.
void ReferenceStore::recoverFrom(const docimage::DamagedImage& damage) {
    if (dynamic_cast<const docimage::ReplacedImage*>(&damage) == nullptr)
        m_source->passOverImages(damage.what());
    clearLookupCaches();
    clearResourceCache();
}

// Null when the cache does not hold the product.
ReferenceStore::ResourcePtr ReferenceStore::findCached(const std::u16string& product) const {
    const auto cached = m_resourceCache->find(product);
    return cached == m_resourceCache->end() ? nullptr : cached->second;
}

// Parses the file for a product that is not cached, and caches all that the file holds and the
// cache does not. `reading`: the lookups that name the file; null for none.
ReferenceStore::ResourcePtr ReferenceStore::parseIntoCache(
    const std::u16string& resourceFile, const std::u16string& product,
    const std::shared_ptr<const Reading>& reading) {
    for (auto& [name, resource] : m_source->getResourceFile(resourceFile)) {
        if (m_resourceCache->contains(name))
            continue;
        m_origins.insert_or_assign(name, reading);
        m_resourceCache->emplace(name,
                                 std::make_shared<const ReferenceResource>(std::move(resource)));
    }
    return findCached(product);
}

// Null when the file does not hold the product.
ReferenceStore::ResourcePtr ReferenceStore::parseAlone(const std::u16string& resourceFile,
                                                       const std::u16string& product) {
    auto resources = m_source->getResourceFile(resourceFile);
    const auto found = resources.find(product);
    return found == resources.end()
               ? nullptr
               : std::make_shared<const ReferenceResource>(std::move(found->second));
}

// Whether a cached resource was read for these lookups. Where that is not known, the name of its
// file decides: it must be a file that these lookups know. It need not be the file that the product
// is listed with, because a product that came along in another product's file stays cached from
// there. Where the source does not name its files, the resource is accepted.
bool ReferenceStore::isOfReading(const Reading& reading, const LookupIndex::Product& product,
                                 const ReferenceResource& resource) const {
    const auto origin = m_origins.find(product.name);
    if (origin != m_origins.end() && origin->second.lock().get() == &reading)
        return true;
    const std::u16string& file = resource.getHeaderInfo().getReferenceFileName();
    const std::u16string& listed = product.header.getReferenceFileName();
    if (file == listed || file.empty() || listed.empty())
        return true;
    return std::ranges::any_of(reading.installed(), [&](const auto& other) {
        return other.second.getHeaderInfo().getReferenceFileName() == file;
    });
}

// The resource of `product` for a request that works with `reading`. It is the cached one, unless
// that was read for other lookups and comes from a file that these do not know, since it may then
// be in another language. In that case the file that these name is read, once for all requests of
// the reading; if that fails, the cached one serves them. The cache stays as it is: what it has
// handed out is never replaced. A request whose lookups have been cleared does not put anything
// into it, either.
ReferenceStore::ResourcePtr ReferenceStore::resourceFor(const std::shared_ptr<Reading>& reading,
                                                        const LookupIndex::Product& product) {
    // Held while a file is parsed, so that two threads never parse at once.
    const MutexLock lock(m_resourceCacheMutex);
    auto& own = reading->ownResources;
    if (const auto known = own.find(product.name); known != own.end())
        return known->second;

    ResourcePtr cached = findCached(product.name);
    if (cached && isOfReading(*reading, product, *cached))
        return cached;
    const std::u16string& resourceFile = product.header.getReferenceFileName();
    // While the lookups are current, a change of language has yet to clear the resource cache, and
    // will clear what is put into it now.
    if (!cached && m_lookupCaches.load()->reading == reading)
        return parseIntoCache(resourceFile, product.name, reading);

    ResourcePtr resource;
    try {
        resource = parseAlone(resourceFile, product.name);
    } catch (...) {
        // The cached one serves this request and the later ones of the reading.
        if (!cached)
            throw;
    }
    if (!resource)
        resource = cached;
    if (resource)
        own.emplace(product.name, resource);
    return resource;
}

Snapshot::Snapshot(ReferenceStore& store, std::shared_ptr<const LookupCaches> caches)
    : m_store(store), m_caches(std::move(caches)) {}

const LookupIndex* Snapshot::index() const {
    return m_caches->reading ? &m_caches->reading->index() : nullptr;
}

const JoinedPages* Snapshot::pagesOf(std::uint32_t number) const {
    const std::shared_ptr<Reading>& reading = m_caches->reading;
    if (!m_pages)
        m_pages = reading->pages();
    if (const JoinedPages* known = m_pages->find(number))
        return known;
    const LookupIndex::Product& product = reading->index().products()[number];
    const auto resource = m_store.resourceFor(reading, product);
    if (!resource)
        return nullptr;
    return &m_pages->keep(number, std::make_unique<const JoinedPages>(
                                      reading->index().lookup(number),
                                      std::make_shared<const ProductPages>(resource)));
}

}  // namespace reference::search
