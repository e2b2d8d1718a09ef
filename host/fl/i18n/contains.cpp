#include "fl/i18n/contains.hpp"

#include <cstddef>
#include <cstring>

#include <boost/algorithm/searching/knuth_morris_pratt.hpp>

namespace fl::i18n {

bool contains(std::string_view text, std::string_view part) noexcept {
    // The C library's search has a linear bound.
    return ::memmem(text.data(), text.size(), part.data(), part.size()) != nullptr;
}

bool contains(std::u16string_view text, std::u16string_view part) {
    // Up to here find() is the quicker one, and its worst case is bounded by this length.
    constexpr std::size_t shortPart = 64;
    if (part.size() > text.size())
        return false;
    if (part.size() <= shortPart)
        return text.find(part) != std::u16string_view::npos;
    const boost::algorithm::knuth_morris_pratt searcher(part.begin(), part.end());
    return searcher(text.begin(), text.end()).first != text.end();
}

}  // namespace fl::i18n
