// Which of several products goes first. Internal: no public header includes it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "reference/search/LookupIndex.hpp"

namespace reference::ask {

// A number that is smaller for a product that goes first: one that the question names, then those
// that the user prefers, then those that the library prefers. The last takes `libraryRankBits`.
inline constexpr unsigned libraryRankBits = 4;

[[nodiscard]] inline std::uint32_t productRank(const search::LookupIndex::Product& product,
                                               bool isNamed,
                                               const std::vector<std::u16string>& preferred) {
    // The folders of help that the library's preferred order has first.
    constexpr std::u16string_view preferredFolders[] = {u"veltra", u"pendrake"};
    const auto byUser =
        static_cast<std::uint32_t>(std::ranges::find(preferred, product.name) - preferred.begin());
    const auto byLibrary = static_cast<std::uint32_t>(
        std::ranges::find(preferredFolders, product.header.getHelpFolder()) -
        std::begin(preferredFolders));
    return (isNamed ? 0U : 1U) << 24U | std::min(byUser, 0xFFFFFU) << libraryRankBits | byLibrary;
}

}  // namespace reference::ask
