#include "vref/OptionTexts.hpp"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <CLI/CLI.hpp>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "fl/i18n/utf.hpp"
#include "vref/DisplayText.hpp"

namespace reference::tools {
namespace {

bool isUtf8(const std::string& text) {
    try {
        static_cast<void>(fl::i18n::toUtf16(text));
        return true;
    } catch (const std::invalid_argument&) {
        return false;
    }
}

std::string checkUtf8(const std::string& text) {
    return isUtf8(text) ? "" : "The text is not well-formed UTF-8.";
}

bool isLetterOrDigit(UChar32 character) {
    return (U_GET_GC_MASK(character) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

bool isProductName(const std::string& text) {
    const std::u16string units = fl::i18n::toUtf16(text);
    // Not a copy, which would be empty where there is no memory.
    const icu::UnicodeString name(false, units.data(), static_cast<std::int32_t>(units.size()));
    if (name.isEmpty() || !isLetterOrDigit(name.char32At(0)))
        return false;
    for (std::int32_t at = 0; at < name.length(); at = name.moveIndex32(at, 1)) {
        const UChar32 character = name.char32At(at);
        const bool isSign =
            character == '-' || character == '_' || character == '.' || character == '+';
        if (!isLetterOrDigit(character) && !isSign)
            return false;
    }
    return true;
}

}  // namespace

void requireCleanTexts(CLI::App& command) {
    for (CLI::Option* option : command.get_options())
        if (option->get_items_expected_max() > 0)
            option->check(option->get_name() == "NAME" || option->get_name() == "WORDS"
                              ? checkUtf8
                              : checkClean);
    for (CLI::App* below : command.get_subcommands({}))
        requireCleanTexts(*below);
}

std::string checkClean(const std::string& text) {
    if (!isUtf8(text))
        return checkUtf8(text);
    // All control characters are in the Basic Multilingual Plane.
    for (const char16_t unit : fl::i18n::toUtf16(text))
        if (u_charType(unit) == U_CONTROL_CHAR)
            return "The text holds control characters, such as a line end; it must be one line of "
                   "plain text.";
    return {};
}

std::string checkProductName(const std::string& text) {
    if (auto problem = checkClean(text); !problem.empty())
        return problem;
    if (isProductName(text))
        return {};
    return "\"" + printableLine(text) +
           "\" cannot be a product's short name; it must consist of letters, digits and \"-\", "
           "\"_\", \".\", \"+\", and begin with a letter or digit, such as scipy.";
}

std::string checkHelpFolder(const std::string& text) {
    if (auto problem = checkClean(text); !problem.empty())
        return problem;
    std::string problem = "\"" + printableLine(text) +
                          "\" cannot be a help folder; it must be a path below the help root "
                          "such as scipy or python/library: relative, without \"..\", empty "
                          "parts and \"\\\".";
    if (text.find('\\') != std::string::npos)
        return problem;
    for (std::size_t start = 0; start <= text.size();) {
        const auto end = std::min(text.find('/', start), text.size());
        const std::string_view part = std::string_view(text).substr(start, end - start);
        if (part.empty() || part == "." || part == "..")
            return problem;
        start = end + 1;
    }
    return {};
}

std::string checkCount(const std::string& text) {
    if (auto problem = checkClean(text); !problem.empty())
        return problem;
    std::size_t count = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, count);
    if (error == std::errc{} && rest == end)
        return {};
    return "\"" + printableLine(text) +
           "\" is no number of entries; it must be a whole number of 0 or more, such as 20.";
}

std::string checkPositive(const std::string& text) {
    if (auto problem = checkCount(text); !problem.empty())
        return problem;
    return text.find_first_not_of('0') == std::string::npos
               ? "Entries are counted from 1; there is no entry 0."
               : std::string();
}

}  // namespace reference::tools
