#include "docset/Fault.hpp"

#include <array>
#include <cstdio>
#include <utility>

namespace reference::docset {
namespace {

// Names in files and of files may hold line feeds and worse; a fault is one line.
std::string inOneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F) {
            line += c;
            continue;
        }
        std::array<char, 7> escape{};
        std::snprintf(escape.data(), escape.size(), "\\u%04x", byte);
        line += escape.data();
    }
    return line;
}

}  // namespace

Fault Fault::outOfMemory(std::string file) {
    return {.file = std::move(file),
            .problem = "There is not enough memory to read the file.",
            .mayPass = true};
}

std::string Fault::toString() const {
    std::string text = file;
    if (line != 0)
        text += ":" + std::to_string(line) + ":" + std::to_string(column);
    text += ": ";
    if (!field.empty())
        text += field + ": ";
    return inOneLine(text + problem);
}

}  // namespace reference::docset
