// The table from which the texts of all the property library's enumerations come. Internal: no
// public header includes it.
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/algorithm/string/predicate.hpp>

namespace reference::property::detail {

// The host package under which the property library's classes are shown.
inline constexpr const char* propertyPackageName = "veltra.internal.reference.property";

// Names of the values 0, 1, 2, … of one enumeration.
template <typename Value, std::size_t Count>
class EnumNames {
  public:
    explicit constexpr EnumNames(std::array<std::string_view, Count> names) : m_names(names) {}

    [[nodiscard]] std::string toString(Value value) const {
        const auto number = static_cast<std::uint32_t>(value);
        return number < Count ? std::string(m_names[number]) : std::to_string(number);
    }

    [[nodiscard]] std::optional<Value> fromString(std::string_view text) const {
        const auto found = std::find_if(m_names.begin(), m_names.end(), [text](auto name) {
            return boost::algorithm::iequals(name, text);
        });
        if (found != m_names.end())
            return static_cast<Value>(found - m_names.begin());
        std::uint32_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (text.empty() || error != std::errc{} || end != text.data() + text.size())
            return std::nullopt;
        return static_cast<Value>(number);
    }

    [[nodiscard]] std::vector<Value> values() const {
        std::vector<Value> all;
        for (std::uint32_t number = 0; number < Count; ++number)
            all.push_back(static_cast<Value>(number));
        return all;
    }

  private:
    std::array<std::string_view, Count> m_names;
};

}  // namespace reference::property::detail
