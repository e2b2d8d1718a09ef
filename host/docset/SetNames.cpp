#include "docset/SetNames.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>

#include "docset/ContainedFile.hpp"
#include "docset/Manifest.hpp"
#include "docset/SetIndex.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

constexpr std::ptrdiff_t mostCharacters = 50;

std::ptrdiff_t charactersOf(std::string_view utf8) {
    return std::ranges::count_if(utf8, [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;  // what goes on is 10xxxxxx
    });
}

}  // namespace

std::optional<std::string> whyNotALocale(std::string_view locale) {
    try {
        static_cast<void>(fl::i18n::toUtf16(locale));
    } catch (const std::invalid_argument&) {
        return "The name is not UTF-8; it must be a folder name such as en_US.";
    }
    if (whyNotContained(locale) || locale.find('/') != std::string_view::npos)
        return "It must be the name of one folder, such as en_US, without control characters.";
    if (charactersOf(locale) > mostCharacters)
        return "It has more than " + std::to_string(mostCharacters) +
               " characters; it must be a folder name such as en_US.";
    const std::array files = {manifestFileName, newManifestFileName, lockFileName};
    if (std::ranges::find(files, locale) != files.end() || isSetIndexFileName(locale))
        return "A file of the set has this name; it must be a folder name such as en_US.";
    return std::nullopt;
}

}  // namespace reference::docset
