#include "settings/core/Settings.hpp"

#include <utility>

#include "foundation/msg_svc/eventmgr/SubscriberList.hpp"
#include "settings/core/SettingsValueChangeEvent.hpp"

namespace settings::core {

using foundation::msg_svc::eventmgr::BaseEvent;
using foundation::msg_svc::eventmgr::Connection;
using foundation::msg_svc::eventmgr::SubscriberList;

namespace {

// Splits a full name at its first dot.
std::pair<std::string_view, std::string_view> splitFirst(std::string_view fullName) {
    const auto dot = fullName.find('.');
    if (dot == std::string_view::npos)
        return {fullName, {}};
    return {fullName.substr(0, dot), fullName.substr(dot + 1)};
}

}  // namespace

Settings::Settings(std::string name, std::string fullName)
    : m_name(std::move(name)),
      m_fullName(std::move(fullName)),
      m_listeners(std::make_shared<SubscriberList>()) {}

std::shared_ptr<Settings> Settings::makeRoot() {
    return std::shared_ptr<Settings>(new Settings({}, {}));
}

std::shared_ptr<Settings> Settings::declare(std::string_view fullName, SettingsValue initialValue) {
    const auto [first, rest] = splitFirst(fullName);
    std::shared_ptr<Settings> child;
    {
        const foundation::core::MutexLock lock(m_mutex);
        auto found = m_children.find(first);
        if (found == m_children.end()) {
            const std::string name(first);
            std::shared_ptr<Settings> made(
                new Settings(name, m_fullName.empty() ? name : m_fullName + "." + name));
            found = m_children.emplace(name, std::move(made)).first;
        }
        child = found->second;
    }
    if (!rest.empty())
        return child->declare(rest, std::move(initialValue));
    const foundation::core::MutexLock lock(child->m_mutex);
    if (!child->m_value)
        child->m_value = std::move(initialValue);
    else if (!child->m_value->isOfTypeOf(initialValue))
        child->throwWrongType();
    return child;
}

std::shared_ptr<Settings> Settings::getSettingsByFullName(const std::string& fullName) {
    const auto [first, rest] = splitFirst(fullName);
    std::shared_ptr<Settings> child;
    {
        const foundation::core::MutexLock lock(m_mutex);
        const auto found = m_children.find(first);
        if (found == m_children.end())
            throw SettingsException("There is no setting \"" +
                                    (m_fullName.empty() ? "" : m_fullName + ".") +
                                    std::string(first) + "\"; it must be declared first.");
        child = found->second;
    }
    return rest.empty() ? child : child->getSettingsByFullName(std::string(rest));
}

SettingsValue Settings::getValue() const {
    const foundation::core::MutexLock lock(m_mutex);
    if (!m_value)
        throw SettingsException("\"" + m_fullName + "\" is a group of settings and has no value.");
    return *m_value;
}

void Settings::setValue(SettingsValue value) {
    std::optional<SettingsValueChangeEvent> event;
    {
        const foundation::core::MutexLock lock(m_mutex);
        if (!m_value)
            throw SettingsException("\"" + m_fullName +
                                    "\" is a group of settings and takes no value.");
        if (!m_value->isOfTypeOf(value))
            throwWrongType();
        if (*m_value == value)
            return;
        // Made first: once the value is the new one, the listeners are told.
        event.emplace(m_fullName, *m_value, value);
        m_value = std::move(value);
    }
    m_listeners->deliver(*event);
}

std::unique_ptr<Connection> Settings::addListener(
    std::function<void(const SettingsValueChangeEvent&)> listener) {
    if (!listener)
        throw std::invalid_argument("\"" + m_fullName + "\" was given an empty listener.");
    static_cast<void>(getValue());  // throws for a group, which has no value to change
    return m_listeners->add([listener = std::move(listener)](const BaseEvent& event) {
        listener(static_cast<const SettingsValueChangeEvent&>(event));
    });
}

void Settings::throwWrongType() const {
    throw SettingsException("The setting \"" + m_fullName +
                            "\" is of another type than the one asked for.");
}

}  // namespace settings::core
