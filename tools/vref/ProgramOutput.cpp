#include "vref/ProgramOutput.hpp"

#include <iostream>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "docset/JsonText.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/DisplayText.hpp"
#include "vref/RpcMessage.hpp"
#include "vref/StandardStreams.hpp"

namespace reference::tools {

namespace json = boost::json;
using foundation::core::MutexLock;

namespace {

// Stands in the first message of every session. Additions that a client may ignore do not change
// it; "protocols" tells which versions a client may speak.
constexpr int firstVersion = 1;
constexpr int secondVersion = 2;

}  // namespace

void ProgramOutput::send(const json::value& message) {
    const std::string line = docset::toJsonText(message) + "\n";
    const MutexLock lock(m_mutex);
    std::cout << line << std::flush;
}

void ProgramOutput::speakVersion2() {
    const MutexLock lock(m_mutex);
    m_isVersion2 = true;
}

void ProgramOutput::answer(std::size_t line, const FindOptions&, const Finding& finding) {
    json::array messages;
    for (const auto& message : finding.messages)
        messages.emplace_back(wellFormed(message));
    json::object value{{"line", line},
                       {"total", finding.total},
                       {"results", toJson(finding)},
                       {"messages", std::move(messages)}};
    if (finding.lesson)
        value["suggestion"] = json::object{{"text", wellFormed(finding.lesson->text)},
                                           {"line", joinLine(toArguments(finding.lesson->query))}};
    send(value);
}

void ProgramOutput::answerError(std::size_t line, const std::string& problem) {
    send({{"line", line}, {"error", wellFormed(problem)}});
}

void ProgramOutput::answerHelp(std::size_t line, const std::string& text) {
    send({{"line", line}, {"help", text}});
}

void ProgramOutput::answerDone(std::size_t line) {
    send({{"line", line}, {"done", true}});
}

void ProgramOutput::loaded(const std::string& why, const LoadedDocumentation& documentation) {
    const bool isReady = why == "ready";
    json::object inVersion1{{"notice", isReady ? "ready" : "reloaded"}};
    json::object params;
    if (isReady) {
        inVersion1["protocol"] = firstVersion;
        inVersion1["protocols"] = {firstVersion, secondVersion};
    } else {
        inVersion1["why"] = why;
        if (why != "language")
            params["why"] = why;
    }
    for (json::object* const members : {&inVersion1, &params}) {
        members->emplace("language", documentation.language);
        members->emplace("products", documentation.products);
        members->emplace("entities", documentation.entities);
    }
    notify(inVersion1, why == "language" ? "languageChanged" : "documentationChanged", params);
}

void ProgramOutput::warning(const std::string& message) {
    const json::object params{{"text", wellFormed(message)}};
    json::object inVersion1{{"notice", "warning"}};
    inVersion1.insert(params.begin(), params.end());
    notify(inVersion1, "warning", params);
}

void ProgramOutput::flush() {
    const MutexLock lock(m_mutex);
    flushOutput();
}

void ProgramOutput::notify(const json::object& inVersion1, const char* method,
                           const json::object& params) {
    const MutexLock lock(m_mutex);
    const json::value message =
        m_isVersion2 ? json::value(rpcNotification(method, params)) : json::value(inVersion1);
    std::cout << docset::toJsonText(message) << '\n' << std::flush;
}

}  // namespace reference::tools
