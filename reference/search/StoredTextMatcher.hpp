// The question whether a text occurs, asked of texts as they are stored. Internal: no public header
// includes it.
#pragma once

#include <string>
#include <string_view>

#include "reference/search/ReferenceRequestExt.hpp"

namespace reference::search {

// Answers as ReferenceRequestExt::isTextMatch() does, for the bytes of a text (see
// docimage/unitBytes.hpp). Where case counts, bytes hold bytes exactly if texts hold texts; where
// it does not, ASCII is folded in place, and text is put together and folded only where that may
// make a difference to what is searched for. One thread.
class StoredTextMatcher {
  public:
    // `ext` must outlive the object.
    explicit StoredTextMatcher(const ReferenceRequestExt& ext);

    [[nodiscard]] bool matches(std::string_view stored);

  private:
    [[nodiscard]] bool fold(std::string_view stored);

    const ReferenceRequestExt& m_ext;
    const std::string m_searched;
    const bool m_isAsciiSearched;
    std::string m_folded;
    std::u16string m_text;
};

}  // namespace reference::search
