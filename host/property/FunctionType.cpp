#include "property/FunctionType.hpp"

#include "foundation/core/NeverDestroyed.hpp"
#include "property/EnumNames.hpp"

namespace reference::property {
namespace {

constexpr detail::EnumNames<FunctionType::Value, 10> functionTypeNames({
    "function",
    "method",
    "static-method",
    "class-method",
    "constructor",
    "destructor",
    "property",
    "operator",
    "macro",
    "not-callable",
});

}  // namespace

std::string FunctionType::enumToString(Value value) {
    return functionTypeNames.toString(value);
}

std::optional<FunctionType::Value> FunctionType::fromString(std::string_view text) {
    return functionTypeNames.fromString(text);
}

const std::vector<FunctionType::Value>& FunctionType::namedValues() {
    static const foundation::core::NeverDestroyed<std::vector<Value>> all(
        functionTypeNames.values());
    return *all;
}

const char* FunctionType::getZORBClassName() noexcept {
    return "FunctionType";
}

const char* FunctionType::getZORBPackageName() noexcept {
    return detail::propertyPackageName;
}

}  // namespace reference::property
