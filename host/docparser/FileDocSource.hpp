#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "docparser/DocSource.hpp"
#include "docset/ProductSource.hpp"
#include "foundation/core/Mutex.hpp"
#include "foundation/core/export.hpp"

namespace reference::docparser {

class Listing;
struct ListedSet;

// Which documentation sets to read, and in which language.
struct VELTRA_HOST_API DocumentationLocation {
    std::filesystem::path docRoot;
    std::vector<std::filesystem::path> supportPackageRoots;
    // A locale ("ja_JP"); empty for each set's first one.
    std::string language;

    // From the settings of the current context; if their root is empty, from the environment
    // variable VELTRA_DOC_ROOT; failing that, the set installed with the library.
    [[nodiscard]] static DocumentationLocation current();

    friend bool operator==(const DocumentationLocation&, const DocumentationLocation&) = default;
};

// What the documentation roots list of one product. Texts in UTF-8 but for the name.
struct ListedProduct {
    std::u16string shortName;
    bool installed = false;
    // The locale that the product is read in.
    std::string locale;
    // The documentation set that it is read from.
    std::filesystem::path root;
    // What it was imported from, in that locale; nothing where the set does not say.
    std::optional<docset::ProductSource> source = std::nullopt;
};

// Reads documentation sets from folders: the documentation root and the support packages. A product
// that an earlier root has hides one of the same short name in a later one. A product that lacks
// the wanted locale is read in the first of its set's locales that it has.
//
// The documentation root's manifest is read anew with each getResourceLookupFiles(), and what it
// said then holds until the next, so that a product is never read half from one edition and half
// from another. Support packages' manifests are kept until clearSupportPackageCaches().
//
// Where a compiled image stands beside a file and is of it, the image is opened in place of the
// file. An image that cannot be used is passed over with an information on the log channel
// "docparser", and the file is read. Several files are read at the same time. Where the root has an
// index that is of its files, the image of a lookup file is opened when its records are first asked
// for.
//
// A support package that cannot be read, and a product whose lookup file cannot, are left out and
// reported as warnings on the log channel "docparser". Everything else that cannot be read raises
// DocParserException. Any thread.
class VELTRA_HOST_API FileDocSource final : public DocSource {
  public:
    using Locate = std::function<DocumentationLocation()>;

    // Reads what DocumentationLocation::current() says at each call.
    FileDocSource();

    // Reads what `locate` says, which is asked at each call, from any thread.
    explicit FileDocSource(Locate locate);

    ~FileDocSource() override;

    ParsingResults getResourceLookupFiles() override;

    // `resourceFile` may be any file below one of the roots, also one that the manifest no longer
    // names. If products are now read from it, its other products, which are read from another
    // file, are left out. Throws DocParserException when there is neither such a file nor such a
    // product.
    ReferenceResources getResourceFile(const std::u16string& resourceFile) override;

    ReferenceRoots getReferenceRoots() override;
    std::vector<std::u16string> getSupportedDocLocales() override;
    ProductLists getAllProducts(const std::u16string& docRoot,
                                const std::vector<std::u16string>& locales,
                                const std::u16string& locale) override;
    bool isProductInstalled(const std::u16string& product) override;
    void clearSupportPackageCaches() override;
    void passOverImages(const std::string& problem) override;

    // All products of all roots, readable or not, in the order of the roots and their manifests.
    [[nodiscard]] std::vector<ListedProduct> listProducts();

    // The short names of the products whose pages are to be in the file that getResourceFile()
    // takes this name for; none for a name that is no file in use.
    [[nodiscard]] std::vector<std::u16string> productsOfFile(const std::u16string& resourceFile);

  private:
    enum class Freshness { Kept, Reread };

    std::shared_ptr<const ListedSet> readSet(const std::filesystem::path& root) const;
    std::shared_ptr<const ListedSet> supportPackage(const std::filesystem::path& root);
    std::shared_ptr<const Listing> listing(Freshness freshness);

    // Constant after construction.
    const Locate m_locate;

    std::atomic<bool> m_usesImages{true};

    foundation::core::Mutex m_mutex;
    std::shared_ptr<const Listing> m_listing VELTRA_GUARDED_BY(m_mutex);
    std::map<std::filesystem::path, std::shared_ptr<const ListedSet>> m_supportPackages
        VELTRA_GUARDED_BY(m_mutex);
};

}  // namespace reference::docparser
