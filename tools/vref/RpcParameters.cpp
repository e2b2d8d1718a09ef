#include "vref/RpcParameters.hpp"

#include <algorithm>

#include <boost/json/array.hpp>

#include "vref/RpcError.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;

const json::object& objectOf(const json::value& params, const json::object& none) {
    if (params.is_object())
        return params.get_object();
    if (!params.is_array() || !params.get_array().empty())
        throw RpcError::wrongParameter("params", "is a list",
                                       "an object, since parameters have names");
    return none;
}

}  // namespace

RpcParameters::RpcParameters(const json::value& params) : m_values(objectOf(params, m_none)) {}

const json::value* RpcParameters::any(std::string_view name) {
    if (std::ranges::find(m_known, name) == m_known.end())
        m_known.emplace_back(name);
    const json::value* const value = m_values.if_contains({name.data(), name.size()});
    return value != nullptr && !value->is_null() ? value : nullptr;
}

std::string RpcParameters::requiredText(std::string_view name) {
    auto value = text(name);
    if (!value)
        throw RpcError::wrongParameter(std::string(name), "is missing", "a text");
    if (value->empty())
        throw RpcError::wrongParameter(std::string(name), "is empty", "a text that says something");
    return std::move(*value);
}

std::optional<std::string> RpcParameters::text(std::string_view name) {
    const json::value* const value = any(name);
    if (value == nullptr)
        return std::nullopt;
    if (!value->is_string())
        throw RpcError::wrongParameter(std::string(name), "is no text", "a text");
    return std::string(value->get_string());
}

std::vector<NamedText> RpcParameters::texts(std::string_view name) {
    const json::value* const value = any(name);
    std::vector<NamedText> texts;
    if (value == nullptr)
        return texts;
    const std::string parameter(name);
    if (value->is_string())
        return {{parameter, std::string(value->get_string())}};
    if (!value->is_array())
        throw RpcError::wrongParameter(parameter, "is neither a text nor a list",
                                       "a list of texts");
    const json::array& list = value->get_array();
    texts.reserve(list.size());
    for (const json::value& element : list) {
        const std::string place = parameter + "[" + std::to_string(texts.size()) + "]";
        if (!element.is_string())
            throw RpcError::wrongParameter(place, "is no text", "a text");
        texts.push_back({place, std::string(element.get_string())});
    }
    return texts;
}

std::size_t RpcParameters::count(std::string_view name, std::size_t otherwise, std::size_t least,
                                 std::size_t most) {
    const json::value* const value = any(name);
    if (value == nullptr)
        return otherwise;
    const auto number = wholeNumber(*value, least, most);
    if (!number)
        throw RpcError::wrongParameter(
            std::string(name), value->is_number() ? "is out of range" : "is no number",
            "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
    return *number;
}

bool RpcParameters::flag(std::string_view name) {
    const json::value* const value = any(name);
    if (value != nullptr && !value->is_bool())
        throw RpcError::wrongParameter(std::string(name), "is no truth value", "true or false");
    return value != nullptr && value->get_bool();
}

void RpcParameters::requireNoOthers() const {
    for (const auto& member : m_values)
        if (const std::string name(member.key()); std::ranges::find(m_known, name) == m_known.end())
            throw RpcError::unknownParameter(name, m_known);
}

std::optional<std::size_t> wholeNumber(const json::value& value, std::size_t least,
                                       std::size_t most) {
    json::error_code problem;
    const auto number = value.to_number<std::size_t>(problem);
    if (problem || number < least || number > most)
        return std::nullopt;
    return number;
}

}  // namespace reference::tools
