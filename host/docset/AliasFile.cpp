#include "docset/AliasFile.hpp"

#include <algorithm>
#include <limits>
#include <system_error>

#include "docset/ContainedFile.hpp"
#include "docset/Formats.hpp"
#include "docset/JsonDocument.hpp"
#include "docset/besideJson.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

constexpr std::string_view aliasesEnding = ".aliases.json";

bool isIdentifierStart(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

// How often an alias was seen; 0, after a report, for what is no such number.
std::uint32_t readCount(const JsonNode& node) {
    const auto count = node.wholeNumber();
    if (!count)
        return 0;
    if (*count >= 1 && *count <= std::numeric_limits<std::uint32_t>::max())
        return static_cast<std::uint32_t>(*count);
    node.fault("The number says how often the alias was seen; it is from 1 to 4294967295.");
    return 0;
}

void readNames(const JsonNode& node, std::map<std::u16string, std::uint32_t>& names) {
    std::size_t members = 0;
    node.forEachMember([&](std::string_view name, const JsonNode& count) {
        if (++members == mostNamesOfAlias + 1)
            node.fault("An alias has up to " + std::to_string(mostNamesOfAlias) + " names.");
        const std::uint32_t seen = readCount(count);
        if (!isDottedName(name))
            count.fault("\"" + shortened(name) +
                        "\" is no name of a module or class, such as \"matplotlib.pyplot\".");
        else if (seen != 0 && names.size() < mostNamesOfAlias)
            names.emplace(fl::i18n::toUtf16(name), seen);
    });
    if (members == 0)
        node.fault("An alias has at least one name.");
}

std::optional<docimage::Aliases> aliasesOf(const JsonDocument& document) {
    const auto top = document.top(aliasesFormat, formatVersion);
    if (!top || !top->isObjectOf({"format", "formatVersion", "aliases"}))
        return std::nullopt;
    const auto members = top->require("aliases");
    if (!members)
        return std::nullopt;
    docimage::Aliases aliases;
    std::size_t count = 0;
    members->forEachMember([&](std::string_view alias, const JsonNode& node) {
        if (++count == mostAliases + 1)
            members->fault("A product has up to " + std::to_string(mostAliases) + " aliases.");
        std::map<std::u16string, std::uint32_t> names;
        readNames(node, names);
        if (!isIdentifier(alias))
            node.fault("\"" + shortened(alias) + "\" is no alias, such as \"np\".");
        else if (!names.empty() && aliases.size() < mostAliases)
            aliases.emplace(fl::i18n::toUtf16(alias), std::move(names));
    });
    return aliases;
}

}  // namespace

std::string aliasFileName(std::string_view lookupFile) {
    return besideJson(lookupFile, aliasesEnding);
}

bool isIdentifier(std::string_view text) noexcept {
    return !text.empty() && isIdentifierStart(text.front()) &&
           std::ranges::all_of(
               text, [](char c) { return isIdentifierStart(c) || (c >= '0' && c <= '9'); });
}

bool isDottedName(std::string_view text) noexcept {
    for (std::size_t dot = text.find('.'); dot != std::string_view::npos; dot = text.find('.')) {
        if (!isIdentifier(text.substr(0, dot)))
            return false;
        text.remove_prefix(dot + 1);
    }
    return isIdentifier(text);
}

bool hasAliasFile(const files::Folder& root, std::string_view lookupFile) {
    std::error_code error;
    static_cast<void>(root.openFile(aliasFileName(lookupFile), error));
    return error != std::errc::no_such_file_or_directory;
}

std::optional<docimage::Aliases> readAliases(const std::filesystem::path& root,
                                             std::string_view lookupFile,
                                             const FaultHandler& onFault) {
    const auto folder = openRoot(root, aliasFileName(lookupFile), onFault);
    return folder ? readAliases(*folder, lookupFile, onFault) : std::nullopt;
}

std::optional<docimage::Aliases> readAliases(const files::Folder& root, std::string_view lookupFile,
                                             const FaultHandler& onFault) {
    return readAliasFile(root, lookupFile, onFault).aliases;
}

AliasFile readAliasFile(const files::Folder& root, std::string_view lookupFile,
                        const FaultHandler& onFault) {
    std::error_code error;
    if (!root.openFile(aliasFileName(lookupFile), error).isOpen()) {
        if (error == std::errc::no_such_file_or_directory)
            return {.isThere = false, .aliases = docimage::Aliases()};
        onFault(faultOf(root, aliasFileName(lookupFile), error));
        return {.isThere = true, .aliases = std::nullopt};
    }
    return {.isThere = true,
            .aliases = JsonDocument::readAs(root, aliasFileName(lookupFile), onFault, &aliasesOf)};
}

}  // namespace reference::docset
