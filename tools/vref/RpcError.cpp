#include "vref/RpcError.hpp"

#include <boost/algorithm/string/join.hpp>
#include <boost/json/string.hpp>

#include "vref/DisplayText.hpp"
#include "vref/Nearest.hpp"

namespace reference::tools {

namespace json = boost::json;

RpcError::RpcError(RpcCode code, const std::string& message, json::object data)
    : std::runtime_error(wellFormed(message)), m_code(code), m_data(std::move(data)) {}

RpcError RpcError::notJson(const std::string& problem) {
    return {RpcCode::ParseError, problem};
}

RpcError RpcError::notRequest(const std::string& problem) {
    return {RpcCode::InvalidRequest, problem};
}

RpcError RpcError::unknownMethod(const std::string& method, const std::vector<std::string>& known) {
    const auto meant = nearest(method, known);
    return {RpcCode::MethodNotFound,
            "There is no method \"" + printableLine(method) + "\"; " +
                (meant ? "did you mean \"" + *meant + "\"? There is: " : "there is: ") +
                boost::join(known, ", ") + ".",
            {{"method", wellFormed(method)}}};
}

RpcError RpcError::wrongParameter(const std::string& parameter, const std::string& problem,
                                  const std::string& expected) {
    return {RpcCode::InvalidParams,
            "The parameter \"" + parameter + "\" " + problem + "; it must be " + expected + ".",
            {{"parameter", wellFormed(parameter)},
             {"problem", wellFormed(problem)},
             {"expected", wellFormed(expected)}}};
}

RpcError RpcError::unknownName(const std::string& parameter, std::string_view kind,
                               const std::string& name, const std::vector<std::string>& known) {
    return withNearest(
        "The parameter \"" + parameter + "\"", parameter,
        "names the " + std::string(kind) + " \"" + printableLine(name) + "\", which there is not",
        name, known);
}

RpcError RpcError::unknownParameter(const std::string& parameter,
                                    const std::vector<std::string>& known) {
    return withNearest("The method", parameter,
                       "has no parameter \"" + printableLine(parameter) + "\"", parameter, known);
}

RpcError RpcError::withNearest(const std::string& what, const std::string& parameter,
                               const std::string& problem, const std::string& name,
                               const std::vector<std::string>& known) {
    const std::string all = known.empty() ? "none" : boost::join(known, ", ");
    json::object data{
        {"parameter", wellFormed(parameter)}, {"problem", problem}, {"expected", "one of " + all}};
    const auto meant = nearest(name, known);
    if (meant)
        data.emplace("nearest", *meant);
    return {RpcCode::InvalidParams,
            what + " " + problem +
                (meant ? "; did you mean \"" + *meant + "\"? There is: " : "; there is: ") + all +
                ".",
            std::move(data)};
}

RpcError RpcError::wrongQuestion(const std::string& problem, std::size_t position,
                                 std::size_t length, const std::string& part) {
    return {RpcCode::InvalidParams,
            problem,
            {{"parameter", "question"},
             {"problem", wellFormed(problem)},
             {"position", position},
             {"length", length},
             {"text", wellFormed(part)}}};
}

RpcError RpcError::wrongLanguage(const std::string& problem) {
    return {RpcCode::InvalidParams,
            problem,
            {{"parameter", "language"}, {"problem", wellFormed(problem)}}};
}

RpcError RpcError::cancelled() {
    return {RpcCode::RequestCancelled, "The request was cancelled."};
}

RpcError RpcError::unreadable(const std::string& problem) {
    return {RpcCode::UnreadableDocumentation, problem};
}

RpcError RpcError::internal(const std::string& problem) {
    return {RpcCode::InternalError, problem};
}

json::object RpcError::toJson() const {
    json::object error{{"code", static_cast<int>(m_code)}, {"message", what()}};
    if (!m_data.empty())
        error.emplace("data", m_data);
    return error;
}

}  // namespace reference::tools
