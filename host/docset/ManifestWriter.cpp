#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/value.hpp>

#include "docset/Formats.hpp"
#include "docset/ManifestFile.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

namespace json = boost::json;

json::object sourceMembers(const ProductSource& source) {
    json::object members{{"folder", source.folder}, {"importer", source.importer}};
    if (!source.importerVersion.empty())
        members.emplace("importerVersion", source.importerVersion);
    return members;
}

}  // namespace

json::object toJson(const Manifest& manifest) {
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
        products.push_back(json::object{{"shortName", fl::i18n::toUtf8(product.shortName)},
                                        {"installed", product.installed},
                                        {"files", std::move(files)}});
    }
    return {{"format", manifestFormat},
            {"formatVersion", formatVersion},
            {"title", manifest.title},
            {"locales", std::move(locales)},
            {"products", std::move(products)}};
}

}  // namespace reference::docset
