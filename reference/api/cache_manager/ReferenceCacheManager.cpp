#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

#include <cstdint>
#include <span>

#include "docimage/unitBytes.hpp"
#include "docparser/DocResourceParser.hpp"
#include "foundation/core/NeverDestroyed.hpp"
#include "reference/api/cache_manager/dataChange.hpp"
#include "reference/api/cache_manager/referenceStore.hpp"
#include "reference/search/EntitySearch.hpp"

namespace reference::cache_manager {
namespace {

using docparser::DocResourceParser;
using foundation::core::NeverDestroyed;
using search::ReferenceStore;

// Whatever source the parser has at the time of a call.
class CurrentSource final : public docparser::DocSource {
  public:
    docparser::ParsingResults getResourceLookupFiles() override {
        return DocResourceParser::getResourceLookupFiles();
    }
    docparser::ReferenceResources getResourceFile(const std::u16string& resourceFile) override {
        return DocResourceParser::getResourceFile(resourceFile);
    }
    docparser::ReferenceRoots getReferenceRoots() override {
        return DocResourceParser::getReferenceRoots();
    }
    std::vector<std::u16string> getSupportedDocLocales() override {
        return DocResourceParser::ParsingTools::getSupportedDocLocales();
    }
    docparser::ProductLists getAllProducts(const std::u16string& docRoot,
                                           const std::vector<std::u16string>& locales,
                                           const std::u16string& locale) override {
        return DocResourceParser::getAllProducts(docRoot, locales, locale);
    }
    bool isProductInstalled(const std::u16string& product) override {
        return DocResourceParser::isProductInstalled(product);
    }
    void clearSupportPackageCaches() override { DocResourceParser::clearSupportPackageCaches(); }
    void passOverImages(const std::string& problem) override {
        DocResourceParser::passOverImages(problem);
    }
};

// Made when the library is loaded.
NeverDestroyed<ReferenceStore> s_store(std::make_shared<CurrentSource>());

}  // namespace

search::ReferenceStore& referenceStore() {
    return *s_store;
}

search::ReferenceRequestExt toExt(const api::ReferenceRequest& request) {
    return search::ReferenceRequestExt({.text = request.getEntityText(),
                                        .types = request.getTypes(),
                                        .products = request.getProducts(),
                                        .isAllTextMatch = request.isAllTextMatch(),
                                        .isCaseSensitive = request.isCaseSensitive(),
                                        .isExactMatch = request.isExactMatch()});
}

std::map<std::u16string, ProductMatchData> ReferenceCacheManager::GetProductsWithEntity(
    const api::ReferenceRequest& request, SearchMethod method) {
    const auto ext = toExt(request);
    return s_store->answer([&](const search::Snapshot& snapshot) {
        std::map<std::u16string, ProductMatchData> found;
        const search::LookupIndex* const index = snapshot.index();
        if (index == nullptr)
            return found;
        const auto add = [&](std::uint32_t number, std::span<const std::uint32_t> hrefs) {
            const auto& product = index->products()[number];
            ProductMatchData& data = found.try_emplace(found.end(), product.name)->second;
            data.referenceFileName = product.header.getReferenceFileName();
            const docimage::TextTable& stored = index->lookup(number).hrefs();
            for (const std::uint32_t href : hrefs)
                data.hrefs.emplace_hint(data.hrefs.end(), docimage::fromUnitBytes(stored[href]));
        };
        search::EntitySearch(*index, ext, toSearchMethod(method)).run(add);
        return found;
    });
}

bool ReferenceCacheManager::IsNameAndPurposeContentMatch(const std::u16string& searchText,
                                                         const std::u16string& name,
                                                         const std::u16string& purpose,
                                                         bool caseSensitive) {
    return search::isNameAndPurposeContentMatch(searchText, name, purpose, caseSensitive);
}

bool ReferenceCacheManager::IsClassLikeType(property::RefEntityType::Value type) {
    return search::isClassLikeType(type);
}

std::shared_ptr<const ReferenceCacheManager::LookupCache> ReferenceCacheManager::GetLookupCache() {
    return s_store->lookupCache();
}

std::shared_ptr<const ReferenceCacheManager::LookupCache>
ReferenceCacheManager::GetUninstalledLookupCache() {
    return s_store->uninstalledLookupCache();
}

std::shared_ptr<const ReferenceCacheManager::ResourceCache>
ReferenceCacheManager::GetResourceCache() {
    return s_store->resourceCache();
}

std::shared_ptr<const ReferenceCacheManager::Resource>
ReferenceCacheManager::GetResourceCacheForProduct(const std::u16string& resourceFile,
                                                  const std::u16string& product) {
    return s_store->resourceForProduct(resourceFile, product);
}

void ReferenceCacheManager::PopulateLookupCache() {
    s_store->populateLookupCache();
}

void ReferenceCacheManager::PopulateUninstalledLookupCache() {
    s_store->populateUninstalledLookupCache();
}

void ReferenceCacheManager::PopulateLookupCaches() {
    PopulateLookupCache();
    PopulateUninstalledLookupCache();
}

void ReferenceCacheManager::PopulateResourceCache() {
    s_store->populateResourceCache();
}

void ReferenceCacheManager::PopulateAllCaches() {
    PopulateLookupCaches();
    PopulateResourceCache();
    SetStartupDone();
}

void ReferenceCacheManager::ClearLookupCache() {
    s_store->clearLookupCache();
}

void ReferenceCacheManager::ClearUninstalledLookupCache() {
    s_store->clearUninstalledLookupCache();
}

void ReferenceCacheManager::ClearLookupCaches() {
    s_store->clearLookupCaches();
}

void ReferenceCacheManager::ClearResourceCache() {
    s_store->clearResourceCache();
}

void ReferenceCacheManager::ClearAllCaches() {
    ClearLookupCaches();
    ClearResourceCache();
    try {
        publishDataChange();
    } catch (...) {
        s_store->clearSupportPackageCaches();
        throw;
    }
    s_store->clearSupportPackageCaches();
}

}  // namespace reference::cache_manager
