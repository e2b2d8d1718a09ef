#include "docset/compile.hpp"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "docset/AliasFile.hpp"
#include "docset/CompiledFiles.hpp"
#include "docset/Manifest.hpp"
#include "docset/ManifestFile.hpp"
#include "docset/ProductFileReader.hpp"
#include "docset/SetIndex.hpp"
#include "docset/SetLock.hpp"
#include "files/Folder.hpp"

namespace reference::docset {
namespace {

// The folder that a file of the set lies in, and its name there.
struct PlacedFile {
    files::Folder folder;
    std::string name;
};

// Links to folders are refused: an image is written beside the file that the manifest names.
PlacedFile placeOf(const std::filesystem::path& root, std::string_view relativePath) {
    files::Folder folder(root);
    for (auto slash = relativePath.find('/'); slash != std::string_view::npos;
         slash = relativePath.find('/')) {
        folder = folder.openFolder(std::string(relativePath.substr(0, slash)));
        relativePath.remove_prefix(slash + 1);
    }
    return {.folder = std::move(folder), .name = std::string(relativePath)};
}

struct LookupWithAliases {
    LookupContents lookup;
    docimage::Aliases aliases;
};

class Compilation {
  public:
    explicit Compilation(const std::filesystem::path& root) : m_root(root), m_folder(root) {}

    void compileLookup(const std::string& file) {
        const auto read = [this](const std::string& name) {
            std::optional<LookupWithAliases> contents;
            auto lookup = readLookupFile(m_folder, name, reporter());
            auto aliases = lookup ? readAliases(m_folder, name, reporter()) : std::nullopt;
            if (lookup && aliases)
                contents = {.lookup = std::move(*lookup), .aliases = std::move(*aliases)};
            return contents;
        };
        compileFile(file, &openCompiledLookup, read,
                    [](const PlacedFile& place, const auto& contents) {
                        writeCompiledLookup(place.folder, place.name, contents.lookup.header,
                                            contents.lookup.entities, contents.aliases);
                    });
    }

    void compilePages(const std::string& file) {
        const auto read = [this](const std::string& name) {
            return readReferenceFile(m_folder, name, reporter());
        };
        compileFile(file, &openCompiledPages, read,
                    [](const PlacedFile& place, const auto& contents) {
                        std::vector<PagesOfProduct> products;
                        products.reserve(contents.size());
                        for (const auto& product : contents)
                            products.push_back({.header = product.header, .pages = product.pages});
                        writeCompiledPages(place.folder, place.name, products);
                    });
    }

    [[nodiscard]] FaultHandler reporter() {
        return [this](const Fault& fault) { m_report.faults.push_back(fault); };
    }
    [[nodiscard]] const files::Folder& folder() const noexcept { return m_folder; }
    [[nodiscard]] CompilationReport take() { return std::move(m_report); }

  private:
    static void ignore(const std::string& /*why*/) {}

    // Each file once, unless its image opens. What has faults is not written.
    template <typename Open, typename Read, typename Write>
    void compileFile(const std::string& file, Open open, Read read, Write write) {
        if (!m_done.insert(file).second)
            return;
        if (open(m_folder, file, &ignore)) {
            ++m_report.kept;
            return;
        }
        const std::size_t faultsBefore = m_report.faults.size();
        const auto contents = read(file);
        if (!contents || m_report.faults.size() > faultsBefore)
            return;
        write(placeOf(m_root, file), *contents);
        ++m_report.written;
    }

    std::filesystem::path m_root;
    files::Folder m_folder;
    std::set<std::string> m_done;
    CompilationReport m_report;
};

}  // namespace

CompilationReport compile(const std::filesystem::path& root, const OnWait& onWait) {
    Compilation compilation(root);
    const SetLock lock(compilation.folder(), onWait);
    const auto manifest =
        readManifestFile(compilation.folder(), manifestFileName, compilation.reporter());
    if (!manifest)
        return compilation.take();
    for (const auto& product : manifest->products)
        for (const auto& [locale, files] : product.files) {
            compilation.compileLookup(files.lookup);
            if (!files.reference.empty())
                compilation.compilePages(files.reference);
        }
    auto problems = writeSetIndexes(compilation.folder(), *manifest);
    CompilationReport report = compilation.take();
    report.problems = std::move(problems);
    return report;
}

}  // namespace reference::docset
