#include "docset/publish.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <new>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include <boost/json/object.hpp>

#include "docset/AliasFile.hpp"
#include "docset/CompiledFiles.hpp"
#include "docset/Formats.hpp"
#include "docset/JsonText.hpp"
#include "docset/Manifest.hpp"
#include "docset/ManifestFile.hpp"
#include "docset/ProductFileReader.hpp"
#include "docset/ProductFileWriter.hpp"
#include "docset/SetIndex.hpp"
#include "docset/SetLock.hpp"
#include "docset/SetNames.hpp"
#include "files/Folder.hpp"
#include "fl/i18n/utf.hpp"
#include "foundation/core/TextStream.hpp"

namespace reference::docset {
namespace {

namespace fs = std::filesystem;
namespace json = boost::json;

[[noreturn]] void fail(const fs::path& file, const std::string& problem) {
    throw PublishError(file.string() + ": " + problem);
}

// Not every error of the file system names a file.
[[noreturn]] void failWith(const fs::filesystem_error& error, const fs::path& root) {
    fail(error.path1().empty() ? root : error.path1(), error.code().message() + ".");
}

[[noreturn]] void raiseFault(const Fault& fault) {
    throw PublishError(fault.toString());
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

std::string contentOf(const json::object& document) {
    foundation::core::TextStream content;
    writeJson(content, document);
    content << '\n';
    return std::move(content).str();
}

// The files of a product, ready to be written.
struct ProductContents {
    std::string lookup;
    std::string reference;
    std::string aliases;  // empty: no file
};

ProductContents contentsOf(const ProductDocumentation& documentation) {
    return {.lookup = contentOf(lookupDocument(documentation)),
            .reference = contentOf(referenceDocument(documentation)),
            .aliases = documentation.aliases.empty()
                           ? std::string()
                           : contentOf(aliasDocument(documentation.aliases))};
}

std::string hexadecimal(const char* mark, unsigned char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    return std::string(mark) + digits[byte / 16] + digits[byte % 16];
}

bool isUtf8(const std::string& text) {
    try {
        static_cast<void>(fl::i18n::toUtf16(text));
        return true;
    } catch (const std::invalid_argument&) {
        return false;
    }
}

// The text in quotation marks, with bytes that a message should not hold written as \xFF.
std::string printable(const std::string& text) {
    const bool sound = isUtf8(text);
    std::string shown = "\"";
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        if (value < 0x20 || value == 0x7F || (value >= 0x80 && !sound))
            shown += hexadecimal("\\x", value);
        else
            shown += byte;
    }
    return shown + "\"";
}

// Refuses a folder that holds something else, before anything is put into it. Every publication
// makes the lock file first and leaves it there, so what lies beside one was put there by
// publications, even if each of them was stopped before it made a manifest.
void requireOwnFolder(const files::Folder& root) {
    const auto names = root.names();
    const bool own =
        names.empty() || contains(names, lockFileName) || contains(names, manifestFileName);
    if (!own)
        fail(root.path(), "The folder is not empty and holds no documentation set (no " +
                              std::string(manifestFileName) +
                              "); name an empty or new folder, or the root of a set.");
}

// The manifest of the set at `root`, or a new one where there is none.
Manifest currentManifest(const files::Folder& root, const std::string& locale) {
    // A manifest that could not be read whole would lose products when it is written again.
    if (contains(root.names(), manifestFileName))
        return *readManifestFile(root, manifestFileName, raiseFault);
    return {.title = "Documentation", .locales = {locale}, .products = {}};
}

// A product's short name as the beginning of a file name. Different names begin differently, so
// that the editions of one product are never taken for those of another: any byte that is not plain
// becomes '=' and its two hexadecimal digits.
std::string fileStem(const std::u16string& shortName) {
    std::string stem;
    for (const char byte : fl::i18n::toUtf8(shortName)) {
        const bool plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                           (byte >= '0' && byte <= '9') || byte == '_' || byte == '.' ||
                           byte == '-';
        if (plain) {
            stem += byte;
            continue;
        }
        stem += hexadecimal("=", static_cast<unsigned char>(byte));
    }
    return stem + "-";
}

constexpr std::string_view lookupEnding = ".lookup.json";
constexpr std::string_view referenceEnding = ".reference.json";

// The number of the edition that the file belongs to, when it is one of the product's.
std::optional<std::size_t> editionOf(const std::string& fileName, const std::string& stem) {
    if (!fileName.starts_with(stem))
        return std::nullopt;
    const char* const end = fileName.data() + fileName.size();
    std::size_t edition = 0;
    const auto [rest, error] = std::from_chars(fileName.data() + stem.size(), end, edition);
    std::string_view ending(rest, static_cast<std::size_t>(end - rest));
    if (ending.ends_with(files::newFileEnding))
        ending.remove_suffix(files::newFileEnding.size());
    const bool isOfEdition =
        std::ranges::any_of(std::array{lookupEnding, referenceEnding}, [&](std::string_view known) {
            return ending == known || ending == imageFileName(known) ||
                   ending == aliasFileName(known);
        });
    if (error != std::errc{} || !isOfEdition)
        return std::nullopt;
    return edition;
}

// The latest edition of which there is a file.
std::size_t latestEdition(const files::Folder& folder, const std::string& stem) {
    std::size_t latest = 0;
    for (const auto& name : folder.names())
        latest = std::max(latest, editionOf(name, stem).value_or(0));
    return latest;
}

ProductFiles filesOfEdition(std::size_t edition, const std::string& locale,
                            const std::string& stem) {
    const std::string start = locale + "/" + stem + std::to_string(edition);
    return {.lookup = start + std::string(lookupEnding),
            .reference = start + std::string(referenceEnding)};
}

std::string nameInFolder(const std::string& relativePath) {
    return relativePath.substr(relativePath.rfind('/') + 1);
}

std::set<std::string> namedFiles(const Manifest& manifest) {
    std::set<std::string> names;
    for (const auto& product : manifest.products)
        for (const auto& [locale, files] : product.files) {
            for (const auto& name : {files.lookup, files.reference}) {
                names.insert(name);
                names.insert(imageFileName(name));
                names.insert(aliasFileName(name));
            }
        }
    return names;
}

// A file that is left behind does no harm.
void removeQuietly(const files::Folder& folder, const std::string& name) {
    try {
        folder.remove(name);
    } catch (const std::system_error&) {
        return;
    }
}

// Removes the product's editions that neither manifest names: those that were replaced before the
// last time, and what a stopped process left behind.
void removeOldEditions(const files::Folder& folder, const std::string& locale,
                       const std::string& stem, const std::set<std::string>& kept) {
    for (const auto& name : folder.names())
        if (editionOf(name, stem) && !kept.contains(locale + "/" + name))
            removeQuietly(folder, name);
}

ManifestProduct& productIn(Manifest& manifest, const std::u16string& shortName) {
    const auto found = std::ranges::find(manifest.products, shortName, &ManifestProduct::shortName);
    if (found != manifest.products.end())
        return *found;
    manifest.products.push_back({.shortName = shortName, .installed = true, .files = {}});
    return manifest.products.back();
}

constexpr const char* notReadBack =
    "What is read back from the file is not what was published: a text is not Unicode, or an "
    "item's href is not that of its page.";

// Reads the product's new files as any reader would, and refuses what did not come back as it was:
// no reader could use it, and the edition before may be sound.
void requireReadable(const files::Folder& root, const ProductFiles& files,
                     const ProductDocumentation& documentation) {
    const auto lookup = readLookupFile(root, files.lookup, raiseFault);
    if (lookup->header != documentation.header || lookup->entities != documentation.entities)
        fail(root.path() / files.lookup, notReadBack);
    const auto reference = readReferenceFile(root, files.reference, raiseFault);
    if (reference->size() != 1 || reference->front().header != documentation.header ||
        reference->front().pages != documentation.pages)
        fail(root.path() / files.reference, notReadBack);
    if (readAliases(root, files.lookup, raiseFault) != documentation.aliases)
        fail(root.path() / aliasFileName(files.lookup), notReadBack);
}

// The new manifest takes effect with the rename; until then the set is as it was.
void replaceManifest(const files::Folder& root, const Manifest& manifest) {
    try {
        root.writeFile(newManifestFileName, contentOf(toJson(manifest)));
        if (readManifestFile(root, newManifestFileName, raiseFault) != manifest)
            fail(root.path() / newManifestFileName, notReadBack);
        root.rename(newManifestFileName, manifestFileName);
    } catch (...) {
        removeQuietly(root, newManifestFileName);
        throw;
    }
}

Manifest withProduct(Manifest manifest, const std::string& locale, const std::u16string& shortName,
                     const ProductFiles& files) {
    if (!contains(manifest.locales, locale))
        manifest.locales.push_back(locale);
    ManifestProduct& product = productIn(manifest, shortName);
    product.installed = true;
    product.files[locale] = files;
    // While it was not installed, it may have had locales with a lookup file alone.
    std::erase_if(product.files, [](const auto& entry) { return entry.second.reference.empty(); });
    return manifest;
}

// What a stopped process left of editions that never took effect: those after the one that the
// manifest names. They may be what fills the disk.
void removeAbandoned(const files::Folder& folder, const Manifest& manifest,
                     const std::string& locale, const std::string& stem) {
    std::size_t named = 0;
    for (const auto& product : manifest.products)
        if (const auto files = product.files.find(locale); files != product.files.end())
            for (const auto& file : {files->second.lookup, files->second.reference})
                named = std::max(named, editionOf(nameInFolder(file), stem).value_or(0));
    for (const auto& name : folder.names()) {
        const auto edition = editionOf(name, stem);
        if (edition && (*edition > named || name.ends_with(files::newFileEnding)))
            removeQuietly(folder, name);
    }
}

void writeEdition(const files::Folder& root, const files::Folder& folder, const ProductFiles& files,
                  const ProductDocumentation& documentation, const ProductContents& contents) {
    const std::string lookup = nameInFolder(files.lookup);
    const std::string reference = nameInFolder(files.reference);
    folder.writeFile(lookup, contents.lookup);
    folder.writeFile(reference, contents.reference);
    if (!contents.aliases.empty())
        folder.writeFile(aliasFileName(lookup), contents.aliases);
    folder.flush();
    requireReadable(root, files, documentation);
    writeCompiledLookup(folder, lookup, documentation.header, documentation.entities,
                        documentation.aliases);
    writeCompiledPages(folder, reference,
                       {{.header = documentation.header, .pages = documentation.pages}});
}

std::vector<std::string> publishLocked(const files::Folder& root, const std::string& locale,
                                       const ProductDocumentation& documentation,
                                       const ProductContents& contents) {
    const Manifest before = currentManifest(root, locale);
    const std::string stem = fileStem(documentation.header.shortName);
    const files::Folder folder = root.makeFolder(locale);
    // Later than all that are there, so that a reader that holds an old manifest finds the files
    // that it names or nothing, never something newer.
    const std::size_t edition = latestEdition(folder, stem) + 1;
    removeAbandoned(folder, before, locale, stem);
    ProductFiles files = filesOfEdition(edition, locale, stem);
    files.source = documentation.source;
    const Manifest after = withProduct(before, locale, documentation.header.shortName, files);
    std::set<std::string> kept = namedFiles(before);
    kept.merge(namedFiles(after));
    try {
        writeEdition(root, folder, files, documentation, contents);
        replaceManifest(root, after);
    } catch (...) {
        for (const auto& file : {nameInFolder(files.lookup), nameInFolder(files.reference)}) {
            removeQuietly(folder, file);
            removeQuietly(folder, imageFileName(file));
            removeQuietly(folder, aliasFileName(file));
        }
        throw;
    }
    // The product has taken effect: from here on nothing may look as if it had not.
    std::vector<std::string> problems;
    const auto attempt = [&](const auto& finish) {
        try {
            finish();
        } catch (const std::exception& problem) {
            try {
                problems.emplace_back(problem.what());
            } catch (const std::bad_alloc&) {
                // What is left undone is nothing that anybody needs.
            }
        }
    };
    attempt([&] { root.flush(); });
    attempt([&] { std::ranges::move(writeSetIndexes(root, after), std::back_inserter(problems)); });
    attempt([&] { removeOldEditions(folder, locale, stem, kept); });
    return problems;
}

void requireNames(const fs::path& root, const std::string& locale,
                  const std::u16string& shortName) {
    if (root.empty())
        throw PublishError(
            "The documentation set has no folder; name an empty or new one, or the root of a set.");
    if (shortName.empty())
        fail(root, "The product has no short name; a set files products by it.");
    if (const auto reason = whyNotALocale(locale))
        fail(root, printable(locale) + " is no locale. " + *reason);
}

void requireSource(const fs::path& root, const std::optional<ProductSource>& source) {
    if (!source)
        return;
    if (!source->folder.starts_with('/') || source->folder.find('\0') != std::string::npos ||
        source->importer.empty())
        fail(root, "The product's source must have an absolute folder and an importer's name.");
    for (const auto* text : {&source->folder, &source->importer, &source->importerVersion})
        if (!isUtf8(*text))
            fail(root, "The product's source must be UTF-8; " + printable(*text) + " is not.");
}

// The folder itself or, where it does not exist, the nearest above it that does.
fs::path nearestExisting(const fs::path& folder) {
    fs::path nearest = fs::absolute(folder);
    while (!fs::exists(nearest) && nearest.has_relative_path())
        nearest = nearest.parent_path();
    return nearest;
}

}  // namespace

void requirePublishable(const fs::path& root, const std::string& locale,
                        const std::u16string& shortName) {
    requireNames(root, locale, shortName);
    try {
        const fs::path nearest = nearestExisting(root);
        if (!fs::is_directory(nearest))
            fail(root, nearest.string() +
                           " is no folder; name an empty or new folder, or the "
                           "root of a set.");
        if (fs::exists(root)) {
            const files::Folder folder(root);
            requireOwnFolder(folder);
            static_cast<void>(currentManifest(folder, locale));
            if (contains(folder.names(), locale))
                static_cast<void>(folder.openFolder(locale));
        }
        if (::access(nearest.c_str(), W_OK | X_OK) != 0)
            fail(nearest, std::string("Nothing can be written into the folder: ") +
                              std::strerror(errno) + ".");
    } catch (const fs::filesystem_error& error) {
        failWith(error, root);
    } catch (const std::system_error& error) {
        throw PublishError(error.what() + std::string("."));
    }
}

std::vector<std::string> publishProduct(const fs::path& root, const std::string& locale,
                                        const ProductDocumentation& documentation,
                                        const OnWait& onWait) {
    requireNames(root, locale, documentation.header.shortName);
    requireSource(root, documentation.source);
    try {
        const ProductContents contents = contentsOf(documentation);
        fs::create_directories(root);
        const files::Folder folder(root);
        requireOwnFolder(folder);
        const SetLock lock(folder, onWait);
        return publishLocked(folder, locale, documentation, contents);
    } catch (const fs::filesystem_error& error) {
        failWith(error, root);
    } catch (const std::system_error& error) {
        throw PublishError(error.what() + std::string("."));
    }
}

}  // namespace reference::docset
