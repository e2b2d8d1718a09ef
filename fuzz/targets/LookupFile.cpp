// A lookup file as a documentation set has it. What is read is written and read again.
#include <string>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "FuzzTarget.hpp"
#include "ReadFaults.hpp"
#include "docset/ItemWriter.hpp"
#include "docset/ProductFileReader.hpp"
#include "fl/i18n/utf.hpp"
#include "support/TempFolder.hpp"

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
    static const tests::TempFolder folder;
    folder.write(fileName, input);
    ReadFaults faults(input);
    const auto contents = docset::readLookupFile(folder.path(), fileName, faults.handler());
    require(contents || faults.count() > 0, "A file that is refused has a fault");
    if (!contents || faults.count() > 0)
        return;
    const std::string again = written(*contents);
    folder.write(fileName, again);
    ReadFaults none(again);
    const auto reread = docset::readLookupFile(folder.path(), fileName, none.handler());
    require(reread && none.count() == 0, "What was read can be written", again);
    require(reread->header == contents->header, "The header stays the same", again);
    require(reread->entities == contents->entities, "The entities stay the same", again);
}

const FuzzTarget target("LookupFile", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
