#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/export.hpp"
#include "foundation/msg_svc/eventmgr/Connection.hpp"
#include "settings/core/SettingsValue.hpp"

namespace foundation::msg_svc::eventmgr {
class SubscriberList;
}

namespace settings::core {

class SettingsValueChangeEvent;

// Thrown when a setting is asked for that was not declared, or is given a value of another type.
// what() names the setting and says what would be right.
class VELTRA_HOST_API SettingsException : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A node of the settings tree: a group of further nodes, a setting with a value, or both. Nodes are
// named; a full name joins the names from the root with dots ("veltra.desktop.help.DocLanguage").
//
// Every operation may be called from any thread. Nodes live as long as the tree's root or the
// caller's own pointer.
class VELTRA_HOST_API Settings {
  public:
    // The root of a new, empty tree.
    [[nodiscard]] static std::shared_ptr<Settings> makeRoot();

    Settings(const Settings&) = delete;  // a node has one place in its tree
    Settings& operator=(const Settings&) = delete;

    // Declares the setting `fullName`, counted from this node, with the value that it has until it
    // is set; makes the groups on the way. Declaring a setting again changes nothing, but throws
    // SettingsException when its type differs.
    std::shared_ptr<Settings> declare(std::string_view fullName, SettingsValue initialValue);

    // The node `fullName`, counted from this node. Throws SettingsException when there is none.
    [[nodiscard]] std::shared_ptr<Settings> getSettingsByFullName(const std::string& fullName);

    [[nodiscard]] const std::string& getName() const noexcept { return m_name; }
    [[nodiscard]] const std::string& getFullName() const noexcept { return m_fullName; }

    // A copy of the value. Throws SettingsException for a group.
    [[nodiscard]] SettingsValue getValue() const;

    // A copy of the value, which must be of type T (one of those of SettingsValue). Throws
    // SettingsException for a group or a value of another type.
    template <typename T>
    [[nodiscard]] T get() const {
        const SettingsValue value = getValue();
        if (const T* typed = value.getIf<T>())
            return *typed;
        throwWrongType();
    }

    // Changes the value, then calls the setting's listeners, on this thread and outside every lock,
    // before it returns. A value equal to the old one changes nothing and calls nobody. Throws
    // SettingsException for a group or when the value is of another type than the setting, and
    // std::bad_alloc when memory runs out, and then has changed nothing and called nobody; what a
    // listener throws is logged (EventMgr::publish says how) and not thrown.
    void setValue(SettingsValue value);

    // Calls `listener` after each change of this setting's value, until the connection that is
    // returned is destroyed; Connection says what holds from then on. Where several threads change
    // the value at once, listeners may hear of the changes out of order: a listener that needs the
    // current value asks for it. A listener may set values, add listeners and end connections.
    //
    // Throws SettingsException for a group, std::invalid_argument for an empty listener.
    [[nodiscard]] std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener(
        std::function<void(const SettingsValueChangeEvent&)> listener);

  private:
    Settings(std::string name, std::string fullName);

    [[noreturn]] void throwWrongType() const;

    // Constant after construction.
    const std::string m_name;
    const std::string m_fullName;
    const std::shared_ptr<foundation::msg_svc::eventmgr::SubscriberList> m_listeners;

    mutable foundation::core::Mutex m_mutex;
    std::map<std::string, std::shared_ptr<Settings>, std::less<>> m_children
        VELTRA_GUARDED_BY(m_mutex);
    std::optional<SettingsValue> m_value VELTRA_GUARDED_BY(m_mutex);  // nothing for a group
};

}  // namespace settings::core
