#include "docset/SetIndex.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include "docimage/ImageFile.hpp"
#include "docimage/TextTable.hpp"
#include "docset/AliasFile.hpp"
#include "files/MappedFile.hpp"

namespace reference::docset {
namespace {

using docimage::DamagedImage;
using docimage::Image;
using docimage::ImageKind;
using docimage::ImageWriter;
using docimage::JoinedNames;
using docimage::LookupImage;
using docimage::QuestionIndex;
using docimage::TextTable;
using docimage::TextTableBuilder;

constexpr std::string_view indexBeginning = "documentation-set.";
constexpr std::string_view indexEnding = ".image";

// The sections: of each product its lookup file, the stamps and its header; and the names of all.
enum IndexSection : std::uint32_t {
    IndexStamps = 3,
    IndexFiles = 4,    // 2 sections
    IndexHeaders = 6,  // 2 sections
    IndexNames = 10,
    IndexQuestions = 50,
};

struct StoredStamps {
    std::uint64_t jsonSize;
    std::int64_t jsonModified;
    std::uint64_t imageSize;
    std::int64_t imageModified;
    std::uint64_t aliasesSize;  // noFile where there are none
    std::int64_t aliasesModified;
};
constexpr std::uint64_t noFile = std::numeric_limits<std::uint64_t>::max();

// The lookup files that are read in a language, in the order of their products' names.
std::vector<std::string> lookupFilesIn(const Manifest& manifest, const std::string& language) {
    std::vector<std::pair<std::u16string, std::string>> files;
    for (const auto& product : manifest.products) {
        const auto locale = product.localeFor(language, manifest.locales);
        if (product.installed && locale)
            files.emplace_back(product.shortName, product.files.at(*locale).lookup);
    }
    std::ranges::sort(files);
    std::vector<std::string> names;
    names.reserve(files.size());
    for (auto& [product, file] : files)
        names.push_back(std::move(file));
    return names;
}

bool isOf(const SetIndex& index, const files::Folder& root, const std::vector<std::string>& files) {
    return std::ranges::equal(index.products, files, {}, &IndexedLookup::file) &&
           std::ranges::all_of(index.products, [&](const IndexedLookup& product) {
               return isUnchanged(root, product);
           });
}

// Nothing where one of the files has no image.
std::optional<ImageWriter> indexOf(const files::Folder& root,
                                   const std::vector<std::string>& files) {
    const auto ignore = [](const std::string& /*why*/) {};
    TextTableBuilder names;
    TextTableBuilder headers;
    std::vector<StoredStamps> stamps;
    std::vector<std::shared_ptr<const LookupImage>> lookups;
    for (const auto& file : files) {
        const auto json = root.stampOf(file);
        const auto image = root.stampOf(imageFileName(file));
        const auto compiled = openCompiledLookup(root, file, ignore);
        const auto aliases = root.stampOf(aliasFileName(file));
        if (!json || !image || !compiled || (!aliases && hasAliasFile(root, file)))
            return std::nullopt;
        names.add(file);
        addHeader(compiled->header, headers);
        stamps.push_back({.jsonSize = json->size,
                          .jsonModified = json->modified,
                          .imageSize = image->size,
                          .imageModified = image->modified,
                          .aliasesSize = aliases ? aliases->size : noFile,
                          .aliasesModified = aliases ? aliases->modified : 0});
        lookups.push_back(compiled->records);
    }
    std::optional<ImageWriter> writer(std::in_place);
    writer->addArray(IndexStamps, stamps);
    names.writeTo(*writer, IndexFiles);
    headers.writeTo(*writer, IndexHeaders);
    JoinedNames::write(lookups, *writer, IndexNames);
    std::vector<const LookupImage*> products;
    products.reserve(lookups.size());
    for (const auto& lookup : lookups)
        products.push_back(lookup.get());
    QuestionIndex::write(products, *writer, IndexQuestions);
    return writer;
}

SetIndex readIndex(const std::shared_ptr<const Image>& image) {
    SetIndex index;
    const docimage::ImageArray<StoredStamps> stamps(*image, IndexStamps);
    const TextTable names(*image, IndexFiles);
    const TextTable headers(*image, IndexHeaders);
    for (std::size_t product = 0; product < stamps.size(); ++product) {
        const StoredStamps& stored = stamps[product];
        std::optional<files::FileStamp> aliases;
        if (stored.aliasesSize != noFile)
            aliases = {.size = stored.aliasesSize, .modified = stored.aliasesModified};
        index.products.push_back(
            {.file = std::string(names[product]),
             .header = headerAt(headers, product),
             .json = {.size = stored.jsonSize, .modified = stored.jsonModified},
             .aliases = aliases,
             .image = {.size = stored.imageSize, .modified = stored.imageModified}});
    }
    index.names = std::make_shared<const JoinedNames>(image, IndexNames);
    if (index.names->firstKeys().size() != index.products.size())
        throw DamagedImage("An index has the names of other products than it lists.");
    index.questions = std::make_shared<const QuestionIndex>(image, IndexQuestions);
    if (index.questions->firstKeys().size() != index.products.size() + 1 ||
        !std::ranges::equal(index.names->firstKeys(),
                            std::span(index.questions->firstKeys()).first(index.products.size())))
        throw DamagedImage("An index numbers the names of its products in two ways.");
    return index;
}

}  // namespace

// A language that no product has is read as none is.
std::string setIndexFileName(const Manifest& manifest, const std::string& language) {
    const bool isKnown = std::ranges::find(manifest.locales, language) != manifest.locales.end();
    const std::string first = manifest.locales.empty() ? std::string() : manifest.locales.front();
    return std::string(indexBeginning) + (isKnown ? language : first) + std::string(indexEnding);
}

bool isSetIndexFileName(std::string_view name) {
    return name.starts_with(indexBeginning) && name.ends_with(indexEnding);
}

std::optional<SetIndex> openSetIndex(const files::Folder& root, const std::string& fileName,
                                     const PassedOver& onPassedOver) {
    std::error_code error;
    const files::Descriptor file = root.openFile(fileName, error);
    if (!file.isOpen())
        return std::nullopt;
    const std::string name = (root.path() / fileName).string();
    try {
        const auto mapped = std::make_shared<const files::MappedFile>(file.number());
        return readIndex(
            docimage::openImageFile(mapped, mapped->content(), ImageKind::Set, name).image);
    } catch (const DamagedImage& damage) {
        onPassedOver(damage.what());
    } catch (const std::system_error& problem) {
        onPassedOver(problem.what());
    }
    return std::nullopt;
}

bool isUnchanged(const files::Folder& root, const IndexedLookup& lookup) {
    const auto json = root.stampOf(lookup.file);
    const auto image = root.stampOf(imageFileName(lookup.file));
    if (!json || !image || !json->isSameAs(lookup.json) || !image->isSameAs(lookup.image))
        return false;
    if (!lookup.aliases)
        return !hasAliasFile(root, lookup.file);
    const auto aliases = root.stampOf(aliasFileName(lookup.file));
    return aliases && aliases->isSameAs(*lookup.aliases);
}

std::vector<std::string> writeSetIndexes(const files::Folder& root, const Manifest& manifest) {
    const auto ignore = [](const std::string& /*why*/) {};
    std::vector<std::string> problems;
    for (const auto& locale : manifest.locales) {
        const std::string fileName = setIndexFileName(manifest, locale);
        try {
            const auto files = lookupFilesIn(manifest, locale);
            const auto known = openSetIndex(root, fileName, ignore);
            if (known && isOf(*known, root, files))
                continue;
            if (const auto index = indexOf(root, files))
                root.replaceFile(fileName, docimage::toImageFile(*index, ImageKind::Set, {}));
            else if (known)
                root.remove(fileName);
        } catch (const std::bad_alloc&) {
            problems.push_back((root.path() / fileName).string() +
                               ": there is not enough memory to write the index");
        } catch (const std::exception& problem) {
            // An index that is not of the set is passed over by its readers.
            problems.emplace_back(problem.what());
        }
    }
    return problems;
}

}  // namespace reference::docset
