#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace settings::core {

// What a setting may hold: true or false, a whole number, a number, a text or a list of texts,
// texts in UTF-8. The type that a setting is declared with stays its type. A value never changes
// once it is made, and its copies share it, so that copying needs no memory. Any thread.
class SettingsValue {
  public:
    SettingsValue(bool value) : SettingsValue(Held(std::in_place_type<bool>, value)) {}
    SettingsValue(std::int64_t value)
        : SettingsValue(Held(std::in_place_type<std::int64_t>, value)) {}
    SettingsValue(double value) : SettingsValue(Held(std::in_place_type<double>, value)) {}
    SettingsValue(std::string value)
        : SettingsValue(Held(std::in_place_type<std::string>, std::move(value))) {}
    SettingsValue(const char* value) : SettingsValue(std::string(value)) {}
    SettingsValue(std::vector<std::string> value)
        : SettingsValue(Held(std::in_place_type<std::vector<std::string>>, std::move(value))) {}

    // The value where it is of this type, else null. Lives as long as a copy of this object.
    template <typename T>
    [[nodiscard]] const T* getIf() const noexcept {
        return std::get_if<T>(m_held.get());
    }

    [[nodiscard]] bool isOfTypeOf(const SettingsValue& other) const noexcept {
        return m_held->index() == other.m_held->index();
    }

    friend bool operator==(const SettingsValue& a, const SettingsValue& b) {
        return *a.m_held == *b.m_held;
    }

  private:
    using Held = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;

    explicit SettingsValue(Held held) : m_held(std::make_shared<const Held>(std::move(held))) {}

    std::shared_ptr<const Held> m_held;  // never null
};

}  // namespace settings::core
