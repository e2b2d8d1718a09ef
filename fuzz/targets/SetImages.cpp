// A published set whose images were damaged by somebody who made their hashes right: "FILE" and a
// line of ImageEdits.hpp. File 0 is the index of the set, 1 the records of a product, 2 its pages.
// The library answers, or says that an image is damaged.
#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.hpp"
#include "ImageEdits.hpp"
#include "docimage/ImageFile.hpp"
#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/publish.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/ReferenceDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/ask.hpp"
#include "reference/ask/complete.hpp"
#include "support/Items.hpp"
#include "support/TempFolder.hpp"
#include "support/WholeFiles.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using cache_manager::ReferenceCacheManager;
using docimage::DamagedImage;
using docimage::ImageKind;
using property::FunctionType;
using property::RefEntityType;

docset::ProductDocumentation productNamed(const std::u16string& shortName) {
    docset::ProductDocumentation product;
    product.header = {
        .shortName = shortName, .displayName = shortName, .helpFolder = shortName, .version = u"1"};
    const auto add = [&](const std::u16string& name, RefEntityType::Value type,
                         const std::u16string& purpose) {
        const std::u16string href = u"ref/" + name + u".html";
        product.entities[name].emplace_back(type, FunctionType::Function, href, purpose);
        product.pages[href].push_back(
            tests::makeItem({.href = href,
                             .entities = {property::RefEntity{type, name, FunctionType::Function}},
                             .purpose = purpose,
                             .description = u"More of it: " + purpose}));
    };
    add(u"geo.Shape", RefEntityType::Class, u"Some shape in the plane");
    add(u"geo.Shape.draw", RefEntityType::Method, u"Draws a shape");
    add(u"stats.fit", RefEntityType::Function, u"Fits a curve to points");
    add(u"stats.gaussian_kde", RefEntityType::Function, u"Density of samples");
    product.aliases = {{u"g", {{u"geo", 3}}}};
    return product;
}

// One image of the set, as it was written.
struct File {
    fs::path path;
    ImageKind kind;
    docimage::ImageSource source;
    OpenImage sound;

    File(fs::path file, ImageKind kindOfImage) : path(std::move(file)), kind(kindOfImage) {
        const auto content = std::make_shared<const std::string>(tests::contentOf(path));
        const auto opened = docimage::openImageFile(content, *content, kind, path.string());
        source = opened.source;
        sound.sections = opened.image->sections();
        for (auto& [number, section] : sound.sections) {
            const auto bytes = opened.image->view(section, 0, section.size);
            section.offset = sound.bytes.size();
            sound.bytes += bytes;
        }
    }

    void write(const OpenImage& image) const {
        docimage::ImageWriter writer;
        for (const auto& [number, section] : image.sections)
            writer.add(number, std::string_view(image.bytes).substr(section.offset, section.size));
        tests::replaceFileUnseen(path, toImageFile(writer, kind, source));
    }
};

class Set {
  public:
    Set() {
        docset::publishProduct(root(), "en_US", productNamed(u"alpha"));
        docset::publishProduct(root(), "en_US", productNamed(u"beta"));
        files = {{root() / "documentation-set.en_US.image", ImageKind::Set}};
        for (const char* const ending : {"lookup.image", "reference.image"})
            for (const auto& entry : fs::directory_iterator(root() / "en_US"))
                if (entry.path().filename().string().starts_with("alpha") &&
                    entry.path().string().ends_with(ending))
                    files.emplace_back(entry.path(),
                                       ending[0] == 'l' ? ImageKind::Lookup : ImageKind::Pages);
        require(files.size() == 3, "The set has three images that are damaged");
    }

    [[nodiscard]] const fs::path& root() const { return m_folder.path(); }

    std::vector<File> files;

  private:
    tests::TempFolder m_folder;
};

// Each question on its own: after an image that is damaged, the next one is still to be asked.
template <typename Question>
void ask(Question question) {
    try {
        static_cast<void>(question());
    } catch (const DamagedImage&) {
        // As it should be.
    }
}

void askAll() {
    for (const char16_t* const text : {u"fit", u"geo.Shape", u"drw a shap", u"density of a sample",
                                       u"gausian_kde", u"g.Sh(", u"curve points type:function"}) {
        ask([&] { return ask::ask(text); });
        ask([&] { return ask::complete(text); });
        api::ReferenceRequest request(text);
        request.setEntityPrecision(api::EntityPrecision::Ignore_Package);
        ask([&] { return api::ReferenceDataRetriever(request).getReferenceData(); });
        ask([&] { return api::EntityPurposeDataRetriever(request).getReferenceData(); });
        ask([&] { return api::AllTextDataRetriever(request).getReferenceData(); });
        ask([&] { return api::PageNameDataRetriever(request).getReferenceData(); });
    }
}

void run(std::string_view input) {
    static const Set set;
    std::vector<OpenImage> damaged;
    for (const auto& file : set.files)
        damaged.push_back(file.sound);
    for (auto line : linesOf(input)) {
        const std::size_t file = numberOf(takeWord(line));
        if (file < damaged.size())
            damaged[file].damage(line);
    }
    for (std::size_t file = 0; file < damaged.size(); ++file)
        set.files[file].write(damaged[file]);
    docparser::DocResourceParser::setSource(std::make_shared<docparser::FileDocSource>(
        [] { return docparser::DocumentationLocation{.docRoot = set.root()}; }));
    ReferenceCacheManager::ClearAllCaches();
    askAll();
}

const FuzzTarget target("SetImages", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
