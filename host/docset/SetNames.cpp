#include "docset/SetNames.hpp"

#include <stdexcept>

#include "docset/ContainedFile.hpp"
#include "docset/Manifest.hpp"
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
    for (const std::string_view taken : {manifestFileName, newManifestFileName, lockFileName})
        if (locale == taken)
            return "A file of the set has this name; it must be a folder name such as en_US.";
    return std::nullopt;
}

}  // namespace reference::docset
