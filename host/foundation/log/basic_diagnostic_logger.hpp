#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "foundation/core/export.hpp"

namespace foundation::log {

// How severe a record is: smaller numbers are more severe. Any number may be used; these are the
// usual ones.
enum Severity : int {
    Error = 2,
    Warning = 4,
    Information = 8,
    Debug = 16,
    Trace = 32,
};

// One record, as a sink gets it. The texts live as long as the call.
struct LogRecord {
    std::string_view channel;
    int severity;
    // How many function-scope traces are open on the writing thread.
    int depth;
    std::string_view text;
};

using LogSink = std::function<void(const LogRecord&)>;

// Sends all records to `sink` from now on; an empty one puts the standard error stream back.
// The sink is called by one thread at a time and must not log. Any thread.
VELTRA_HOST_API void setLogSink(LogSink sink);

template <typename Char>
class basic_diagnostic_logger;

// Writes records on one named channel. A channel is silent until it is switched on: by the setting
// "veltra.diagnostics.Log" or, where that is empty, by the environment variable VELTRA_LOG. Either
// holds "channel=severity" pairs divided by commas, and a record passes when its severity is at
// most the channel's; the channel "*" stands for all that are not named. Text that is not such a
// pair is ignored.
//
// Loggers are cheap to make. Any thread, also on one object.
template <>
class VELTRA_HOST_API basic_diagnostic_logger<char> {
  public:
    explicit basic_diagnostic_logger(std::string channel);
    ~basic_diagnostic_logger();
    basic_diagnostic_logger(const basic_diagnostic_logger&) = delete;  // make one where it is used
    basic_diagnostic_logger& operator=(const basic_diagnostic_logger&) = delete;

    // Whether a record of this severity would be written now.
    [[nodiscard]] bool isEnabled(int severity) const;

    // Writes a record when its severity is enabled. What a sink throws is thrown.
    void log(int severity, std::string_view text) const;

  private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

using diagnostic_logger = basic_diagnostic_logger<char>;

// Logs at Trace when a function begins and when it ends, and indents by one step all records that
// the thread writes in between. Lives on the stack, in the function.
class VELTRA_HOST_API FunctionTrace {
  public:
    // The texts must outlive the trace; `logger` too.
    FunctionTrace(const diagnostic_logger& logger, std::string_view file,
                  std::string_view signature, int line);
    ~FunctionTrace();
    FunctionTrace(const FunctionTrace&) = delete;  // bound to its scope
    FunctionTrace& operator=(const FunctionTrace&) = delete;

  private:
    const diagnostic_logger& m_logger;
    std::string_view m_signature;
};

}  // namespace foundation::log
