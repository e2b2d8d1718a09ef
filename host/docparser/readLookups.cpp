#include "docparser/readLookups.hpp"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <filesystem>
#include <future>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "docparser/DocParserException.hpp"
#include "docparser/fileParts.hpp"
#include "docset/AliasFile.hpp"
#include "docset/CompiledFiles.hpp"
#include "docset/ProductFileReader.hpp"
#include "docset/SetIndex.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docparser {
namespace {

namespace fs = std::filesystem;
using docset::Fault;
using LookupResource = DocResource<property::RefItemLookup>;

// Opens the image of a lookup file that the index of its set is of.
LookupResource::OpenImage openerOf(const fs::path& root, const docset::IndexedLookup& lookup) {
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

// Reads a lookup file whose image is damaged.
LookupResource::ReadAnew readAnewLookup(const fs::path& root, const std::string& file) {
    return [root, file](const docimage::DamagedImage& damage) {
        logReadAnew(damage);
        auto contents = docset::readLookupFile(root, file, throwFault);
        return std::move(contents->entities);
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
    try {
        for (std::size_t thread = 1; thread < threads; ++thread)
            others.push_back(std::async(std::launch::async, workOn));
    } catch (const std::exception&) {
        // The work is done by as many threads as could be started.
    }
    workOn();
    for (auto& other : others)
        other.get();
}

class LookupReading {
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
        // A file is of one product, and read once if the manifest names it for several.
        std::map<std::pair<const ListedSet*, std::string_view>, std::vector<std::size_t>> byFile;
        for (std::size_t number = 0; number < products.size(); ++number)
            if (!takeFromIndex(number))
                byFile[{products[number].set.get(), products[number].files.lookup}].push_back(
                    number);
        std::vector<std::vector<std::size_t>> unread;
        unread.reserve(byFile.size());
        for (auto& [file, numbers] : byFile)
            unread.push_back(std::move(numbers));
        std::ranges::sort(unread);
        std::vector<std::optional<Fault>> faults(products.size());
        inParallel(unread.size(), [&](std::size_t at) {
            const std::vector<std::size_t>& numbers = unread[at];
            try {
                auto read = readFile(products[numbers.front()]);
                for (const std::size_t number : numbers)
                    if (read.shortName == products[number].shortName)
                        m_read[number] = std::move(read.resource);
                    else
                        faults[number] = otherProductFault(products[number]);
            } catch (const DocParserException& exception) {
                for (const std::size_t number : numbers)
                    faults[number] = exception.getFault();
            } catch (const std::bad_alloc&) {
                // For this file; the others may be small enough.
                for (const std::size_t number : numbers)
                    faults[number] = Fault::outOfMemory(
                        (products[number].set->root / products[number].files.lookup).string());
            }
        });
        ParsingResults results;
        for (std::size_t number = 0; number < products.size(); ++number) {
            if (faults[number]) {
                logFault(*faults[number]);
                results.leftOut.push_back(std::move(*faults[number]));
                continue;
            }
            auto& lookups = products[number].installed ? results.installed : results.uninstalled;
            lookups.emplace(products[number].shortName, std::move(*m_read[number]));
        }
        // The index is of all that is installed, or of no use for a search.
        if (m_index && m_taken == m_index->products.size() && m_taken == results.installed.size())
            results.installedIndex = {.names = m_index->names, .questions = m_index->questions};
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

    // What a lookup file holds, and of which product.
    struct ReadFile {
        std::u16string shortName;
        LookupResource resource;
    };

    static Fault otherProductFault(const Product& product) {
        return {.file = (product.set->root / product.files.lookup).string(),
                .field = "product.shortName",
                .problem = "The file is of another product than the manifest says (\"" +
                           fl::i18n::toUtf8(product.shortName) + "\")."};
    }

    // The lookup file of `product`.
    [[nodiscard]] ReadFile readFile(const Product& product) const {
        const auto folder = m_folders.find(product.set.get());
        if (folder != m_folders.end() && folder->second) {
            const auto compiled =
                docset::openCompiledLookup(*folder->second, product.files.lookup, &logPassedOver);
            if (compiled)
                return {
                    compiled->header.shortName,
                    {toHeaderInfo(compiled->header, product.referenceFileName), compiled->records,
                     readAnewLookup(product.set->root, product.files.lookup)}};
        }
        auto contents = docset::readLookupFile(product.set->root, product.files.lookup, throwFault);
        // Without what is faulty in them, the product is as good as one that has none.
        const auto aliases = docset::readAliases(product.set->root, product.files.lookup, logFault);
        if (aliases && !aliases->empty())
            return {contents->header.shortName,
                    {toHeaderInfo(contents->header, product.referenceFileName),
                     std::make_shared<const docimage::LookupImage>(contents->entities, *aliases)}};
        return {contents->header.shortName,
                {toHeaderInfo(contents->header, product.referenceFileName),
                 std::move(contents->entities)}};
    }

    const Listing& m_listing;
    // The roots that could be opened; none where images are passed over.
    std::map<const ListedSet*, std::optional<files::Folder>> m_folders;
    std::optional<docset::SetIndex> m_index;
    std::map<std::u16string, const docset::IndexedLookup*> m_indexed;
    std::vector<std::optional<LookupResource>> m_read;
    std::size_t m_taken = 0;
};

}  // namespace

ParsingResults readLookups(const Listing& listing, bool usesImages) {
    return LookupReading(listing, usesImages).run();
}

}  // namespace reference::docparser
