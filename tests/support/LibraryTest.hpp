#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "docset/ProductDocumentation.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "support/MemorySource.hpp"

namespace reference::tests {

// Builds the documentation of one product, an entity at a time.
class ProductBuilder {
  public:
    // The help folder is the short name.
    explicit ProductBuilder(std::u16string shortName);

    // A lookup record alone.
    ProductBuilder& record(
        const std::u16string& key, property::RefEntityType::Value type, const std::u16string& href,
        std::u16string purpose = {},
        property::FunctionType::Value functionType = property::FunctionType::Function);

    // An item alone, filed under its own href.
    ProductBuilder& item(property::RefItem item);

    // A record and the item that it leads to.
    ProductBuilder& entity(const std::u16string& name, property::RefEntityType::Value type,
                           const std::u16string& href, std::u16string purpose = {});

    // A class with its record, its item and a record for each property; each group is a title and
    // the properties' names. A property's own href is the class's with "#name" after it, its
    // purpose "purpose of " and its name.
    struct Group {
        std::u16string title;
        std::vector<std::u16string> properties;
    };
    ProductBuilder& classWith(const std::u16string& name, const std::u16string& packageName,
                              const std::u16string& href, const std::vector<Group>& groups,
                              property::RefEntityType::Value type = property::RefEntityType::Class);

    // What examples call a module or class, and how often.
    ProductBuilder& alias(const std::u16string& alias, const std::u16string& name,
                          std::uint32_t count = 1);

    [[nodiscard]] docset::ProductDocumentation build() const { return m_product; }

  private:
    docset::ProductDocumentation m_product;
};

// The library over documentation in memory: add products to source() in the test's body, before the
// first request. Every test begins with empty caches and ends with the default source.
class LibraryTest : public ::testing::Test {
  protected:
    LibraryTest();
    ~LibraryTest() override;

    [[nodiscard]] MemorySource& source() { return *m_source; }

    void add(const ProductBuilder& product, bool installed = true) {
        m_source->add(product.build(), installed);
    }

    // What the plain retriever answers, as dumps.
    static std::vector<std::string> retrieve(const api::ReferenceRequest& request);

  private:
    std::shared_ptr<MemorySource> m_source = std::make_shared<MemorySource>();
};

}  // namespace reference::tests
