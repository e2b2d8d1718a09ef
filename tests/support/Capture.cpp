#include "support/Capture.hpp"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <iterator>
#include <ostream>
#include <utility>

#include "foundation/log/basic_diagnostic_logger.hpp"
#include "settings/in_veltra/settingsRoot.hpp"

namespace reference::tests {

using foundation::core::MutexLock;
using foundation::core::context::ContextRegistry;

ScopedEnvironment::ScopedEnvironment(std::string name, const std::optional<std::string>& value)
    : m_name(std::move(name)) {
    if (const char* before = std::getenv(m_name.c_str()))
        m_before = before;
    if (value)
        ::setenv(m_name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(m_name.c_str());
}

ScopedEnvironment::~ScopedEnvironment() {
    if (m_before)
        ::setenv(m_name.c_str(), m_before->c_str(), 1);
    else
        ::unsetenv(m_name.c_str());
}

void setSetting(const char* fullName, settings::core::SettingsValue value) {
    settings::in_veltra::getSettingsRoot(ContextRegistry::getCurrentContextId())
        ->getSettingsByFullName(fullName)
        ->setValue(std::move(value));
}

ScopedContext::ScopedContext() : m_before(ContextRegistry::getCurrentContextId()) {
    static std::atomic<foundation::core::context::ContextId> next{100'000};
    ContextRegistry::setCurrentContextId(next++);
}

ScopedContext::~ScopedContext() {
    ContextRegistry::setCurrentContextId(m_before);
}

LogCapture::LogCapture(const std::string& levels) {
    setSetting(settings::in_veltra::logSetting, levels);
    foundation::log::setLogSink([this](const foundation::log::LogRecord& record) {
        const MutexLock lock(m_mutex);
        m_records.push_back({.channel = std::string(record.channel),
                             .severity = record.severity,
                             .depth = record.depth,
                             .text = std::string(record.text)});
    });
}

LogCapture::~LogCapture() {
    foundation::log::setLogSink(nullptr);
}

std::vector<CapturedRecord> LogCapture::records() const {
    const MutexLock lock(m_mutex);
    return m_records;
}

std::vector<std::string> LogCapture::texts() const {
    std::vector<std::string> texts;
    std::ranges::transform(records(), std::back_inserter(texts), &CapturedRecord::text);
    return texts;
}

void PrintTo(const CapturedRecord& record, std::ostream* out) {
    *out << record.channel << ' ' << record.severity << " at " << record.depth << ": "
         << record.text;
}

}  // namespace reference::tests
