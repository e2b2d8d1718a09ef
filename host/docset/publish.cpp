#include "docset/publish.hpp"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <optional>
#include <set>
#include <string_view>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "docset/ContainedFile.hpp"
#include "docset/Formats.hpp"
#include "docset/ItemWriter.hpp"
#include "docset/JsonText.hpp"
#include "docset/Manifest.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

namespace fs = std::filesystem;
namespace json = boost::json;

constexpr const char* lockFileName = ".documentation-set.lock";

[[noreturn]] void fail(const fs::path& file, const std::string& problem) {
    throw PublishError(file.string() + ": " + problem);
}

[[noreturn]] void failWithErrno(const fs::path& file, const char* what) {
    const int code = errno;
    fail(file, std::string(what) + ": " + std::strerror(code) + ".");
}

// A file descriptor that closes itself.
class Descriptor {
  public:
    Descriptor(const fs::path& file, int flags)
        : m_number(::open(file.c_str(), flags | O_CLOEXEC, 0644)) {
        if (m_number < 0)
            failWithErrno(file, "The file cannot be opened");
    }
    Descriptor(const Descriptor&) = delete;  // one owner closes
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { ::close(m_number); }

    [[nodiscard]] int number() const noexcept { return m_number; }

  private:
    int m_number;
};

void flushToDisk(const fs::path& file, int flags) {
    const Descriptor descriptor(file, flags);
    if (::fsync(descriptor.number()) != 0)
        failWithErrno(file, "The file could not be written to the disk");
}

void writeFile(const fs::path& file, const json::value& value) {
    {
        std::ofstream stream(file, std::ios::binary | std::ios::trunc);
        if (!stream)
            failWithErrno(file, "The file cannot be created");
        writeJson(stream, value);
        stream << '\n';
        stream.close();
        if (!stream)
            failWithErrno(file, "The file could not be written");
    }
    flushToDisk(file, O_RDONLY);
}

std::string utf8(const std::u16string& text) {
    return fl::i18n::toUtf8(text);
}

json::object headerMembers(const ProductHeader& header) {
    return {{"shortName", utf8(header.shortName)},
            {"displayName", utf8(header.displayName)},
            {"helpFolder", utf8(header.helpFolder)},
            {"version", utf8(header.version)}};
}

json::object lookupDocument(const ProductDocumentation& documentation) {
    json::object entities;
    entities.reserve(documentation.entities.size());
    for (const auto& [name, records] : documentation.entities) {
        json::array list;
        for (const auto& record : records)
            list.push_back(toJson(record));
        entities.emplace(utf8(name), std::move(list));
    }
    return {{"format", lookupFormat},
            {"formatVersion", formatVersion},
            {"product", headerMembers(documentation.header)},
            {"entities", std::move(entities)}};
}

json::object referenceDocument(const ProductDocumentation& documentation) {
    json::object pages;
    pages.reserve(documentation.pages.size());
    for (const auto& [href, items] : documentation.pages) {
        json::array list;
        for (const auto& item : items)
            list.push_back(toJson(item, JsonForm::Set));
        pages.emplace(utf8(href), std::move(list));
    }
    json::object product = headerMembers(documentation.header);
    product.emplace("pages", std::move(pages));
    json::array products;
    products.push_back(std::move(product));
    return {{"format", referenceFormat},
            {"formatVersion", formatVersion},
            {"products", std::move(products)}};
}

json::object sourceMembers(const ProductSource& source) {
    json::object members{{"folder", source.folder}, {"importer", source.importer}};
    if (!source.importerVersion.empty())
        members.emplace("importerVersion", source.importerVersion);
    return members;
}

json::object manifestDocument(const Manifest& manifest) {
    json::array locales;
    for (const auto& locale : manifest.locales)
        locales.push_back(json::value(locale));
    json::array products;
    for (const auto& product : manifest.products) {
        json::object files;
        for (const auto& [locale, names] : product.files) {
            json::object entry{{"lookup", names.lookup}};
            if (!names.reference.empty())
                entry.emplace("reference", names.reference);
            if (names.source)
                entry.emplace("source", sourceMembers(*names.source));
            files.emplace(locale, std::move(entry));
        }
        products.push_back(json::object{{"shortName", utf8(product.shortName)},
                                        {"installed", product.installed},
                                        {"files", std::move(files)}});
    }
    return {{"format", manifestFormat},
            {"formatVersion", formatVersion},
            {"title", manifest.title},
            {"locales", std::move(locales)},
            {"products", std::move(products)}};
}

// Refuses a folder that holds something else, before anything is put into it. Every publication
// makes the lock file first and leaves it there, so what lies beside one was put there by
// publications, even if each of them was stopped before it made a manifest.
void requireOwnFolder(const fs::path& root) {
    if (!fs::is_directory(root))
        fail(root, "This is no folder; name an empty or new folder, or the root of a set.");
    const bool own = fs::is_empty(root) || fs::exists(root / lockFileName) ||
                     fs::exists(root / manifestFileName);
    if (!own)
        fail(root, "The folder is not empty and holds no documentation set (no " +
                       std::string(manifestFileName) +
                       "); name an empty or new folder, or the root of a set.");
}

// The manifest of the set at `root`, or a new one where there is none.
Manifest currentManifest(const fs::path& root, const std::string& locale) {
    if (fs::exists(root / manifestFileName)) {
        // A manifest that could not be read whole would lose products when it is written again.
        auto manifest =
            readManifest(root, [](const Fault& fault) { throw PublishError(fault.toString()); });
        return std::move(*manifest);
    }
    return {.title = "Documentation", .locales = {locale}, .products = {}};
}

// A product's short name as the beginning of a file name. Different names begin differently, so
// that the editions of one product are never taken for those of another: what is no plain byte
// becomes '=' and its two hexadecimal digits.
std::string fileStem(const std::u16string& shortName) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string stem;
    for (const char byte : utf8(shortName)) {
        const bool plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                           (byte >= '0' && byte <= '9') || byte == '_' || byte == '.' ||
                           byte == '-';
        if (plain) {
            stem += byte;
            continue;
        }
        const auto value = static_cast<unsigned char>(byte);
        stem += '=';
        stem += digits[value / 16];
        stem += digits[value % 16];
    }
    return stem + "-";
}

// The number of the edition that the file belongs to, when it is one of the product's.
std::optional<std::size_t> editionOf(const std::string& fileName, const std::string& stem) {
    if (!fileName.starts_with(stem))
        return std::nullopt;
    const char* const end = fileName.data() + fileName.size();
    std::size_t edition = 0;
    const auto [rest, error] = std::from_chars(fileName.data() + stem.size(), end, edition);
    const std::string_view ending(rest, static_cast<std::size_t>(end - rest));
    if (error != std::errc{} || (ending != ".lookup.json" && ending != ".reference.json"))
        return std::nullopt;
    return edition;
}

// Two files of the next edition: later than all that are there, so that a reader that holds an old
// manifest finds what that one named or nothing, never something newer.
ProductFiles newEdition(const fs::path& root, const std::string& locale, const std::string& stem) {
    std::size_t latest = 0;
    for (const auto& entry : fs::directory_iterator(root / locale))
        latest = std::max(latest, editionOf(entry.path().filename().string(), stem).value_or(0));
    const std::string start = locale + "/" + stem + std::to_string(latest + 1);
    return {.lookup = start + ".lookup.json", .reference = start + ".reference.json"};
}

std::set<std::string> namedFiles(const Manifest& manifest) {
    std::set<std::string> names;
    for (const auto& product : manifest.products)
        for (const auto& [locale, files] : product.files) {
            names.insert(files.lookup);
            names.insert(files.reference);
        }
    return names;
}

// Removes the product's editions that neither manifest names: those that were replaced before the
// last time, and what a stopped process left behind.
void removeOldEditions(const fs::path& root, const std::string& locale, const std::string& stem,
                       const std::set<std::string>& kept) {
    std::error_code ignored;  // a file that stays behind harms nobody
    for (const auto& entry : fs::directory_iterator(root / locale, ignored)) {
        const std::string name = entry.path().filename().string();
        if (editionOf(name, stem) && !kept.contains(locale + "/" + name))
            fs::remove(entry.path(), ignored);
    }
}

ManifestProduct& productIn(Manifest& manifest, const std::u16string& shortName) {
    const auto found = std::ranges::find(manifest.products, shortName, &ManifestProduct::shortName);
    if (found != manifest.products.end())
        return *found;
    manifest.products.push_back({.shortName = shortName, .installed = true, .files = {}});
    return manifest.products.back();
}

void publishLocked(const fs::path& root, const std::string& locale,
                   const ProductDocumentation& documentation) {
    const Manifest before = currentManifest(root, locale);
    Manifest after = before;
    if (std::ranges::find(after.locales, locale) == after.locales.end())
        after.locales.push_back(locale);

    const std::string stem = fileStem(documentation.header.shortName);
    fs::create_directories(root / locale);
    ProductFiles files = newEdition(root, locale, stem);
    files.source = documentation.source;
    writeFile(root / files.lookup, lookupDocument(documentation));
    writeFile(root / files.reference, referenceDocument(documentation));
    flushToDisk(root / locale, O_RDONLY | O_DIRECTORY);

    ManifestProduct& product = productIn(after, documentation.header.shortName);
    product.installed = true;
    product.files[locale] = files;
    // While it was not installed, it may have had locales with a lookup file alone.
    std::erase_if(product.files, [](const auto& entry) { return entry.second.reference.empty(); });
    const fs::path manifestFile = root / manifestFileName;
    const fs::path newManifestFile = manifestFile.string() + ".new";
    writeFile(newManifestFile, manifestDocument(after));
    fs::rename(newManifestFile, manifestFile);
    flushToDisk(root, O_RDONLY | O_DIRECTORY);

    std::set<std::string> kept = namedFiles(before);
    kept.merge(namedFiles(after));
    removeOldEditions(root, locale, stem, kept);
}

void requireNames(const fs::path& root, const std::string& locale,
                  const std::u16string& shortName) {
    if (shortName.empty())
        fail(root, "The product has no short name; a set files products by it.");
    if (const auto reason = whyNotContained(locale);
        reason || locale.find('/') != std::string::npos)
        fail(root, "\"" + locale + "\" is no locale; it must be a folder name such as en_US.");
}

void requireSource(const fs::path& root, const std::optional<ProductSource>& source) {
    if (source && (!source->folder.starts_with('/') ||
                   source->folder.find('\0') != std::string::npos || source->importer.empty()))
        fail(root, "The product's source must have an absolute folder and an importer's name.");
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
        const fs::path folder = nearestExisting(root);
        if (fs::exists(root)) {
            requireOwnFolder(root);
            static_cast<void>(currentManifest(root, locale));
        }
        if (!fs::is_directory(folder))
            fail(root, folder.string() + " is no folder.");
        if (::access(folder.c_str(), W_OK | X_OK) != 0)
            failWithErrno(folder, "Nothing can be written into the folder");
    } catch (const fs::filesystem_error& error) {
        throw PublishError(error.path1().string() + ": " + error.code().message() + ".");
    }
}

void publishProduct(const fs::path& root, const std::string& locale,
                    const ProductDocumentation& documentation) {
    requireNames(root, locale, documentation.header.shortName);
    requireSource(root, documentation.source);
    try {
        fs::create_directories(root);
        requireOwnFolder(root);
        const fs::path lockFile = root / lockFileName;
        const Descriptor lock(lockFile, O_RDWR | O_CREAT);
        while (::flock(lock.number(), LOCK_EX) != 0)
            if (errno != EINTR)
                failWithErrno(lockFile, "The lock on the documentation set cannot be had");
        publishLocked(root, locale, documentation);
    } catch (const fs::filesystem_error& error) {
        throw PublishError(error.path1().string() + ": " + error.code().message() + ".");
    }
}

}  // namespace reference::docset
