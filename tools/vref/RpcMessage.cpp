#include "vref/RpcMessage.hpp"

#include <algorithm>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/error.hpp>
#include <boost/json/parse.hpp>

namespace reference::tools {
namespace {

namespace json = boost::json;

constexpr std::string_view blanks = " \t\r";

// Takes a mark and the white space before it off the text; returns whether it was there.
bool takeMark(std::string_view& text, char mark) {
    const auto at = text.find_first_not_of(blanks);
    if (at == std::string_view::npos || text[at] != mark)
        return false;
    text.remove_prefix(at + 1);
    return true;
}

bool isId(const json::value& value) {
    return value.is_string() || value.is_number();
}

// What an error is answered to where the request may be none.
json::value idForRefusal(const json::object& message) {
    const json::value* const id = message.if_contains("id");
    return id != nullptr && isId(*id) ? *id : json::value();
}

std::optional<std::string> whyNoRequest(const json::object& message) {
    const json::value* const version = message.if_contains("jsonrpc");
    if (version == nullptr || *version != "2.0")
        return "A message has the member \"jsonrpc\" with the value \"2.0\".";
    const json::value* const method = message.if_contains("method");
    if (method == nullptr || !method->is_string())
        return "A request names its method by the member \"method\", which is a text.";
    if (const json::value* const id = message.if_contains("id");
        id != nullptr && !id->is_null() && !isId(*id))
        return "The member \"id\" of a request is a number or a text.";
    if (const json::value* const params = message.if_contains("params");
        params != nullptr && !params->is_structured())
        return "The member \"params\" of a request is an object.";
    return std::nullopt;
}

RpcMessage toMessage(json::value&& value) {
    if (!value.is_object())
        return RpcRefusal{{}, RpcError::notRequest("A message is a JSON object.")};
    json::object& message = value.get_object();
    if (const auto problem = whyNoRequest(message))
        return RpcRefusal{idForRefusal(message), RpcError::notRequest(*problem)};

    RpcRequest request{.method = std::string(message.at("method").get_string())};
    if (const json::value* const id = message.if_contains("id"); id != nullptr && isId(*id))
        request.id = *id;
    if (json::value* const params = message.if_contains("params"))
        request.params = std::move(*params);
    else
        request.params.emplace_object();
    return request;
}

RpcLine refusal(const RpcError& error) {
    RpcLine line;
    line.messages.emplace_back(RpcRefusal{{}, error});
    return line;
}

}  // namespace

bool isRpcLine(std::string_view line, bool isKnownClient) {
    if (!isKnownClient && line.find("\"jsonrpc\"") == std::string_view::npos)
        return false;
    static_cast<void>(takeMark(line, '['));
    return takeMark(line, '{') && takeMark(line, '"');
}

RpcLine parseRpcLine(std::string_view text) {
    json::error_code problem;
    json::value value = json::parse({text.data(), text.size()}, problem);
    if (problem)
        return refusal(RpcError::notJson("The line is not JSON in UTF-8: " + problem.message() +
                                         ". No value may stand in more than 32 others."));
    RpcLine line;
    if (!value.is_array()) {
        line.messages.push_back(toMessage(std::move(value)));
        return line;
    }
    json::array& batch = value.get_array();
    if (batch.size() > RpcLine::maxBatch)
        return refusal(RpcError::notRequest("A list holds at most " +
                                            std::to_string(RpcLine::maxBatch) + " requests."));
    line.isBatch = true;
    line.messages.reserve(batch.size());
    for (json::value& element : batch)
        line.messages.push_back(toMessage(std::move(element)));
    return line;
}

json::object rpcResult(json::value id, json::value result) {
    return {{"jsonrpc", "2.0"}, {"id", std::move(id)}, {"result", std::move(result)}};
}

json::object rpcError(json::value id, const RpcError& error) {
    return {{"jsonrpc", "2.0"}, {"id", std::move(id)}, {"error", error.toJson()}};
}

json::object rpcNotification(std::string_view method, json::object params) {
    return {{"jsonrpc", "2.0"},
            {"method", json::string(method.data(), method.size())},
            {"params", std::move(params)}};
}

}  // namespace reference::tools
