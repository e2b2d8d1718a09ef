#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/core/export.hpp"

namespace reference::property {

// The kind of thing that a documentation entry documents. Any 32-bit number can be held: a number
// outside the table is kept unchanged and written as its digits.
//
// Static functions only; every one may be called from any thread.
class VELTRA_HOST_API RefEntityType {
  public:
    enum Value : std::uint32_t {
        Function = 0,
        Class = 1,
        Package = 2,
        Method = 3,
        Property = 4,
        Event = 5,
        Enumeration = 6,
        Interface = 7,
        Constructor = 8,
        Destructor = 9,
        Constant = 10,
        Operator = 11,
        Variable = 12,
        Keyword = 13,
        Command = 14,
        App = 15,
        Block = 16,
        Option = 17,
        Setting = 18,
        Topic = 19,
        Example = 20,
        Term = 21,
        TypeAlias = 22,
        Macro = 23,
        Tool = 24,
        Model = 25,
        Page = 26,
        Unknown = 27,
    };

    // The text of a value as tools read and write it ("function", "type-alias"); a number without a
    // name gives its decimal digits.
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
