#include "docparser/FileDocSource.hpp"

#include <algorithm>
#include <cstdlib>
#include <future>
#include <optional>
#include <set>
#include <string_view>
#include <thread>
#include <utility>

#define BOOST_DLL_USE_STD_FS
#include <boost/dll/runtime_symbol_info.hpp>

#include "docparser/DocParserException.hpp"
#include "docset/CompiledFiles.hpp"
#include "docset/ContainedFile.hpp"
#include "docset/Manifest.hpp"
#include "docset/ProductFileReader.hpp"
#include "docset/SetIndex.hpp"
#include "fl/i18n/utf.hpp"
#include "foundation/core/context/ContextRegistry.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"
#include "settings/in_veltra/settingsRoot.hpp"

namespace reference::docparser {
namespace {

namespace fs = std::filesystem;
using docset::Fault;
using property::HeaderInfo;

// Ends a reading at its first fault.
void throwFault(const Fault& fault) {
    throw DocParserException(fault);
}

// Logs a fault that need not fail a whole request.
void logFault(const Fault& fault) {
    const foundation::log::diagnostic_logger logger("docparser");
    logger.log(foundation::log::Warning, "left out: " + fault.toString());
}

// Logs why an image is not used. The file that it was made from is read, so nothing is lost.
void logPassedOver(const std::string& why) {
    const foundation::log::diagnostic_logger logger("docparser");
    logger.log(foundation::log::Information, "passed over: " + why);
}

// The folder of images. Nothing where it cannot be opened: that is reported when a file in it is
// read.
std::optional<files::Folder> openForImages(const fs::path& root) {
    return docset::openRoot(root, {}, [](const Fault&) {});
}

// Opens the image of a lookup file that the index of its set is of.
DocResource<property::RefItemLookup>::OpenImage openerOf(const fs::path& root,
                                                         const docset::IndexedLookup& lookup) {
    return [root, lookup] {
        const auto folder = openForImages(root);
        std::string problem;
        const auto compiled =
            folder ? docset::openCompiledLookup(*folder, lookup.file,
                                                [&](const std::string& why) { problem = why; })
                   : std::nullopt;
        // Asked afterwards, so that what was opened is what the index is of.
        if (!folder || !docset::isUnchanged(*folder, lookup))
            throw docimage::ReplacedImage((root / lookup.file).string() +
                                          ": The file was replaced after it had been listed.");
        if (!compiled)
            throw docimage::DamagedImage(problem);
        return compiled->records;
    };
}

void logReadAnew(const docimage::DamagedImage& damage) {
    const foundation::log::diagnostic_logger logger("docparser");
    logger.log(foundation::log::Warning, damage.what() + std::string(" Its file is read."));
}

// Reads a lookup file whose image is damaged.
DocResource<property::RefItemLookup>::ReadAnew readAnewLookup(const fs::path& root,
                                                              const std::string& file) {
    return [root, file](const docimage::DamagedImage& damage) {
        logReadAnew(damage);
        auto contents = docset::readLookupFile(root, file, throwFault);
        return std::move(contents->entities);
    };
}

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

// Calls `work(number)` for each number below `count`, on as many threads as there are processors.
// What it throws is thrown, when all of them have stopped.
template <typename Work>
void inParallel(std::size_t count, Work work) {
    std::atomic<std::size_t> next{0};
    const auto workOn = [&] {
        for (std::size_t number = next++; number < count; number = next++)
            work(number);
    };
    const std::size_t threads =
        std::min<std::size_t>(count, std::max(1U, std::thread::hardware_concurrency()));
    std::vector<std::future<void>> others;
    for (std::size_t thread = 1; thread < threads; ++thread)
        others.push_back(std::async(std::launch::async, workOn));
    workOn();
    for (auto& other : others)
        other.get();
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

HeaderInfo toHeaderInfo(const docset::ProductHeader& header, std::u16string referenceFileName) {
    return {std::move(referenceFileName), header.helpFolder, header.shortName, header.displayName,
            header.version};
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

// One documentation set, as its manifest described it when it was read.
struct FileDocSource::ListedSet {
    fs::path root;
    docset::Manifest manifest;
};

// All sets in force, and which file each product is read from. Never changes once made.
class FileDocSource::Listing {
  public:
    struct Product {
        std::u16string shortName;
        bool installed;
        std::shared_ptr<const ListedSet> set;
        bool fromSupportPackage;
        std::vector<std::string> locales;  // that the product has
        std::string locale;                // that the product is read in
        docset::ProductFiles files;        // in that locale
        std::u16string referenceFileName;
    };

    // A reference file and what getResourceFile calls it.
    struct File {
        fs::path root;
        std::string relativePath;
        std::u16string name;
        // Whether products are read from it now; if not, it is of an earlier edition or language.
        bool inUse;
    };

    // `sets` begins with the documentation root's.
    Listing(DocumentationLocation location, std::vector<std::shared_ptr<const ListedSet>> sets)
        : m_location(std::move(location)), m_sets(std::move(sets)) {
        for (const auto& set : m_sets)
            addProductsOf(set);
    }

    [[nodiscard]] const DocumentationLocation& location() const noexcept { return m_location; }
    [[nodiscard]] const std::vector<std::shared_ptr<const ListedSet>>& sets() const noexcept {
        return m_sets;
    }
    [[nodiscard]] const std::vector<Product>& products() const noexcept { return m_products; }

    [[nodiscard]] const Product* find(const std::u16string& shortName) const {
        const auto found = m_numbers.find(shortName);
        return found == m_numbers.end() ? nullptr : &m_products[found->second];
    }

    // The file that `resourceFile` names: a reference file in use, else the file of the product of
    // that short name, else any file of that name below one of the roots. Readers of the previous
    // edition still ask for files that are no longer in use.
    [[nodiscard]] std::optional<File> fileNamed(const std::u16string& resourceFile) const {
        const auto named = std::ranges::find(m_products, resourceFile, &Product::referenceFileName);
        const Product* product = named != m_products.end() ? &*named : find(resourceFile);
        if (product != nullptr && !product->files.reference.empty())
            return File{product->set->root, product->files.reference, product->referenceFileName,
                        true};
        const fs::path path(fl::i18n::toUtf8(resourceFile));
        for (const auto& set : m_sets) {
            const fs::path relative =
                path.is_absolute() ? path.lexically_relative(set->root) : path;
            std::error_code error;
            if (!relative.empty() && *relative.begin() != ".." &&
                fs::is_regular_file(set->root / relative, error))
                return File{set->root, relative.string(), resourceFile, false};
        }
        return std::nullopt;
    }

  private:
    void addProductsOf(const std::shared_ptr<const ListedSet>& set) {
        const bool fromSupportPackage = set != m_sets.front();
        for (const auto& product : set->manifest.products) {
            const auto locale = product.localeFor(m_location.language, set->manifest.locales);
            if (!locale || find(product.shortName) != nullptr)
                continue;
            const docset::ProductFiles& files = product.files.at(*locale);
            // A relative name is below the documentation root; a support package's files are told
            // apart from it, and from each other, by their whole path.
            std::string name = files.reference;
            if (!name.empty() && fromSupportPackage)
                name = (set->root / files.reference).string();
            std::vector<std::string> locales;
            for (const auto& entry : product.files)
                locales.push_back(entry.first);
            m_numbers.emplace(product.shortName, m_products.size());
            m_products.push_back({.shortName = product.shortName,
                                  .installed = product.installed,
                                  .set = set,
                                  .fromSupportPackage = fromSupportPackage,
                                  .locales = std::move(locales),
                                  .locale = *locale,
                                  .files = files,
                                  .referenceFileName = fl::i18n::toUtf16(name)});
        }
    }

    DocumentationLocation m_location;
    std::vector<std::shared_ptr<const ListedSet>> m_sets;
    std::vector<Product> m_products;
    std::map<std::u16string, std::size_t> m_numbers;  // of the products, by short name
};

FileDocSource::FileDocSource() : FileDocSource(&DocumentationLocation::current) {}

FileDocSource::FileDocSource(Locate locate) : m_locate(std::move(locate)) {}

FileDocSource::~FileDocSource() = default;

std::shared_ptr<const FileDocSource::ListedSet> FileDocSource::readSet(const fs::path& root) const {
    // A faulty product is left out. If the manifest as a whole is unusable, the last fault says
    // why.
    std::vector<Fault> faults;
    auto manifest =
        docset::readManifest(root, [&](const Fault& fault) { faults.push_back(fault); });
    if (!manifest)
        throw DocParserException(faults.back());
    std::ranges::for_each(faults, logFault);
    return std::make_shared<const ListedSet>(
        ListedSet{.root = fs::absolute(root), .manifest = std::move(*manifest)});
}

std::shared_ptr<const FileDocSource::ListedSet> FileDocSource::supportPackage(
    const fs::path& root) {
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

std::shared_ptr<const FileDocSource::Listing> FileDocSource::listing(Freshness freshness) {
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

// Reads the lookup files of a listing: which of them the index of the set is of, and the others.
class FileDocSource::LookupReading {
  public:
    LookupReading(const Listing& listing, bool usesImages) : m_listing(listing) {
        if (!usesImages)
            return;
        for (const auto& set : listing.sets())
            m_folders.emplace(set.get(), openForImages(set->root));
        openIndex();
    }

    ParsingResults run() {
        const auto& products = m_listing.products();
        m_read.resize(products.size());
        std::vector<std::size_t> unread;
        for (std::size_t number = 0; number < products.size(); ++number)
            if (!takeFromIndex(number))
                unread.push_back(number);
        std::vector<std::optional<Fault>> faults(products.size());
        inParallel(unread.size(), [&](std::size_t at) {
            const std::size_t number = unread[at];
            try {
                m_read[number] = readFile(products[number]);
            } catch (const DocParserException& exception) {
                faults[number] = exception.getFault();
            }
        });
        ParsingResults results;
        for (std::size_t number = 0; number < products.size(); ++number) {
            if (faults[number]) {
                logFault(*faults[number]);
                continue;
            }
            auto& lookups = products[number].installed ? results.installed : results.uninstalled;
            lookups.emplace(products[number].shortName, std::move(*m_read[number]));
        }
        // The index is of all that is installed, or of no use for a search.
        if (m_index && m_taken == m_index->products.size() && m_taken == results.installed.size())
            results.installedNames = m_index->names;
        return results;
    }

  private:
    using Product = Listing::Product;

    // That of the documentation root; support packages are read one by one.
    void openIndex() {
        const ListedSet& set = *m_listing.sets().front();
        const auto& folder = m_folders.at(&set);
        if (!folder)
            return;
        m_index = docset::openSetIndex(
            *folder, docset::setIndexFileName(set.manifest, m_listing.location().language),
            &logPassedOver);
        if (!m_index)
            return;
        for (const auto& lookup : m_index->products)
            m_indexed.emplace(lookup.header.shortName, &lookup);
    }

    bool takeFromIndex(std::size_t number) {
        const Product& product = m_listing.products()[number];
        if (!product.installed || product.fromSupportPackage)
            return false;
        const auto found = m_indexed.find(product.shortName);
        if (found == m_indexed.end() || found->second->file != product.files.lookup ||
            !docset::isUnchanged(*m_folders.at(product.set.get()), *found->second))
            return false;
        const docset::IndexedLookup& lookup = *found->second;
        m_read[number] = LookupResource(toHeaderInfo(lookup.header, product.referenceFileName),
                                        openerOf(product.set->root, lookup),
                                        readAnewLookup(product.set->root, lookup.file));
        ++m_taken;
        return true;
    }

    [[nodiscard]] LookupResource readFile(const Product& product) const {
        const auto requireSameProduct = [&](const docset::ProductHeader& header) {
            if (header.shortName != product.shortName)
                throw DocParserException(
                    Fault{.file = (product.set->root / product.files.lookup).string(),
                          .field = "product.shortName",
                          .problem = "The file is of another product than the manifest says (\"" +
                                     fl::i18n::toUtf8(product.shortName) + "\")."});
        };
        const auto folder = m_folders.find(product.set.get());
        if (folder != m_folders.end() && folder->second) {
            const auto compiled =
                docset::openCompiledLookup(*folder->second, product.files.lookup, &logPassedOver);
            if (compiled) {
                requireSameProduct(compiled->header);
                return {toHeaderInfo(compiled->header, product.referenceFileName),
                        compiled->records, readAnewLookup(product.set->root, product.files.lookup)};
            }
        }
        auto contents = docset::readLookupFile(product.set->root, product.files.lookup, throwFault);
        requireSameProduct(contents->header);
        return {toHeaderInfo(contents->header, product.referenceFileName),
                std::move(contents->entities)};
    }

    const Listing& m_listing;
    // The roots that could be opened; none where images are passed over.
    std::map<const ListedSet*, std::optional<files::Folder>> m_folders;
    std::optional<docset::SetIndex> m_index;
    std::map<std::u16string, const docset::IndexedLookup*> m_indexed;
    std::vector<std::optional<LookupResource>> m_read;
    std::size_t m_taken = 0;
};

ParsingResults FileDocSource::getResourceLookupFiles() {
    const auto current = listing(Freshness::Reread);
    return LookupReading(*current, m_usesImages).run();
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
            return resources;
        }
    }
    auto contents = docset::readReferenceFile(file->root, file->relativePath, throwFault);
    for (auto& product : *contents)
        add(product.header, std::move(product.pages));
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

void FileDocSource::clearSupportPackageCaches() {
    const foundation::core::MutexLock lock(m_mutex);
    m_supportPackages.clear();
    m_listing.reset();
}

}  // namespace reference::docparser
