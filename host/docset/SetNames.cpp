#include "docset/SetNames.hpp"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "docset/ContainedFile.hpp"
#include "docset/Manifest.hpp"
#include "docset/SetIndex.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {

std::optional<std::string> whyNotALocale(std::string_view locale) {
    try {
        static_cast<void>(fl::i18n::toUtf16(locale));
    } catch (const std::invalid_argument&) {
        return "The name is not UTF-8; it must be a folder name such as en_US.";
    }
    if (whyNotContained(locale) || locale.find('/') != std::string_view::npos)
        return "It must be the name of one folder, such as en_US, without control characters.";
    const std::array files = {manifestFileName, newManifestFileName, lockFileName};
    if (std::ranges::find(files, locale) != files.end() || isSetIndexFileName(locale))
        return "A file of the set has this name; it must be a folder name such as en_US.";
    return std::nullopt;
}

}  // namespace reference::docset
