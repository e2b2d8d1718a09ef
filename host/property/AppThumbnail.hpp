#pragma once

#include <string>
#include <utility>

namespace reference::property {

// The picture that stands for an app. A plain value; references from the getters stay valid until
// the object is changed or destroyed.
class AppThumbnail {
  public:
    AppThumbnail() = default;

    // `source` is the picture's file, relative to the help folder; `alternativeText` stands in for
    // it.
    AppThumbnail(std::u16string source, std::u16string alternativeText)
        : m_source(std::move(source)), m_alternativeText(std::move(alternativeText)) {}

    [[nodiscard]] const std::u16string& getSource() const noexcept { return m_source; }
    [[nodiscard]] const std::u16string& getAlternativeText() const noexcept {
        return m_alternativeText;
    }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] AppThumbnail copy() const { return *this; }

    friend bool operator==(const AppThumbnail&, const AppThumbnail&) = default;

  private:
    std::u16string m_source;
    std::u16string m_alternativeText;
};

}  // namespace reference::property
