#include "vref/RpcMethods.hpp"

#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "vref/ExitStatus.hpp"
#include "vref/HitJson.hpp"
#include "vref/LineReader.hpp"
#include "vref/ProductRows.hpp"
#include "vref/RpcError.hpp"
#include "vref/RpcMessage.hpp"
#include "vref/RpcParameters.hpp"
#include "vref/RpcSearches.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;
using Lane = RequestPool::Lane;

constexpr int rpcVersion = 2;

json::object toJson(const LoadedDocumentation& loaded) {
    return {{"language", loaded.language},
            {"products", loaded.products},
            {"entities", loaded.entities}};
}

json::array toJson(const std::vector<std::string>& texts) {
    json::array array;
    array.reserve(texts.size());
    for (const std::string& text : texts)
        array.emplace_back(text);
    return array;
}

// Clients say more of themselves than the session wants to know.
RpcCall prepareInitialize(RpcParameters& parameters, WatchedDocumentation& watched) {
    if (const auto* const wanted = parameters.any("protocol");
        wanted != nullptr && !wholeNumber(*wanted, rpcVersion, rpcVersion))
        throw RpcError::wrongParameter("protocol", "names a version that is not spoken here",
                                       "2, or absent");
    return {Lane::Quick, [&watched]() -> json::value {
                json::object result{
                    {"protocol", rpcVersion},
                    {"protocols", {1, rpcVersion}},
                    {"server", {{"name", "vref"}, {"version", VELTRA_VERSION}}},
                    {"capabilities",
                     {{"methods", toJson(rpcMethodNames())},
                      {"notifications", {"documentationChanged", "languageChanged", "warning"}},
                      {"fields", toJson(HitFields::all().names())}}},
                    {"limits",
                     {{"line", LineReader::maxLineLength},
                      {"batch", RpcLine::maxBatch},
                      {"hits", maxHits}}}};
                for (const auto& member : toJson(watched.whatIsLoaded()))
                    result.insert(member);
                return result;
            }};
}

RpcCall prepareProducts(const Documentation& documentation) {
    return {Lane::Quick, [&documentation]() -> json::value {
                return json::object{{"products", toJson(productRows(documentation))}};
            }};
}

RpcCall prepareReload(WatchedDocumentation& watched) {
    return {Lane::Alone, [&watched]() -> json::value {
                try {
                    if (!watched.reload())
                        throw RpcError::unreadable(
                            "The documentation cannot be read; a warning says why.");
                } catch (const UnreadableDocumentation& error) {
                    throw RpcError::unreadable(error.what());
                }
                return toJson(watched.whatIsLoaded());
            }};
}

RpcCall prepareSetLanguage(RpcParameters& parameters, WatchedDocumentation& watched) {
    return {Lane::Alone,
            [language = parameters.requiredText("language"), &watched]() -> json::value {
                try {
                    if (!watched.setLanguage(language))
                        throw RpcError::unreadable(
                            "The documentation cannot be read; a warning says why.");
                } catch (const UnreadableDocumentation& error) {
                    throw RpcError::unreadable(error.what());
                } catch (const UnusableError& error) {
                    throw RpcError::wrongLanguage(error.what());
                }
                return toJson(watched.whatIsLoaded());
            }};
}

}  // namespace

RpcMethods::~RpcMethods() = default;

RpcCall DocumentationMethods::prepare(const std::string& method, const json::value& params) {
    RpcParameters parameters(params);
    if (method == "initialize")
        return prepareInitialize(parameters, m_watched);
    RpcCall call;
    if (method == "ask")
        call = prepareAsk(parameters, m_watched.documentation(), m_usuallyPrefer);
    else if (method == "find")
        call = prepareFind(parameters, m_watched.documentation());
    else if (method == "show")
        call = prepareShow(parameters, m_watched.documentation(), m_usuallyPrefer);
    else if (method == "complete")
        call = prepareComplete(parameters, m_watched.documentation(), m_usuallyPrefer);
    else if (method == "products")
        call = prepareProducts(m_watched.documentation());
    else if (method == "reload")
        call = prepareReload(m_watched);
    else if (method == "setLanguage")
        call = prepareSetLanguage(parameters, m_watched);
    else
        throw RpcError::unknownMethod(method, rpcMethodNames());
    parameters.requireNoOthers();
    // Each answer may lack what could not be read, so each is told of it.
    call.run = [run = std::move(call.run), &documentation = m_watched.documentation()] {
        json::value result = run();
        static_cast<void>(documentation.missesProducts());
        return result;
    };
    return call;
}

const std::vector<std::string>& rpcMethodNames() {
    static const std::vector<std::string> names = {
        "initialize", "ask",    "find",        "show",       "complete",
        "products",   "reload", "setLanguage", cancelMethod, shutdownMethod};
    return names;
}

}  // namespace reference::tools
