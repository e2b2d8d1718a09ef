#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

namespace reference::tools {

// A text of a list, and what an error calls it: "types[1]".
struct NamedText {
    std::string parameter;
    std::string text;
};

// The parameters of a request, read by their names. Each operation throws RpcError for a value that
// is not of its kind. An absent parameter and one that is null are the same. One thread.
class RpcParameters {
  public:
    // `params` is an object, or a list of nothing, and must outlive this. Throws RpcError for any
    // other list.
    explicit RpcParameters(const boost::json::value& params);

    // Not empty where it is required.
    [[nodiscard]] std::string requiredText(std::string_view name);
    [[nodiscard]] std::optional<std::string> text(std::string_view name);
    // A list of texts; a text alone is taken for a list of it.
    [[nodiscard]] std::vector<NamedText> texts(std::string_view name);
    [[nodiscard]] std::size_t count(std::string_view name, std::size_t otherwise, std::size_t least,
                                    std::size_t most);
    // False where it is absent.
    [[nodiscard]] bool flag(std::string_view name);
    // Of any kind; null where it is absent.
    [[nodiscard]] const boost::json::value* any(std::string_view name);

    // Throws RpcError for a parameter that nobody has asked for, with those that were.
    void requireNoOthers() const;

  private:
    const boost::json::object m_none;
    const boost::json::object& m_values;
    std::vector<std::string> m_known;
};

// A number of the range, given as JSON may: 10 or 10.0.
[[nodiscard]] std::optional<std::size_t> wholeNumber(const boost::json::value& value,
                                                     std::size_t least, std::size_t most);

}  // namespace reference::tools
