#include "foundation/log/basic_diagnostic_logger.hpp"

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <map>
#include <mutex>
#include <utility>

#include <boost/log/attributes/mutable_constant.hpp>
#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions/message.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_channel_logger.hpp>

#include "foundation/core/context/ContextRegistry.hpp"
#include "settings/in_veltra/settingsRoot.hpp"

namespace foundation::log {
namespace {

namespace blog = boost::log;
using LevelsByChannel = std::map<std::string, int, std::less<>>;

thread_local int openTraces = 0;

LevelsByChannel parseLevels(std::string_view text) {
    LevelsByChannel levels;
    while (!text.empty()) {
        const auto comma = text.find(',');
        const auto pair = text.substr(0, comma);
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
        const auto equals = pair.rfind('=');
        if (equals == std::string_view::npos)
            continue;
        const auto number = pair.substr(equals + 1);
        int level = 0;
        const auto [end, error] =
            std::from_chars(number.data(), number.data() + number.size(), level);
        if (error == std::errc{} && end == number.data() + number.size())
            levels.insert_or_assign(std::string(pair.substr(0, equals)), level);
    }
    return levels;
}

std::string levelsText() {
    auto fromSetting =
        settings::in_veltra::getSettingsRoot(core::context::ContextRegistry::getCurrentContextId())
            ->getSettingsByFullName(settings::in_veltra::logSetting)
            ->get<std::string>();
    if (!fromSetting.empty())
        return fromSetting;
    const char* fromEnvironment = std::getenv("VELTRA_LOG");
    return fromEnvironment == nullptr ? std::string() : fromEnvironment;
}

// The end of the road for records: the sink that was installed, or the standard error stream.
class Backend : public blog::sinks::basic_sink_backend<blog::sinks::synchronized_feeding> {
  public:
    void setSink(LogSink sink) {
        const std::lock_guard lock(m_mutex);
        m_sink = std::move(sink);
    }

    void consume(const blog::record_view& record) {
        const auto channel = blog::extract<std::string>("Channel", record);
        const auto severity = blog::extract<int>("Severity", record);
        const auto text = blog::extract<std::string>("Message", record);
        if (!channel || !severity || !text)
            return;  // a record of somebody else's logger in this process
        LogSink sink;
        {
            const std::lock_guard lock(m_mutex);
            sink = m_sink;
        }
        const LogRecord written{
            .channel = *channel, .severity = *severity, .depth = openTraces, .text = *text};
        if (sink)
            sink(written);
        else
            std::cerr << std::string(static_cast<std::size_t>(openTraces) * 2, ' ') << '['
                      << written.channel << ' ' << written.severity << "] " << written.text << '\n';
    }

  private:
    std::mutex m_mutex;
    LogSink m_sink;
};

Backend& backend() {
    static const boost::shared_ptr<Backend> instance = [] {
        auto made = boost::make_shared<Backend>();
        blog::core::get()->add_sink(
            boost::make_shared<blog::sinks::synchronous_sink<Backend>>(made));
        return made;
    }();
    return *instance;
}

}  // namespace

class basic_diagnostic_logger<char>::Impl {
  public:
    explicit Impl(std::string name)
        : channel(std::move(name)), source(blog::keywords::channel = channel) {
        backend();
    }

    const std::string channel;
    blog::sources::severity_channel_logger_mt<int, std::string> source;
};

void setLogSink(LogSink sink) {
    backend().setSink(std::move(sink));
}

basic_diagnostic_logger<char>::basic_diagnostic_logger(std::string channel)
    : m_impl(std::make_unique<Impl>(std::move(channel))) {}

basic_diagnostic_logger<char>::~basic_diagnostic_logger() = default;

bool basic_diagnostic_logger<char>::isEnabled(int severity) const {
    const LevelsByChannel levels = parseLevels(levelsText());
    auto level = levels.find(m_impl->channel);
    if (level == levels.end())
        level = levels.find("*");
    return level != levels.end() && severity <= level->second;
}

void basic_diagnostic_logger<char>::log(int severity, std::string_view text) const {
    if (!isEnabled(severity))
        return;
    if (auto record = m_impl->source.open_record(blog::keywords::severity = severity)) {
        blog::record_ostream stream(record);
        stream.write(text.data(), static_cast<std::streamsize>(text.size()));
        stream.flush();
        m_impl->source.push_record(std::move(record));
    }
}

FunctionTrace::FunctionTrace(const diagnostic_logger& logger, std::string_view file,
                             std::string_view signature, int line)
    : m_logger(logger), m_signature(signature) {
    m_logger.log(Trace, "enter " + std::string(signature) + " (" + std::string(file) + ":" +
                            std::to_string(line) + ")");
    ++openTraces;
}

FunctionTrace::~FunctionTrace() {
    --openTraces;
    try {
        m_logger.log(Trace, "leave " + std::string(m_signature));
    } catch (...) {
        // Leaving a function never fails for want of a log record.
    }
}

}  // namespace foundation::log
