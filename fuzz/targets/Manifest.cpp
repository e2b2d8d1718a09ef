// The manifest of a documentation set. What is read is written and read again; and a product is
// published into the set, which writes the manifest as the library does.
#include "docset/Manifest.hpp"

#include <algorithm>
#include <string>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "FuzzTarget.hpp"
#include "ReadFaults.hpp"
#include "RoundTrip.hpp"
#include "docset/publish.hpp"
#include "fl/i18n/utf.hpp"
#include "support/Items.hpp"
#include "support/TempFolder.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using docset::Manifest;
using fl::i18n::toUtf8;

constexpr const char* fileName = docset::manifestFileName;

std::string written(const Manifest& manifest) {
    json::array products;
    for (const auto& product : manifest.products) {
        json::object files;
        for (const auto& [locale, entry] : product.files) {
            json::object members{{"lookup", entry.lookup}};
            if (!entry.reference.empty())
                members["reference"] = entry.reference;
            if (entry.source)
                members["source"] = {{"folder", entry.source->folder},
                                     {"importer", entry.source->importer},
                                     {"importerVersion", entry.source->importerVersion}};
            files[locale] = std::move(members);
        }
        products.push_back(json::object{{"shortName", toUtf8(product.shortName)},
                                        {"installed", product.installed},
                                        {"files", std::move(files)}});
    }
    json::array locales;
    for (const auto& locale : manifest.locales)
        locales.emplace_back(locale);
    return json::serialize(json::object{{"format", "veltra-documentation-set"},
                                        {"formatVersion", 1},
                                        {"title", manifest.title},
                                        {"locales", std::move(locales)},
                                        {"products", std::move(products)}});
}

docset::ProductDocumentation publishedProduct() {
    docset::ProductDocumentation product;
    product.header = {
        .shortName = u"fuzz", .displayName = u"Fuzz", .helpFolder = u"fuzz", .version = u"1"};
    const auto item = tests::makeFullItem(u"full.html");
    product.pages[u"full.html"] = {item};
    for (const auto& entity : item.getRefEntities())
        product.entities[entity.getName()].emplace_back(
            entity.getRefEntityType(), entity.getFunctionType(), u"full.html", item.getPurpose());
    return product;
}

// Publishing replaces one product in one locale, or refuses and leaves the manifest as it is.
void publishInto(const Manifest& manifest, std::string_view input) {
    static const auto product = publishedProduct();
    const tests::TempFolder root;
    root.write(fileName, input);
    const std::string& locale = manifest.locales.front();
    try {
        docset::publishProduct(root.path(), locale, product);
    } catch (const docset::PublishError& error) {
        // A locale may have the name of a file of the set.
        require(locale.find('.') != std::string::npos, "A sound set takes a product", error.what());
        require(root.read(fileName) == input, "What is refused changes nothing");
        return;
    }
    const std::string content = root.read(fileName);
    ReadFaults none(content);
    auto after = docset::readManifest(root.path(), none.handler());
    require(after && none.count() == 0, "What is published can be read", content);
    require(after->title == manifest.title && after->locales == manifest.locales,
            "Publishing keeps title and locales", content);
    auto before = manifest;
    const auto withoutIt = [](Manifest& one) {
        std::erase_if(one.products, [](const auto& each) { return each.shortName == u"fuzz"; });
    };
    const auto mine = std::ranges::find(after->products, u"fuzz", [](const auto& each) {
        return std::u16string_view(each.shortName);
    });
    require(mine != after->products.end() && mine->installed && mine->files.contains(locale),
            "What is published is listed", content);
    withoutIt(*after);
    withoutIt(before);
    require(after->products == before.products, "Publishing keeps the other products", content);
}

void run(std::string_view input) {
    const auto read = [](const auto& root, const auto& handler) {
        return docset::readManifest(root, handler);
    };
    Manifest manifest;
    if (requireRoundTrip(fileName, input, read, &written,
                         [&](const Manifest& again, const Manifest& first, const auto& text) {
                             require(again == first, "The manifest stays the same", text);
                             manifest = again;
                         }))
        publishInto(manifest, input);
}

const FuzzTarget target("Manifest", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
