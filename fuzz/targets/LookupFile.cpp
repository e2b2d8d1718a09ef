// A lookup file as a documentation set has it. What is read is written and read again.
#include <string>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "FuzzTarget.hpp"
#include "RoundTrip.hpp"
#include "docset/ItemWriter.hpp"
#include "docset/ProductFileReader.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using docset::LookupContents;
using fl::i18n::toUtf8;

constexpr const char* fileName = "a.lookup.json";

std::string written(const LookupContents& contents) {
    json::object entities;
    for (const auto& [name, records] : contents.entities) {
        json::array list;
        for (const auto& record : records)
            list.push_back(docset::toJson(record));
        entities[toUtf8(name)] = std::move(list);
    }
    return json::serialize(json::object{{"format", "veltra-documentation-lookup"},
                                        {"formatVersion", 1},
                                        {"product",
                                         {{"shortName", toUtf8(contents.header.shortName)},
                                          {"displayName", toUtf8(contents.header.displayName)},
                                          {"helpFolder", toUtf8(contents.header.helpFolder)},
                                          {"version", toUtf8(contents.header.version)}}},
                                        {"entities", std::move(entities)}});
}

void run(std::string_view input) {
    requireRoundTrip(
        fileName, input,
        [](const auto& root, const auto& handler) {
            return docset::readLookupFile(root, fileName, handler);
        },
        &written,
        [](const auto& again, const auto& contents, const std::string& text) {
            require(again.header == contents.header, "The header stays the same", text);
            require(again.entities == contents.entities, "The entities stay the same", text);
        });
}

const FuzzTarget target("LookupFile", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
