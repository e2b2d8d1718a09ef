#include "reference/api/EntityCaseSensitivity.hpp"

#include "reference/api/hostNames.hpp"

namespace reference::api {

// A number without a name is shown as the default, although it folds case, because clients only
// compare this text with "Insensitive". EntityPrecision does it the other way round.
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
