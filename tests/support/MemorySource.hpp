#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "docparser/DocSource.hpp"
#include "docset/ProductDocumentation.hpp"

namespace reference::tests {

// Documentation that lives in memory: products are added before the source is used. Counts its
// calls, and fails where a test wants it to.
class MemorySource : public docparser::DocSource {
  public:
    // The header's reference file name is "<short name>.ref" and holds this product alone, until
    // shareFile() says otherwise.
    void add(docset::ProductDocumentation product, bool installed = true);

    // Files `product` in the reference file of that name; several products may share one.
    void shareFile(const std::u16string& product, const std::u16string& referenceFileName);

    // Called with the file's name before a reference file is handed out; what it throws is thrown.
    void onResourceFile(std::function<void(const std::u16string&)> hook);
    // Called before lookup files are handed out.
    void onLookupFiles(std::function<void()> hook);

    [[nodiscard]] int lookupCalls() const noexcept { return m_lookupCalls; }
    [[nodiscard]] int resourceCalls() const noexcept { return m_resourceCalls; }
    [[nodiscard]] int clearCalls() const noexcept { return m_clearCalls; }
    // The locale that getAllProducts was last given.
    [[nodiscard]] const std::u16string& lastLocale() const noexcept { return m_lastLocale; }

    docparser::ParsingResults getResourceLookupFiles() override;
    docparser::ReferenceResources getResourceFile(const std::u16string& resourceFile) override;
    docparser::ReferenceRoots getReferenceRoots() override;
    std::vector<std::u16string> getSupportedDocLocales() override;
    docparser::ProductLists getAllProducts(const std::u16string& docRoot,
                                           const std::vector<std::u16string>& locales,
                                           const std::u16string& locale) override;
    bool isProductInstalled(const std::u16string& product) override;
    void clearSupportPackageCaches() override;

  private:
    struct Product {
        docset::ProductDocumentation documentation;
        std::u16string referenceFileName;
        bool installed = true;
    };

    [[nodiscard]] static property::HeaderInfo headerOf(const Product& product);
    [[nodiscard]] static docparser::DocResource<property::RefItemLookup> lookupOf(
        const Product& product);

    // Constant while the source is in use.
    std::map<std::u16string, Product> m_products;
    std::function<void(const std::u16string&)> m_onResourceFile;
    std::function<void()> m_onLookupFiles;

    std::atomic<int> m_lookupCalls{0};
    std::atomic<int> m_resourceCalls{0};
    std::atomic<int> m_clearCalls{0};
    std::u16string m_lastLocale;  // used by one thread at a time
};

}  // namespace reference::tests
