#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/object.hpp>

namespace reference::tools {

// The codes of version 2 of the protocol. The first five are those of JSON-RPC, the next is that of
// the Language Server Protocol.
enum class RpcCode : int {
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    InternalError = -32603,
    RequestCancelled = -32800,
    UnreadableDocumentation = -32001,
};

// Why a request of version 2 is answered by an error. Texts may be any bytes.
class RpcError : public std::runtime_error {
  public:
    // A message that cannot be understood: no JSON, or no request of JSON-RPC.
    [[nodiscard]] static RpcError notJson(const std::string& problem);
    [[nodiscard]] static RpcError notRequest(const std::string& problem);
    // `known`: the methods that there are.
    [[nodiscard]] static RpcError unknownMethod(const std::string& method,
                                                const std::vector<std::string>& known);
    // A parameter that is wrong: its name, where it is an element of a list with its place
    // ("types[1]"); what is wrong; and what would be right.
    [[nodiscard]] static RpcError wrongParameter(const std::string& parameter,
                                                 const std::string& problem,
                                                 const std::string& expected);
    // A parameter that the method does not have.
    [[nodiscard]] static RpcError unknownParameter(const std::string& parameter,
                                                   const std::vector<std::string>& known);
    // The same as wrongParameter() for a name that is none of those that there are: the nearest of
    // them is told.
    [[nodiscard]] static RpcError unknownName(const std::string& parameter, std::string_view kind,
                                              const std::string& name,
                                              const std::vector<std::string>& known);
    // A question that cannot be asked: which part of it is wrong, in UTF-16 units.
    [[nodiscard]] static RpcError wrongQuestion(const std::string& problem, std::size_t position,
                                                std::size_t length, const std::string& part);
    // A language that there is not; `problem` tells which there are.
    [[nodiscard]] static RpcError wrongLanguage(const std::string& problem);
    [[nodiscard]] static RpcError cancelled();
    [[nodiscard]] static RpcError unreadable(const std::string& problem);
    [[nodiscard]] static RpcError internal(const std::string& problem);

    [[nodiscard]] RpcCode code() const noexcept { return m_code; }
    // The value of "error" in an answer: code, message and, mostly, data.
    [[nodiscard]] boost::json::object toJson() const;

  private:
    [[nodiscard]] static RpcError withNearest(const std::string& what, const std::string& parameter,
                                              const std::string& problem, const std::string& name,
                                              const std::vector<std::string>& known);
    RpcError(RpcCode code, const std::string& message, boost::json::object data = {});

    RpcCode m_code;
    boost::json::object m_data;
};

}  // namespace reference::tools
