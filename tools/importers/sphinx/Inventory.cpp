#include "sphinx/Inventory.hpp"

#include <charconv>
#include <cstddef>
#include <optional>
#include <stdexcept>

#include "sphinx/Inflate.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

constexpr std::size_t maxPlainSize = std::size_t{256} << 20U;
constexpr std::size_t maxReportedFaults = 20;

// The text up to the next line feed, which is removed with it; a carriage return at its end is
// dropped.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

std::string headerValue(std::string_view& text, std::string_view label) {
    const std::string_view line = takeLine(text);
    if (!line.starts_with(label))
        throw std::runtime_error("The inventory's head lacks the line \"" + std::string(label) +
                                 " …\".");
    return toWellFormed(trimmed(line.substr(label.size())));
}

// The word that begins at or after `at`, and in `at` where it ends; `at` must not be past the end.
std::string_view nextWord(std::string_view line, std::size_t& at) {
    const std::size_t begin = line.find_first_not_of(' ', at);
    if (begin == std::string_view::npos) {
        at = line.size();
        return {};
    }
    at = line.find(' ', begin);
    if (at == std::string_view::npos)
        at = line.size();
    return line.substr(begin, at - begin);
}

std::optional<int> toInteger(std::string_view word) {
    int number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (word.empty() || error != std::errc{} || end != word.data() + word.size())
        return std::nullopt;
    return number;
}

// Splits "page#anchor" into the object's two members. A "$" at the end stands for the name.
void setLocation(InventoryObject& object, std::string_view location) {
    std::string full(location);
    if (full.ends_with('$')) {
        full.pop_back();
        full += object.name;
    }
    std::size_t begin = 0;
    while (full.compare(begin, 2, "./") == 0)
        begin += 2;
    full.erase(0, begin);
    const std::size_t hash = full.find('#');
    object.page = full.substr(0, hash);
    if (hash != std::string::npos)
        object.anchor = full.substr(hash + 1);
}

// One line of version 2: "name domain:role priority location display name". The name may hold
// spaces, so its end is where a type and a priority follow.
std::optional<InventoryObject> parseLine(std::string_view line) {
    // A name ends before the first of several spaces, so each run of them is looked at once.
    for (std::size_t at = line.find(' '); at < line.size();
         at = line.find(' ', std::min(line.find_first_not_of(' ', at), line.size()))) {
        std::size_t cursor = at;
        const std::string_view type = nextWord(line, cursor);
        const std::size_t colon = type.find(':');
        const std::optional<int> priority = toInteger(nextWord(line, cursor));
        if (at == 0 || colon == std::string_view::npos || colon == 0 || colon + 1 == type.size() ||
            !priority)
            continue;
        InventoryObject object;
        object.name = std::string(trimmed(line.substr(0, at)));
        object.domain = std::string(type.substr(0, colon));
        object.role = std::string(type.substr(colon + 1));
        object.priority = *priority;
        // Exactly one space separates the fields from here on, since the location may be empty.
        std::string_view rest = line.substr(std::min(cursor + 1, line.size()));
        const std::size_t locationEnd = std::min(rest.find(' '), rest.size());
        setLocation(object, rest.substr(0, locationEnd));
        const std::string_view display = trimmed(rest.substr(locationEnd));
        object.displayName = display == "-" ? object.name : std::string(display);
        return object;
    }
    return std::nullopt;
}

// One line of version 1: "name type page"; the anchor follows from the name.
std::optional<InventoryObject> parseOldLine(std::string_view line) {
    std::size_t at = 0;
    InventoryObject object;
    object.name = std::string(nextWord(line, at));
    const std::string_view type = nextWord(line, at);
    const std::string_view page = nextWord(line, at);
    if (object.name.empty() || type.empty() || page.empty())
        return std::nullopt;
    const bool isModule = type == "mod";
    object.domain = "py";
    object.role = isModule ? "module" : std::string(type);
    object.displayName = object.name;
    setLocation(object, page);
    object.anchor = (isModule ? "module-" : "") + object.name;
    return object;
}

}  // namespace

Inventory parseInventory(std::string_view file) {
    const std::string_view magic = takeLine(file);
    constexpr std::string_view prefix = "# Sphinx inventory version ";
    if (!magic.starts_with(prefix))
        throw std::runtime_error("The file does not begin with \"" + std::string(prefix) + "2\".");
    const std::string_view format = trimmed(magic.substr(prefix.size()));
    if (format != "1" && format != "2")
        throw std::runtime_error("The inventory is of version " + toWellFormed(format) +
                                 "; versions 1 and 2 can be read.");

    Inventory inventory;
    inventory.project = headerValue(file, "# Project:");
    inventory.version = headerValue(file, "# Version:");
    std::string plain;
    std::size_t lineNumber = 3;
    if (format == "2") {
        if (!takeLine(file).starts_with("#"))
            throw std::runtime_error(
                "The inventory's head lacks the line that names the compression.");
        plain = inflate(file, maxPlainSize);
        file = plain;
        lineNumber = 0;
    }

    std::size_t faults = 0;
    const auto report = [&](std::string_view problem) {
        if (++faults <= maxReportedFaults)
            inventory.faults.push_back("line " + std::to_string(lineNumber) + " " +
                                       std::string(problem));
    };
    while (!file.empty()) {
        const std::string_view line = takeLine(file);
        ++lineNumber;
        if (trimmed(line).empty() || line.starts_with('#'))
            continue;
        if (!isWellFormed(line))
            report("is not well-formed UTF-8; the bytes at fault were replaced");
        const std::string text = toWellFormed(line);
        if (auto object = format == "2" ? parseLine(text) : parseOldLine(text))
            inventory.objects.push_back(std::move(*object));
        else
            report("is not of the form \"name domain:type priority location display-name\"");
    }
    if (faults > maxReportedFaults)
        inventory.faults.push_back(std::to_string(faults - maxReportedFaults) +
                                   " further lines are at fault");
    return inventory;
}

}  // namespace reference::importers::sphinx
