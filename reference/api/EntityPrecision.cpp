#include "reference/api/EntityPrecision.hpp"

#include "reference/api/hostNames.hpp"

namespace reference::api {

// A number without a name is shown as what it does: it ignores the package.
std::string EntityPrecision::enumToString(Value value) {
    return value == Exact_Match ? "Exact_Match" : "Ignore_Package";
}

const char* EntityPrecision::getZORBClassName() noexcept {
    return "EntityPrecision";
}

const char* EntityPrecision::getZORBPackageName() noexcept {
    return apiPackageName;
}

}  // namespace reference::api
