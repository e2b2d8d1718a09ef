#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "vref/RpcError.hpp"

namespace reference::tools {

// The messages of JSON-RPC 2.0, one a line, which are version 2 of the protocol. Any thread.

// Whether the line, or a line that begins like this, is of version 2: a JSON object with a member,
// or a list that begins with one. No name begins so, but code may that a client of version 1 has
// pasted: until a client is known to speak version 2, "jsonrpc" must stand in the line, too.
[[nodiscard]] bool isRpcLine(std::string_view line, bool isKnownClient);

// A request or, without an id, a notification.
struct RpcRequest {
    // A number or a text; nothing for a notification, which is not answered.
    std::optional<boost::json::value> id;
    std::string method;
    // An object or a list; an empty object where there are none.
    boost::json::value params;
};

// A message that is answered by an error, for nobody knows whom if its id is no id.
struct RpcRefusal {
    boost::json::value id;
    RpcError error;
};

using RpcMessage = std::variant<RpcRequest, RpcRefusal>;

// What a line holds.
struct RpcLine {
    // So many may stand in one list.
    static constexpr std::size_t maxBatch = 100;

    std::vector<RpcMessage> messages;
    // They stood in a list, so that their answers do, too.
    bool isBatch = false;
};

// Reads a line. What is wrong with it is among the messages.
[[nodiscard]] RpcLine parseRpcLine(std::string_view line);

// Messages of the session.
[[nodiscard]] boost::json::object rpcResult(boost::json::value id, boost::json::value result);
[[nodiscard]] boost::json::object rpcError(boost::json::value id, const RpcError& error);
[[nodiscard]] boost::json::object rpcNotification(std::string_view method,
                                                  boost::json::object params);

}  // namespace reference::tools
