#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/core/export.hpp"

namespace reference::property {

// How a documented entity is called. Any 32-bit number can be held: a number outside the table is
// kept unchanged and written as its digits.
//
// Static functions only; every one may be called from any thread.
class VELTRA_HOST_API FunctionType {
  public:
    enum Value : std::uint32_t {
        Function = 0,
        Method = 1,
        StaticMethod = 2,
        ClassMethod = 3,
        Constructor = 4,
        Destructor = 5,
        Property = 6,
        Operator = 7,
        Macro = 8,
        NotCallable = 9,
    };

    // The text of a value as tools read and write it ("static-method"); a number without a name
    // gives its decimal digits.
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
