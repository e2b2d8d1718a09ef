#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/core/export.hpp"

namespace reference::property {

// Whether a documented entity is still to be used. Any 32-bit number can be held: a number outside
// the table is kept unchanged and written as its digits.
//
// Static functions only; every one may be called from any thread.
class VELTRA_HOST_API DeprecationStatus {
  public:
    enum Value : std::uint32_t {
        Current = 0,
        Deprecated = 1,
        Removed = 2,
    };

    // The text of a value as tools read and write it ("deprecated"); a number without a name gives
    // its decimal digits.
    [[nodiscard]] static std::string enumToString(Value value);

    // The value of a text that `enumToString` gives, in any letter case; decimal digits up to
    // 4294967295 give that number. Anything else gives nothing.
    [[nodiscard]] static std::optional<Value> fromString(std::string_view text);

    // All named values, in numeric order.
    [[nodiscard]] static const std::vector<Value>& namedValues();

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;
};

}  // namespace reference::property
