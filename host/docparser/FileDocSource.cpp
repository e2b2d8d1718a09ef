#include "docparser/FileDocSource.hpp"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <utility>

#define BOOST_DLL_USE_STD_FS
#include <boost/dll/runtime_symbol_info.hpp>

#include "docparser/DocParserException.hpp"
#include "docparser/Listing.hpp"
#include "docparser/fileParts.hpp"
#include "docparser/readLookups.hpp"
#include "docset/CompiledFiles.hpp"
#include "docset/Manifest.hpp"
#include "docset/ProductFileReader.hpp"
#include "fl/i18n/utf.hpp"
#include "foundation/core/context/ContextRegistry.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"
#include "settings/in_veltra/settingsRoot.hpp"

namespace reference::docparser {
namespace {

namespace fs = std::filesystem;
using docset::Fault;

// Reads a product's share of a reference file whose image is damaged.
DocResource<property::RefItem>::ReadAnew readAnewPages(const fs::path& root,
                                                       const std::string& file,
                                                       const std::u16string& product) {
    return [root, file, product](const docimage::DamagedImage& damage) {
        logReadAnew(damage);
        auto contents = docset::readReferenceFile(root, file, throwFault);
        for (auto& one : *contents)
            if (one.header.shortName == product)
                return std::move(one.pages);
        throw DocParserException(Fault{
            .file = (root / file).string(),
            .problem = "The file has no product \"" + fl::i18n::toUtf8(product) + "\" any more."});
    };
}

// Products whose pages the file should hold and does not.
void warnOfMissing(const Listing& listing, const Listing::File& file,
                   const ReferenceResources& resources) {
    if (!file.inUse)
        return;
    for (const std::size_t number : listing.productsOfFile(file.name)) {
        const std::u16string& name = listing.products()[number].shortName;
        if (!resources.contains(name))
            logFault({.file = (file.root / file.relativePath).string(),
                      .field = "products",
                      .problem = "The product \"" + fl::i18n::toUtf8(name) +
                                 "\" is missing; the manifest names this file for it."});
    }
}

// Where the set that is installed with the library lies, seen from the library itself, so that the
// installation may be moved as a whole.
fs::path installedDocRoot() {
    const fs::path library = boost::dll::this_line_location();
    return (fs::weakly_canonical(library).parent_path() / VELTRA_DATADIR_FROM_LIBDIR / "veltra" /
            "documentation-set")
        .lexically_normal();
}

template <typename T>
T currentSetting(const char* name) {
    using foundation::core::context::ContextRegistry;
    return settings::in_veltra::getSettingsRoot(ContextRegistry::getCurrentContextId())
        ->getSettingsByFullName(name)
        ->template get<T>();
}

}  // namespace

DocumentationLocation DocumentationLocation::current() {
    DocumentationLocation location;
    location.docRoot = currentSetting<std::string>(settings::in_veltra::docRootSetting);
    if (location.docRoot.empty())
        if (const char* fromEnvironment = std::getenv("VELTRA_DOC_ROOT"))
            location.docRoot = fromEnvironment;
    if (location.docRoot.empty())
        location.docRoot = installedDocRoot();
    location.language = currentSetting<std::string>(settings::in_veltra::docLanguageSetting);
    for (auto& root :
         currentSetting<std::vector<std::string>>(settings::in_veltra::supportPackageRootsSetting))
        location.supportPackageRoots.emplace_back(std::move(root));
    return location;
}

FileDocSource::FileDocSource() : FileDocSource(&DocumentationLocation::current) {}

FileDocSource::FileDocSource(Locate locate) : m_locate(std::move(locate)) {}

FileDocSource::~FileDocSource() = default;

std::shared_ptr<const ListedSet> FileDocSource::readSet(const fs::path& root) const {
    // A faulty product is left out. If the manifest as a whole is unusable, the last fault says
    // why.
    constexpr std::size_t mostLogged = 20;
    std::vector<Fault> faults;
    std::size_t count = 0;
    std::optional<Fault> last;
    auto manifest = docset::readManifest(root, [&](const Fault& fault) {
        if (++count <= mostLogged)
            faults.push_back(fault);
        last = fault;
    });
    if (!manifest)
        throw DocParserException(*last);
    std::ranges::for_each(faults, logFault);
    if (count > mostLogged)
        logFault({.file = (root / docset::manifestFileName).string(),
                  .problem = std::to_string(count - mostLogged) +
                             " more faults; \"vref validate\" lists them all."});
    return std::make_shared<const ListedSet>(
        ListedSet{.root = fs::absolute(root), .manifest = std::move(*manifest)});
}

std::shared_ptr<const ListedSet> FileDocSource::supportPackage(const fs::path& root) {
    {
        const foundation::core::MutexLock lock(m_mutex);
        if (const auto known = m_supportPackages.find(root); known != m_supportPackages.end())
            return known->second;
    }
    std::shared_ptr<const ListedSet> set;
    try {
        set = readSet(root);
    } catch (const DocParserException& exception) {
        logFault(exception.getFault());
        set = std::make_shared<const ListedSet>(ListedSet{.root = root, .manifest = {}});
    }
    const foundation::core::MutexLock lock(m_mutex);
    return m_supportPackages.emplace(root, std::move(set)).first->second;
}

std::shared_ptr<const Listing> FileDocSource::listing(Freshness freshness) {
    DocumentationLocation location = m_locate();
    if (freshness == Freshness::Kept) {
        const foundation::core::MutexLock lock(m_mutex);
        if (m_listing && m_listing->location() == location)
            return m_listing;
    }
    std::vector<std::shared_ptr<const ListedSet>> sets{readSet(location.docRoot)};
    for (const auto& root : location.supportPackageRoots)
        sets.push_back(supportPackage(root));
    auto made = std::make_shared<const Listing>(std::move(location), std::move(sets));
    const foundation::core::MutexLock lock(m_mutex);
    m_listing = made;
    return made;
}

ParsingResults FileDocSource::getResourceLookupFiles() {
    const auto current = listing(Freshness::Reread);
    return readLookups(*current, m_usesImages);
}

ReferenceResources FileDocSource::getResourceFile(const std::u16string& resourceFile) {
    const auto current = listing(Freshness::Kept);
    const auto file = current->fileNamed(resourceFile);
    if (!file)
        throw DocParserException("\"" + fl::i18n::toUtf8(resourceFile) +
                                 "\" is neither a product nor a reference file below " +
                                 current->location().docRoot.string() +
                                 " or the support packages.");
    // Leaves out a product that an earlier root has, and one that is now read from another file,
    // such as that of the wanted language when another product of this file lacks the language.
    const auto isReadHere = [&](const docset::ProductHeader& header) {
        const Listing::Product* const listed = current->find(header.shortName);
        return listed == nullptr ||
               (listed->set->root == file->root &&
                (!file->inUse || listed->files.reference == file->relativePath));
    };
    ReferenceResources resources;
    const auto add = [&](const docset::ProductHeader& header, auto... records) {
        if (isReadHere(header))
            resources.emplace(header.shortName,
                              DocResource<property::RefItem>(toHeaderInfo(header, file->name),
                                                             std::move(records)...));
    };
    if (const auto folder = m_usesImages ? openForImages(file->root) : std::nullopt) {
        const auto compiled =
            docset::openCompiledPages(*folder, file->relativePath, &logPassedOver);
        if (compiled) {
            for (const auto& product : *compiled)
                add(product.header, product.pages,
                    readAnewPages(file->root, file->relativePath, product.header.shortName));
            warnOfMissing(*current, *file, resources);
            return resources;
        }
    }
    try {
        auto contents = docset::readReferenceFile(file->root, file->relativePath, throwFault);
        for (auto& product : *contents)
            add(product.header, std::move(product.pages));
    } catch (const std::bad_alloc&) {
        throw DocParserException(Fault::outOfMemory((file->root / file->relativePath).string()));
    }
    warnOfMissing(*current, *file, resources);
    return resources;
}

void FileDocSource::passOverImages(const std::string& problem) {
    const foundation::log::diagnostic_logger logger("docparser");
    logger.log(foundation::log::Warning, problem + " No image is used from now on.");
    m_usesImages = false;
}

ReferenceRoots FileDocSource::getReferenceRoots() {
    const DocumentationLocation location = m_locate();
    ReferenceRoots roots{.docRoot = fl::i18n::toUtf16(location.docRoot.string()),
                         .supportPackageRoots = {}};
    for (const auto& root : location.supportPackageRoots)
        roots.supportPackageRoots.push_back(fl::i18n::toUtf16(root.string()));
    return roots;
}

std::vector<std::u16string> FileDocSource::getSupportedDocLocales() {
    const auto current = listing(Freshness::Kept);
    std::vector<std::u16string> locales;
    for (const auto& set : current->sets())
        for (const auto& locale : set->manifest.locales) {
            const std::u16string name = fl::i18n::toUtf16(locale);
            if (std::ranges::find(locales, name) == locales.end())
                locales.push_back(name);
        }
    return locales;
}

ProductLists FileDocSource::getAllProducts(const std::u16string& docRoot,
                                           const std::vector<std::u16string>& locales,
                                           const std::u16string& /*locale*/) {
    auto current = listing(Freshness::Kept);
    const fs::path root(fl::i18n::toUtf8(docRoot));
    if (root != current->location().docRoot) {
        DocumentationLocation location = current->location();
        location.docRoot = root;
        auto sets = current->sets();
        sets.front() = readSet(root);
        current = std::make_shared<const Listing>(std::move(location), std::move(sets));
    }
    const auto isAdmitted = [&](const Listing::Product& product) {
        return locales.empty() ||
               std::ranges::any_of(product.locales, [&](const std::string& locale) {
                   return std::ranges::find(locales, fl::i18n::toUtf16(locale)) != locales.end();
               });
    };
    ProductLists lists;
    for (const auto& product : current->products()) {
        if (!isAdmitted(product))
            continue;
        ProductPathData data(product.shortName, fl::i18n::toUtf16(product.set->root.string()));
        if (product.fromSupportPackage)
            lists.supportPackageProducts.push_back(data);
        lists.products.push_back(std::move(data));
    }
    return lists;
}

bool FileDocSource::isProductInstalled(const std::u16string& product) {
    const auto current = listing(Freshness::Kept);
    const Listing::Product* found = current->find(product);
    return found != nullptr && found->installed;
}

std::vector<ListedProduct> FileDocSource::listProducts() {
    const auto current = listing(Freshness::Kept);
    std::vector<ListedProduct> listed;
    for (const auto& product : current->products())
        listed.push_back({.shortName = product.shortName,
                          .installed = product.installed,
                          .locale = product.locale,
                          .root = product.set->root,
                          .source = product.files.source});
    return listed;
}

std::vector<std::u16string> FileDocSource::productsOfFile(const std::u16string& resourceFile) {
    const auto current = listing(Freshness::Kept);
    std::vector<std::u16string> names;
    for (const std::size_t number : current->productsOfFile(resourceFile))
        names.push_back(current->products()[number].shortName);
    return names;
}

void FileDocSource::clearSupportPackageCaches() {
    const foundation::core::MutexLock lock(m_mutex);
    m_supportPackages.clear();
    m_listing.reset();
}

}  // namespace reference::docparser
