#include "docset/CompiledFiles.hpp"

#include <system_error>
#include <utility>

#include "docimage/ImageFile.hpp"
#include "docimage/TextTable.hpp"
#include "docimage/unitBytes.hpp"
#include "docset/AliasFile.hpp"
#include "docset/ContainedFile.hpp"
#include "docset/besideJson.hpp"
#include "files/MappedFile.hpp"

namespace reference::docset {
namespace {

using docimage::DamagedImage;
using docimage::Image;
using docimage::ImageKind;
using docimage::ImageSource;
using docimage::ImageWriter;
using docimage::LookupImage;
using docimage::OpenedImage;
using docimage::PageImage;
using docimage::TextTable;
using docimage::TextTableBuilder;

constexpr std::string_view imageEnding = ".image";

// The sections of an image: the headers of its products, the file of aliases that it is of, then
// what it holds.
constexpr std::uint32_t headersSection = 1;  // 2 sections
constexpr std::uint32_t aliasFileSection = 3;
constexpr std::size_t headerTexts = 4;

// A product's pages; LookupImage has numbers of its own.
std::uint32_t pagesSection(std::size_t product) {
    constexpr std::uint32_t sectionsOfProduct = 24;
    return 100 + static_cast<std::uint32_t>(product) * sectionsOfProduct;
}

// Whether the file still has the content that the image was made from. Where only its time differs,
// as after a copy, its content is hashed.
bool isOf(const ImageSource& source, const files::Descriptor& json, const files::Folder& root,
          const std::string& jsonFile) {
    const auto stamp = files::FileStamp::of(json.number());
    if (stamp.isSameAs(source.stamp))
        return true;
    if (stamp.size != source.stamp.size)
        return false;
    std::error_code error;
    const auto content = root.readFile(jsonFile, maxFileSize, error);
    return content && Image::hashOf(*content) == source.hash;
}

// The file of aliases that an image of a lookup file is of; nothing stands for none.
struct StoredAliasFile {
    std::uint64_t size;
    std::int64_t modified;
    std::uint64_t hash;
};

bool isOfAliasFile(const Image& image, const files::Folder& root, const std::string& jsonFile) {
    const docimage::ImageArray<StoredAliasFile> stored(image, aliasFileSection);
    if (stored.size() == 0)
        return !hasAliasFile(root, jsonFile);
    const std::string aliasFile = aliasFileName(jsonFile);
    std::error_code error;
    const files::Descriptor file = root.openFile(aliasFile, error);
    const StoredAliasFile& source = stored[0];
    return file.isOpen() &&
           isOf({.stamp = {.size = source.size, .modified = source.modified}, .hash = source.hash},
                file, root, aliasFile);
}

// The image of a JSON file that is there.
std::shared_ptr<const Image> openImage(const files::Folder& root, const std::string& jsonFile,
                                       ImageKind kind, const PassedOver& onPassedOver) {
    std::error_code error;
    const files::Descriptor json = root.openFile(jsonFile, error);
    if (!json.isOpen())
        return nullptr;
    const std::string imageFile = imageFileName(jsonFile);
    const std::string name = (root.path() / imageFile).string();
    const files::Descriptor file = root.openFile(imageFile, error);
    if (!file.isOpen()) {
        if (error != std::errc::no_such_file_or_directory)
            onPassedOver(name + ": The image cannot be opened: " + error.message() + ".");
        return nullptr;
    }
    const auto mapped = std::make_shared<const files::MappedFile>(file.number());
    OpenedImage opened = docimage::openImageFile(mapped, mapped->content(), kind, name);
    if (isOf(opened.source, json, root, jsonFile))
        return std::move(opened.image);
    onPassedOver(name +
                 ": The image is not of the JSON file as it is now; \"vref compile\" makes it " +
                 "anew.");
    return nullptr;
}

// What `read` makes of the image; nothing where the image cannot be used.
template <typename Read>
auto readImage(const files::Folder& root, const std::string& jsonFile, ImageKind kind,
               const PassedOver& onPassedOver, Read read)
    -> std::optional<decltype(read(std::shared_ptr<const Image>()))> {
    try {
        if (auto image = openImage(root, jsonFile, kind, onPassedOver))
            return read(std::move(image));
    } catch (const DamagedImage& damage) {
        onPassedOver(damage.what());
    } catch (const std::system_error& problem) {
        onPassedOver(problem.what());
    }
    return std::nullopt;
}

// Nothing where there is no such file. Throws std::system_error where it cannot be read.
std::optional<ImageSource> sourceIfThere(const files::Folder& folder, const std::string& jsonFile) {
    std::error_code error;
    const files::Descriptor json = folder.openFile(jsonFile, error);
    if (error == std::errc::no_such_file_or_directory)
        return std::nullopt;
    const auto content =
        json.isOpen() ? folder.readFile(jsonFile, maxFileSize, error) : std::nullopt;
    if (!content)
        throw std::system_error(error, (folder.path() / jsonFile).string());
    return ImageSource{.stamp = files::FileStamp::of(json.number()),
                       .hash = Image::hashOf(*content)};
}

void writeImage(const files::Folder& folder, const std::string& jsonFile, ImageKind kind,
                const ImageWriter& image) {
    const auto source = sourceIfThere(folder, jsonFile);
    if (!source)
        throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory),
                                (folder.path() / jsonFile).string());
    folder.replaceFile(imageFileName(jsonFile), docimage::toImageFile(image, kind, *source));
}

}  // namespace

void addHeader(const ProductHeader& header, TextTableBuilder& texts) {
    for (const auto* text :
         {&header.shortName, &header.displayName, &header.helpFolder, &header.version})
        texts.add(docimage::toUnitBytes(*text));
}

ProductHeader headerAt(const TextTable& texts, std::size_t product) {
    const auto text = [&](std::size_t at) {
        return docimage::fromUnitBytes(texts[product * headerTexts + at]);
    };
    return {
        .shortName = text(0), .displayName = text(1), .helpFolder = text(2), .version = text(3)};
}

std::string imageFileName(std::string_view jsonFile) {
    return besideJson(jsonFile, imageEnding);
}

std::optional<CompiledLookup> openCompiledLookup(const files::Folder& root,
                                                 const std::string& jsonFile,
                                                 const PassedOver& onPassedOver) {
    return readImage(
        root, jsonFile, ImageKind::Lookup, onPassedOver,
        [&](const std::shared_ptr<const Image>& image) {
            if (!isOfAliasFile(*image, root, jsonFile))
                throw DamagedImage((root.path() / imageFileName(jsonFile)).string() +
                                   ": The image is not of \"" + aliasFileName(jsonFile) +
                                   "\" as it is now; \"vref compile\" makes it anew.");
            return CompiledLookup{.header = headerAt(TextTable(*image, headersSection), 0),
                                  .records = std::make_shared<const LookupImage>(image)};
        });
}

std::optional<std::vector<CompiledPages>> openCompiledPages(const files::Folder& root,
                                                            const std::string& jsonFile,
                                                            const PassedOver& onPassedOver) {
    return readImage(root, jsonFile, ImageKind::Pages, onPassedOver,
                     [](const std::shared_ptr<const Image>& image) {
                         std::vector<CompiledPages> products;
                         const TextTable headers(*image, headersSection);
                         for (std::size_t at = 0; at < headers.size() / headerTexts; ++at)
                             products.push_back({.header = headerAt(headers, at),
                                                 .pages = std::make_shared<const PageImage>(
                                                     image, pagesSection(at))});
                         return products;
                     });
}

void writeCompiledLookup(const files::Folder& folder, const std::string& jsonFile,
                         const ProductHeader& header, const LookupImage::Entities& entities,
                         const docimage::Aliases& aliases) {
    ImageWriter image;
    TextTableBuilder headers;
    addHeader(header, headers);
    headers.writeTo(image, headersSection);
    std::vector<StoredAliasFile> aliasFiles;
    if (const auto source = sourceIfThere(folder, aliasFileName(jsonFile)))
        aliasFiles.push_back(
            {.size = source->stamp.size, .modified = source->stamp.modified, .hash = source->hash});
    image.addArray(aliasFileSection, aliasFiles);
    LookupImage::write(entities, aliases, image);
    writeImage(folder, jsonFile, ImageKind::Lookup, image);
}

void writeCompiledPages(const files::Folder& folder, const std::string& jsonFile,
                        const std::vector<PagesOfProduct>& products) {
    ImageWriter image;
    TextTableBuilder headers;
    for (const auto& product : products)
        addHeader(product.header, headers);
    headers.writeTo(image, headersSection);
    for (std::size_t at = 0; at < products.size(); ++at)
        PageImage::write(products[at].pages, image, pagesSection(at));
    writeImage(folder, jsonFile, ImageKind::Pages, image);
}

}  // namespace reference::docset
