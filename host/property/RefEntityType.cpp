#include "property/RefEntityType.hpp"

#include "foundation/core/NeverDestroyed.hpp"
#include "property/EnumNames.hpp"

namespace reference::property {
namespace {

constexpr detail::EnumNames<RefEntityType::Value, 28> entityTypeNames({
    "function",  "class",       "package",    "method",   "property", "event",    "enumeration",
    "interface", "constructor", "destructor", "constant", "operator", "variable", "keyword",
    "command",   "app",         "block",      "option",   "setting",  "topic",    "example",
    "term",      "type-alias",  "macro",      "tool",     "model",    "page",     "unknown",
});

}  // namespace

std::string RefEntityType::enumToString(Value value) {
    return entityTypeNames.toString(value);
}

std::optional<RefEntityType::Value> RefEntityType::fromString(std::string_view text) {
    return entityTypeNames.fromString(text);
}

const std::vector<RefEntityType::Value>& RefEntityType::namedValues() {
    static const foundation::core::NeverDestroyed<std::vector<Value>> all(entityTypeNames.values());
    return *all;
}

const char* RefEntityType::getZORBClassName() noexcept {
    return "RefEntityType";
}

const char* RefEntityType::getZORBPackageName() noexcept {
    return detail::propertyPackageName;
}

}  // namespace reference::property
