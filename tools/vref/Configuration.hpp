#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "vref/Documentation.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// Where a value comes from.
struct Origin {
    enum class Kind { Option, Environment, File, Default };

    Kind kind = Kind::Default;
    std::string name = {};  // of the option or the variable, or the file's path; else empty
    std::size_t line = 0;   // in the file
};

// "--doc-root", "VELTRA_DOC_ROOT", "/home/a/.config/vref/config.toml:3", "default". UTF-8 as far as
// the file's path is.
[[nodiscard]] std::string toString(const Origin& origin);

template <typename T>
struct Setting {
    T value;
    Origin origin;
};

// What the command line says about things that may be configured as well, as it was typed.
struct GivenSettings {
    std::string docRoot;
    std::string language;
    std::optional<Colours> colours;
    bool noPager = false;
};

// What is in force for a command: what its options say, else the environment, else the person's
// file (see ConfigurationFile), else the default. A plain value.
struct Configuration {
    Setting<std::string> documentationSet;  // empty: the one installed with the library
    Setting<std::vector<std::string>> preferredProducts;
    Setting<std::string> language;  // empty: the locale of the process decides
    Setting<std::string> pager;     // a shell's command; empty: none is wanted
    Setting<Colours> colours;
    std::filesystem::path file;  // where the person's file is looked for; may be empty
    bool isFileThere = false;

    // Throws UnusableError for a file that is not right.
    [[nodiscard]] static Configuration inForce(const GivenSettings& given);

    // The same without the file.
    [[nodiscard]] static Configuration withoutFile(const GivenSettings& given);

    // Which documentation is to be read.
    [[nodiscard]] DocumentationOptions documentation() const;
};

}  // namespace reference::tools
