#include "foundation/log/basic_diagnostic_logger.hpp"

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <map>
#include <utility>

#include <boost/log/attributes/attribute_name.hpp>
#include <boost/log/attributes/attribute_value_impl.hpp>
#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sources/logger.hpp>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/NeverDestroyed.hpp"
#include "foundation/core/context/ContextRegistry.hpp"
#include "settings/in_veltra/settingsRoot.hpp"

namespace foundation::log {
namespace {

namespace blog = boost::log;
using core::Mutex;
using core::MutexLock;
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

// What a record is made of, by the names that Boost.Log knows it under.
struct Names {
    const blog::attribute_name channel{"Channel"};
    const blog::attribute_name severity{"Severity"};
    const blog::attribute_name message{"Message"};
};

// Where records end: in the sink that was installed, or in the standard error stream.
class Backend : public blog::sinks::basic_sink_backend<blog::sinks::synchronized_feeding> {
  public:
    explicit Backend(const Names& names) : m_names(names) {}

    void setSink(LogSink sink) {
        const MutexLock lock(m_mutex);
        m_sink = std::move(sink);
    }

    void consume(const blog::record_view& record) {
        const auto channel = blog::extract<std::string>(m_names.channel, record);
        const auto severity = blog::extract<int>(m_names.severity, record);
        const auto text = blog::extract<std::string>(m_names.message, record);
        if (!channel || !severity || !text)
            return;  // a record of somebody else's logger in this process
        LogSink sink;
        {
            const MutexLock lock(m_mutex);
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
    const Names& m_names;
    Mutex m_mutex;
    LogSink m_sink VELTRA_GUARDED_BY(m_mutex);
};

// The path of all records of the process. Boost.Log has process-wide tables of its own, which are
// destroyed when the process exits, while other threads may still log. So everything that is
// looked up in them is looked up once, when this library is loaded, and kept: the core, the source
// and the names of attributes.
class Road {
  public:
    Road() {
        m_core->add_sink(boost::make_shared<blog::sinks::synchronous_sink<Backend>>(m_backend));
    }

    void setSink(LogSink sink) { m_backend->setSink(std::move(sink)); }

    void write(const std::string& channel, int severity, std::string_view text) {
        auto record = m_source.open_record();
        if (!record)
            return;
        using blog::attributes::make_attribute_value;
        auto& values = record.attribute_values();
        values.insert(m_names.channel, make_attribute_value(channel));
        values.insert(m_names.severity, make_attribute_value(severity));
        values.insert(m_names.message, make_attribute_value(std::string(text)));
        m_source.push_record(std::move(record));
    }

  private:
    const Names m_names;
    const blog::core_ptr m_core = blog::core::get();
    const boost::shared_ptr<Backend> m_backend = boost::make_shared<Backend>(m_names);
    blog::sources::logger_mt m_source;
};

core::NeverDestroyed<Road> s_road;

}  // namespace

class basic_diagnostic_logger<char>::Impl {
  public:
    explicit Impl(std::string name) : channel(std::move(name)) {}

    const std::string channel;
};

void setLogSink(LogSink sink) {
    s_road->setSink(std::move(sink));
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
    if (isEnabled(severity))
        s_road->write(m_impl->channel, severity, text);
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
        // A function does not fail because its end could not be logged.
    }
}

}  // namespace foundation::log
