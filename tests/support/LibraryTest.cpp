#include "support/LibraryTest.hpp"

#include <utility>

#include "docparser/DocResourceParser.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Items.hpp"
#include "support/Print.hpp"

namespace reference::tests {

using cache_manager::ReferenceCacheManager;
using docparser::DocResourceParser;
using namespace property;

ProductBuilder::ProductBuilder(std::u16string shortName) {
    m_product.header = {.shortName = shortName,
                        .displayName = u"The " + shortName,
                        .helpFolder = shortName,
                        .version = u"1.0"};
}

ProductBuilder& ProductBuilder::record(const std::u16string& key, RefEntityType::Value type,
                                       const std::u16string& href, std::u16string purpose,
                                       FunctionType::Value functionType) {
    m_product.entities[key].emplace_back(type, functionType, href, std::move(purpose));
    return *this;
}

ProductBuilder& ProductBuilder::item(RefItem item) {
    m_product.pages[item.getHref()].push_back(std::move(item));
    return *this;
}

ProductBuilder& ProductBuilder::entity(const std::u16string& name, RefEntityType::Value type,
                                       const std::u16string& href, std::u16string purpose) {
    record(name, type, href, purpose);
    return item(makeItem({.href = href,
                          .entities = {RefEntity(type, name, FunctionType::Function)},
                          .purpose = std::move(purpose)}));
}

ProductBuilder& ProductBuilder::classWith(const std::u16string& name,
                                          const std::u16string& packageName,
                                          const std::u16string& href,
                                          const std::vector<Group>& groups,
                                          RefEntityType::Value type) {
    record(name, type, href, {}, FunctionType::NotCallable);
    std::vector<ClassPropertyGroup> propertyGroups;
    for (const auto& group : groups) {
        std::vector<ClassProperty> properties;
        for (const auto& property : group.properties) {
            properties.emplace_back(property, u"purpose of " + property, href + u"#" + property,
                                    std::vector<std::u16string>{u"value of " + property});
            record(name + u"." + property, RefEntityType::Property, href, u"purpose of " + property,
                   FunctionType::Property);
        }
        propertyGroups.emplace_back(group.title, std::move(properties));
    }
    return item(makeItem({.href = href,
                          .entities = {RefEntity(type, name, FunctionType::NotCallable)},
                          .packageName = packageName,
                          .purpose = u"The class " + name,
                          .introduced = u"3.2",
                          .description = u"What the class is for.",
                          .deprecationStatus = DeprecationStatus::Deprecated,
                          .classPropertyGroups = std::move(propertyGroups)}));
}

ProductBuilder& ProductBuilder::alias(const std::u16string& alias, const std::u16string& name,
                                      std::uint32_t count) {
    m_product.aliases[alias][name] = count;
    return *this;
}

LibraryTest::LibraryTest() {
    DocResourceParser::setSource(m_source);
    ReferenceCacheManager::ClearLookupCaches();
    ReferenceCacheManager::ClearResourceCache();
}

LibraryTest::~LibraryTest() {
    DocResourceParser::setSource(nullptr);
    ReferenceCacheManager::ClearAllCaches();
}

std::vector<std::string> LibraryTest::retrieve(const api::ReferenceRequest& request) {
    return dump(api::ReferenceDataRetriever(request).getReferenceData());
}

}  // namespace reference::tests
