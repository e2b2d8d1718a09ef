// What a test sets and puts back when it ends: an environment variable, the current context, the
// log's sink.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/context/ContextRegistry.hpp"
#include "settings/core/Settings.hpp"

namespace reference::tests {

// Sets an environment variable, or removes it (nothing), and puts it back. While no other thread
// runs.
class ScopedEnvironment {
  public:
    ScopedEnvironment(std::string name, const std::optional<std::string>& value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;  // bound to its scope
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

  private:
    std::string m_name;
    std::optional<std::string> m_before;
};

// Sets a setting of the current context.
void setSetting(const char* fullName, settings::core::SettingsValue value);

// Makes a context that nobody used before the current one, and puts the old one back.
class ScopedContext {
  public:
    ScopedContext();
    ~ScopedContext();
    ScopedContext(const ScopedContext&) = delete;  // bound to its scope
    ScopedContext& operator=(const ScopedContext&) = delete;

    // Sets a setting of this context. Requires: it is the current one.
    void set(const char* fullName, settings::core::SettingsValue value) const {
        setSetting(fullName, std::move(value));
    }

  private:
    foundation::core::context::ContextId m_before;
};

struct CapturedRecord {
    std::string channel;
    int severity;
    int depth;
    std::string text;

    friend bool operator==(const CapturedRecord&, const CapturedRecord&) = default;
};

// Gathers the records of the log, in a context of its own with the levels given.
class LogCapture {
  public:
    explicit LogCapture(const std::string& levels);
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;  // bound to its scope
    LogCapture& operator=(const LogCapture&) = delete;

    [[nodiscard]] const ScopedContext& context() const noexcept { return m_context; }
    [[nodiscard]] std::vector<CapturedRecord> records() const;
    [[nodiscard]] std::vector<std::string> texts() const;

  private:
    ScopedContext m_context;
    mutable foundation::core::Mutex m_mutex;
    std::vector<CapturedRecord> m_records VELTRA_GUARDED_BY(m_mutex);
};

void PrintTo(const CapturedRecord& record, std::ostream* out);

}  // namespace reference::tests
