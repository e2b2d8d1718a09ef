#include "host/docset/Sets.hpp"

#include <algorithm>
#include <ostream>
#include <set>
#include <stdexcept>
#include <utility>

#include "docset/AliasFile.hpp"
#include "docset/Manifest.hpp"
#include "docset/ProductFileReader.hpp"
#include "fl/i18n/utf.hpp"
#include "support/Items.hpp"

namespace reference::tests {

using namespace property;

SetTexts soundSet() {
    return {.manifest = R"json({
  "format": "veltra-documentation-set",
  "formatVersion": 1,
  "title": "Demo documentation",
  "locales": ["en_US", "ja_JP"],
  "products": [
    {
      "shortName": "demo",
      "installed": true,
      "files": {
        "en_US": {"lookup": "en_US/demo.lookup.json", "reference": "en_US/demo.reference.json",
                  "source": {"folder": "/srv/demo", "importer": "sphinx", "importerVersion": "1"}}
      }
    }
  ]
}
)json",
            .lookup = R"json({
  "format": "veltra-documentation-lookup",
  "formatVersion": 1,
  "product": {"shortName": "demo", "displayName": "Demo", "helpFolder": "demo", "version": "1"},
  "entities": {
    "twice": [
      {"type": "function", "functionType": "function", "href": "ref/twice.html", "purpose": "2x"}
    ],
    "Box": [{"type": "class", "functionType": "not-callable", "href": "ref/box.html"}],
    "Box.Width": [{"type": "property", "functionType": "property", "href": "ref/box.html"}]
  }
}
)json",
            .reference = R"json({
  "format": "veltra-documentation-reference",
  "formatVersion": 1,
  "products": [{
    "shortName": "demo", "displayName": "Demo", "helpFolder": "demo", "version": "1",
    "pages": {
      "ref/twice.html": [{
        "entities": [{"name": "twice", "type": "function", "functionType": "function"}],
        "packageName": "arith",
        "purpose": "2x",
        "introduced": "1",
        "description": "One.\n\nTwo.",
        "deprecationStatus": "deprecated",
        "syntaxGroups": [{"title": "Plain", "syntaxes": ["y := twice(x)"]}],
        "inputs": [{"name": "x", "purpose": "A number", "href": "#x", "values": ["number"]}],
        "inputGroups": [{"title": "All", "inputs": [{"name": "x"}]}],
        "outputs": [{"name": "y", "purpose": "Its double"}],
        "seeAlso": [{"page": "ref/box.html", "name": "Box"}],
        "examples": [{"title": "Four", "code": "twice(2)"}],
        "parameters": [{"name": "Gain", "purpose": "Of old", "defaultValue": "2"}],
        "replacements": [{"page": "ref/box.html", "name": "Box"}]
      }],
      "ref/box.html": [{
        "entities": [{"name": "Box", "type": "class", "functionType": "not-callable"}],
        "appThumbnail": {"source": "box.png", "alternativeText": "A box"},
        "classPropertyGroups": [{"title": "Size", "properties": [{"name": "Width"}]}]
      }]
}
}]
}
)json"};
}

std::string& fileOf(SetTexts& texts, std::string_view path) {
    if (path == manifestPath)
        return texts.manifest;
    return path == lookupPath ? texts.lookup : texts.reference;
}

void writeSet(const TempFolder& root, const SetTexts& texts) {
    root.write(manifestPath, texts.manifest);
    root.write(lookupPath, texts.lookup);
    root.write(referencePath, texts.reference);
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
    const auto at = text.find(from);
    if (at == std::string::npos || text.find(from, at + 1) != std::string::npos)
        throw std::logic_error("the text does not occur once: " + std::string(from));
    return text.replace(at, from.size(), to);
}

MarkedText takeMark(std::string text) {
    const auto at = text.find(placeMark);
    if (at == std::string::npos)
        return {.text = std::move(text)};
    const auto before = text.begin() + static_cast<std::ptrdiff_t>(at);
    const auto line = static_cast<std::size_t>(std::count(text.begin(), before, '\n')) + 1;
    const auto lineEnd = text.rfind('\n', at);
    const std::size_t column = lineEnd == std::string::npos ? at + 1 : at - lineEnd;
    text.erase(at, 1);
    return {.text = std::move(text), .line = line, .column = column};
}

docset::FaultHandler FaultList::handler() {
    return [this](const docset::Fault& fault) { m_faults.push_back(fault); };
}

std::string dump(const std::vector<docset::Fault>& faults) {
    std::string text;
    for (const auto& fault : faults)
        text += fault.toString() + "\n";
    return text;
}

docset::ProductDocumentation makeProduct(const std::u16string& shortName,
                                         const std::u16string& edition, std::size_t functions) {
    docset::ProductDocumentation product;
    product.header = {.shortName = shortName,
                      .displayName = u"The " + shortName,
                      .helpFolder = shortName,
                      .version = edition};
    for (std::size_t number = 0; number < functions; ++number) {
        const std::u16string name = u"f" + fl::i18n::toUtf16(std::to_string(number));
        const std::u16string href = u"ref/" + name + u".html";
        const RefEntity entity(RefEntityType::Function, name, FunctionType::Function);
        product.entities[name] = {
            RefItemLookup(entity.getRefEntityType(), entity.getFunctionType(), href, edition)};
        product.pages[href] = {makeItem({.href = href, .entities = {entity}, .purpose = edition})};
    }
    const std::u16string href = u"ref/box.html";
    const RefEntity box(RefEntityType::Class, u"Box", FunctionType::NotCallable);
    product.entities[u"Box"] = {
        RefItemLookup(box.getRefEntityType(), box.getFunctionType(), href, edition)};
    product.entities[u"Box.Width"] = {
        RefItemLookup(RefEntityType::Property, FunctionType::Property, href, edition)};
    product.pages[href] = {makeItem({.href = href,
                                     .entities = {box},
                                     .purpose = edition,
                                     .classPropertyGroups = {ClassPropertyGroup(
                                         u"Size", {ClassProperty(u"Width", edition, u"", {})})}})};
    return product;
}

std::optional<docset::ProductDocumentation> readProduct(const std::filesystem::path& root,
                                                        const std::u16string& shortName,
                                                        const std::string& locale) {
    const auto raise = [](const docset::Fault& fault) {
        throw std::runtime_error(fault.toString());
    };
    const auto manifest = docset::readManifest(root, raise);
    const auto listed =
        std::ranges::find(manifest->products, shortName, &docset::ManifestProduct::shortName);
    if (listed == manifest->products.end() || !listed->files.contains(locale))
        return std::nullopt;
    const auto& files = listed->files.at(locale);
    auto lookup = docset::readLookupFile(root, files.lookup, raise);
    auto reference = docset::readReferenceFile(root, files.reference, raise);
    auto aliases = docset::readAliases(root, files.lookup, raise);
    if (reference->size() != 1 || reference->front().header != lookup->header)
        throw std::runtime_error("the files of the product do not belong together");
    return docset::ProductDocumentation{.header = lookup->header,
                                        .entities = std::move(lookup->entities),
                                        .pages = std::move(reference->front().pages),
                                        .aliases = std::move(*aliases),
                                        .source = files.source};
}

std::string editionOf(const docset::ProductDocumentation& product) {
    std::set<std::u16string> editions{product.header.version};
    for (const auto& [name, records] : product.entities)
        for (const auto& record : records)
            editions.insert(record.getPurpose());
    for (const auto& [href, items] : product.pages)
        for (const auto& item : items)
            editions.insert(item.getPurpose());
    if (editions.size() != 1)
        throw std::runtime_error("the product is of several editions");
    return fl::i18n::toUtf8(*editions.begin());
}

}  // namespace reference::tests

namespace reference::docset {

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.toString();
}

}  // namespace reference::docset
