#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/export.hpp"

namespace settings::core {

// What a setting may hold. The alternative that a setting is declared with is its type for good.
using SettingsValue =
    std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;

// A setting was asked for that nobody declared, or given a value of another type. what() names the
// setting and says what would be right.
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
        if (const auto* typed = std::get_if<T>(&value))
            return *typed;
        throwWrongType();
    }

    // Changes the value. Throws SettingsException, and changes nothing, for a group or when the
    // value is of another type than the setting.
    void setValue(SettingsValue value);

  private:
    Settings(std::string name, std::string fullName);

    [[noreturn]] void throwWrongType() const;

    // Constant after construction.
    const std::string m_name;
    const std::string m_fullName;

    mutable foundation::core::Mutex m_mutex;
    std::map<std::string, std::shared_ptr<Settings>, std::less<>> m_children
        VELTRA_GUARDED_BY(m_mutex);
    std::unique_ptr<SettingsValue> m_value VELTRA_GUARDED_BY(m_mutex);  // null for a group
};

}  // namespace settings::core
