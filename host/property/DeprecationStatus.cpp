#include "property/DeprecationStatus.hpp"

#include "foundation/core/NeverDestroyed.hpp"
#include "property/EnumNames.hpp"

namespace reference::property {
namespace {

constexpr detail::EnumNames<DeprecationStatus::Value, 3> deprecationStatusNames({
    "current",
    "deprecated",
    "removed",
});

}  // namespace

std::string DeprecationStatus::enumToString(Value value) {
    return deprecationStatusNames.toString(value);
}

std::optional<DeprecationStatus::Value> DeprecationStatus::fromString(std::string_view text) {
    return deprecationStatusNames.fromString(text);
}

const std::vector<DeprecationStatus::Value>& DeprecationStatus::namedValues() {
    static const foundation::core::NeverDestroyed<std::vector<Value>> all(
        deprecationStatusNames.values());
    return *all;
}

const char* DeprecationStatus::getZORBClassName() noexcept {
    return "DeprecationStatus";
}

const char* DeprecationStatus::getZORBPackageName() noexcept {
    return detail::propertyPackageName;
}

}  // namespace reference::property
