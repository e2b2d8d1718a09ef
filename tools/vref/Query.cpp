#include "vref/Query.hpp"

#include <stdexcept>
#include <utility>

#include "fl/i18n/utf.hpp"
#include "property/RefEntityType.hpp"
#include "vref/ExitStatus.hpp"

namespace reference::tools {
namespace {

using property::RefEntityType;

std::u16string fromCommandLine(const std::string& text) {
    try {
        return fl::i18n::toUtf16(text);
    } catch (const std::invalid_argument&) {
        throw UnusableError("The command line holds text that is not UTF-8.");
    }
}

RefEntityType::Value toType(const std::string& text) {
    if (const auto type = RefEntityType::fromString(text))
        return *type;
    std::string known;
    for (const auto value : RefEntityType::namedValues())
        known += (known.empty() ? "" : ", ") + RefEntityType::enumToString(value);
    throw UnusableError("There is no entity type \"" + text + "\"; there is: " + known +
                        ", or a number.");
}

}  // namespace

api::ReferenceRequest toRequest(const QueryOptions& options, const Documentation& documentation) {
    if (options.all && !options.name.empty())
        throw UnusableError("--all matches everything and takes no name.");
    if (!options.all && options.name.empty())
        throw UnusableError("A name to look for is missing; --all lists everything.");

    std::vector<RefEntityType::Value> types;
    for (const auto& text : options.types)
        types.push_back(toType(text));
    std::vector<std::u16string> products;
    for (const auto& text : options.products) {
        products.push_back(fromCommandLine(text));
        documentation.requireInstalled(products.back());
    }
    if (options.all)
        return api::ReferenceRequest::createMatchAllTextRequest(std::move(types),
                                                                std::move(products));
    api::ReferenceRequest request(fromCommandLine(options.name), std::move(types),
                                  std::move(products));
    if (options.ignoreCase)
        request.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
    if (options.ignorePackage)
        request.setEntityPrecision(api::EntityPrecision::Ignore_Package);
    return request;
}

}  // namespace reference::tools
