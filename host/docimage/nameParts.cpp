#include "docimage/nameParts.hpp"

#include <unicode/uchar.h>

#include "docimage/searchForm.hpp"

namespace reference::docimage {
namespace {

enum class Kind { Other, Small, Capital, Digit };

// Surrogates count as small letters: whatever they stand for is not divided.
Kind kindOf(char16_t unit) {
    if (unit < 0x80) {
        if (unit >= u'a' && unit <= u'z')
            return Kind::Small;
        if (unit >= u'A' && unit <= u'Z')
            return Kind::Capital;
        return unit >= u'0' && unit <= u'9' ? Kind::Digit : Kind::Other;
    }
    if (u_isupper(unit) != 0)
        return Kind::Capital;
    if (u_isdigit(unit) != 0)
        return Kind::Digit;
    return u_isalpha(unit) != 0 || U16_IS_SURROGATE(unit) ? Kind::Small : Kind::Other;
}

bool beginsPart(Kind before, Kind kind, Kind after) {
    if (kind == before)
        return kind == Kind::Capital && after == Kind::Small;
    return !(before == Kind::Capital && kind == Kind::Small);
}

}  // namespace

std::vector<std::string> nameParts(std::u16string_view identifier) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    const auto endPart = [&](std::size_t end) {
        if (begin < end && parts.size() < maxParts)
            parts.push_back(searchForm(identifier.substr(begin, end - begin)));
    };
    Kind before = Kind::Other;
    for (std::size_t at = 0; at < identifier.size(); ++at) {
        const Kind kind = kindOf(identifier[at]);
        const Kind after = at + 1 < identifier.size() ? kindOf(identifier[at + 1]) : Kind::Other;
        if (kind == Kind::Other) {
            endPart(at);
            begin = at + 1;
        } else if (before != Kind::Other && beginsPart(before, kind, after)) {
            endPart(at);
            begin = at;
        }
        before = kind;
    }
    endPart(identifier.size());
    if (parts.empty() && !identifier.empty())
        parts.push_back(searchForm(identifier));
    return parts;
}

std::string joinedParts(std::u16string_view identifier) {
    std::string joined;
    for (const auto& part : nameParts(identifier))
        joined += part;
    return joined;
}

}  // namespace reference::docimage
