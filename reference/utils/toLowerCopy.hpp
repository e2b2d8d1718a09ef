// The one rule by which the library folds letter case. Internal: no public header includes it.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace reference::utils {

// A text in lower case, by the host's Unicode mapping, for as long as the object lives. Text that
// the host refuses (an unpaired surrogate in it) stays unchanged: a search over a thousand texts
// must not fail because of one.
//
// Results of up to `bufferSize` units, enough for names and most purposes, are kept in the object
// itself: a comparison that folds a name on the stack allocates nothing.
class LowerCased {
  public:
    static constexpr std::size_t bufferSize = 1024;

    // `text` must live as long as this object. If memory runs out for a result that does not fit
    // the buffer, the text stays unchanged, too.
    explicit LowerCased(std::u16string_view text) noexcept;
    LowerCased(const LowerCased&) = delete;  // the view points into it; use toLowerCopy()
    LowerCased& operator=(const LowerCased&) = delete;

    [[nodiscard]] std::u16string_view view() const noexcept { return m_view; }

    // The text as a string of its own. Nothing else may be asked of the object afterwards.
    [[nodiscard]] std::u16string take();

  private:
    std::array<char16_t, bufferSize> m_buffer;  // not initialised: the host fills what is used
    std::u16string m_long;                      // a result that does not fit the buffer
    std::u16string_view m_view;
};

// The same as a string. Any thread.
[[nodiscard]] std::u16string toLowerCopy(std::u16string_view text);

}  // namespace reference::utils
