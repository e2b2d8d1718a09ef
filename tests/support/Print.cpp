#include "support/Print.hpp"

#include <algorithm>
#include <iterator>

#include "fl/i18n/utf.hpp"
#include "property/RefEntityType.hpp"

namespace reference::tests {

std::string dump(const api::ReferenceData& result) {
    std::string text = fl::i18n::toUtf8(result.getHeaderInfo().getShortName()) + ":";
    bool first = true;
    for (const auto& entity : result.getRefItem().getRefEntities()) {
        text += (first ? "" : "+") + fl::i18n::toUtf8(entity.getName()) + "[" +
                property::RefEntityType::enumToString(entity.getRefEntityType()) + "]";
        first = false;
    }
    return text + "@" + fl::i18n::toUtf8(result.getRefItem().getHref());
}

std::vector<std::string> dump(const std::vector<api::ReferenceData>& results) {
    std::vector<std::string> dumps;
    std::ranges::transform(results, std::back_inserter(dumps),
                           [](const api::ReferenceData& result) { return dump(result); });
    return dumps;
}

}  // namespace reference::tests
