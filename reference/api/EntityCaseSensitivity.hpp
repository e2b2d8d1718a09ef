#pragma once

#include <cstdint>
#include <string>

#include "reference/api/export.hpp"

namespace reference::api {

// Whether letter case counts when a name or text is compared. Any thread.
class VELTRA_REFERENCE_API EntityCaseSensitivity {
  public:
    // Only Sensitive makes case count; any other number, named or not, folds it.
    enum Value : std::uint32_t {
        Sensitive = 0,
        Insensitive = 1,
    };

    // "Insensitive" for Insensitive, "Sensitive" for every other number.
    [[nodiscard]] static std::string enumToString(Value value);

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;
};

}  // namespace reference::api
