#pragma once

#include <cstddef>
#include <string>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "foundation/core/Mutex.hpp"
#include "vref/WatchOutput.hpp"

namespace reference::tools {

// The session's answers and notices to a program: one JSON value per line to the standard output
// stream, and nothing elsewhere. Any thread, at any time; each line is whole.
class ProgramOutput final : public WatchOutput {
  public:
    // Writes a message of version 2.
    void send(const boost::json::value& message);
    // From now on notices are notifications of version 2.
    void speakVersion2();

    void prompt() override {}
    void answer(std::size_t line, const FindOptions& options, const Finding& finding) override;
    void answerError(std::size_t line, const std::string& problem) override;
    void answerHelp(std::size_t line, const std::string& text) override;
    void answerDone(std::size_t line) override;
    void loaded(const std::string& why, const LoadedDocumentation& documentation) override;
    void warning(const std::string& message) override;
    void flush() override;

  private:
    void notify(const boost::json::object& inVersion1, const char* method,
                const boost::json::object& params);

    foundation::core::Mutex m_mutex;  // of the stream
    bool m_isVersion2 VELTRA_GUARDED_BY(m_mutex) = false;
};

}  // namespace reference::tools
