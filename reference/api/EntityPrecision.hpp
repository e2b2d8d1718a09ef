#pragma once

#include <cstdint>
#include <string>

#include "reference/api/export.hpp"

namespace reference::api {

// Whether the package qualification of a name must match too. Any thread.
class VELTRA_REFERENCE_API EntityPrecision {
  public:
    // Only Exact_Match requires the qualification; any other number, named or not, ignores it.
    enum Value : std::uint32_t {
        Exact_Match = 0,
        Ignore_Package = 1,
    };

    // "Exact_Match" for Exact_Match, "Ignore_Package" for every other number.
    [[nodiscard]] static std::string enumToString(Value value);

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;
};

}  // namespace reference::api
