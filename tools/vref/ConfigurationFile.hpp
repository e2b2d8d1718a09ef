#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "vref/Terminal.hpp"

namespace reference::tools {

// A value of the file, and the line that it stands on, counted from 1.
template <typename T>
struct Configured {
    T value;
    std::size_t line = 0;
};

// What a person has set for all commands, in $XDG_CONFIG_HOME/vref/config.toml, or in
// ~/.config/vref/config.toml where that variable names no absolute folder. docs/terminal.md
// describes the keys. A value that the file does not have is missing here.
struct ConfigurationFile {
    // Where the file is looked for; empty where neither variable names a folder.
    std::filesystem::path path;
    bool isThere = false;

    std::optional<Configured<std::string>> documentationSet;  // an absolute path
    std::optional<Configured<std::vector<std::string>>> preferredProducts;
    std::optional<Configured<std::string>> language;
    std::optional<Configured<std::string>> pager;  // a shell's command; empty: none is wanted
    std::optional<Configured<Colours>> colours;

    // Reads the file of this person. A file that is not there is one without keys. Throws
    // UnusableError for one that cannot be read, is larger than 1 MiB, or holds anything but the
    // known keys with values of their types; the message has file, line, column and what would be
    // right. Texts are one line of UTF-8.
    [[nodiscard]] static ConfigurationFile ofThisPerson();
};

}  // namespace reference::tools
