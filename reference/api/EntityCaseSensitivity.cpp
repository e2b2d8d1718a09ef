#include "reference/api/EntityCaseSensitivity.hpp"

#include "reference/api/hostNames.hpp"

namespace reference::api {

// A number without a name is told as the default, although it folds case: clients compare this text
// with "Insensitive" alone. EntityPrecision falls the other way.
std::string EntityCaseSensitivity::enumToString(Value value) {
    return value == Insensitive ? "Insensitive" : "Sensitive";
}

const char* EntityCaseSensitivity::getZORBClassName() noexcept {
    return "EntityCaseSensitivity";
}

const char* EntityCaseSensitivity::getZORBPackageName() noexcept {
    return apiPackageName;
}

}  // namespace reference::api
