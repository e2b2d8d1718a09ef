// A reference file as a documentation set has it. What is read is written and read again.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

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
using docset::ReferenceContents;
using fl::i18n::toUtf8;

constexpr const char* fileName = "a.reference.json";

std::string written(const std::vector<ReferenceContents>& contents) {
    json::array products;
    for (const auto& product : contents) {
        json::object pages;
        for (const auto& [href, items] : product.pages) {
            json::array list;
            for (const auto& item : items)
                list.push_back(docset::toJson(item, docset::JsonForm::Set));
            pages[toUtf8(href)] = std::move(list);
        }
        products.push_back(json::object{{"shortName", toUtf8(product.header.shortName)},
                                        {"displayName", toUtf8(product.header.displayName)},
                                        {"helpFolder", toUtf8(product.header.helpFolder)},
                                        {"version", toUtf8(product.header.version)},
                                        {"pages", std::move(pages)}});
    }
    return json::serialize(json::object{{"format", "veltra-documentation-reference"},
                                        {"formatVersion", 1},
                                        {"products", std::move(products)}});
}

void run(std::string_view input) {
    requireRoundTrip(
        fileName, input,
        [](const auto& root, const auto& handler) {
            return docset::readReferenceFile(root, fileName, handler);
        },
        &written,
        [](const auto& again, const auto& contents, const std::string& text) {
            require(std::ranges::equal(again, contents,
                                       [](const auto& a, const auto& b) {
                                           return a.header == b.header && a.pages == b.pages;
                                       }),
                    "The products stay the same", text);
        });
}

const FuzzTarget target("ReferenceFile", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
