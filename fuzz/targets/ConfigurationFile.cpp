// The file in which a person configures the tool. What is read is written and read again.
#include "vref/ConfigurationFile.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "support/TempFolder.hpp"
#include "vref/ExitStatus.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using tools::Colours;
using tools::ConfigurationFile;

// A text of one line; what TOML does not take as it is stands as a number.
std::string asTomlText(std::string_view text) {
    std::string result = "\"";
    for (const char unit : text) {
        const auto value = static_cast<unsigned char>(unit);
        if (unit == '"' || unit == '\\')
            (result += '\\') += unit;
        else if (value < 0x20 || value == 0x7F) {
            char escape[8];
            std::snprintf(escape, sizeof(escape), "\\u%04X", value);
            result += escape;
        } else
            result += unit;
    }
    return result + "\"";
}

std::string written(const ConfigurationFile& file) {
    std::string text;
    if (file.documentationSet)
        text += "documentation-set = " + asTomlText(file.documentationSet->value) + "\n";
    if (file.preferredProducts) {
        text += "preferred-products = [";
        for (const auto& product : file.preferredProducts->value)
            text += asTomlText(product) + ", ";
        text += "]\n";
    }
    if (file.language)
        text += "language = " + asTomlText(file.language->value) + "\n";
    if (file.pager)
        text += "pager = " + (file.pager->value.empty() ? "false" : asTomlText(file.pager->value)) +
                "\n";
    if (file.colours)
        text += std::string("colours = ") +
                (file.colours->value == Colours::Auto     ? "\"auto\""
                 : file.colours->value == Colours::Always ? "\"always\""
                                                          : "\"never\"") +
                "\n";
    return text;
}

template <typename T>
bool isSame(const T& a, const T& b) {
    return a.has_value() == b.has_value() && (!a || a->value == b->value);
}

void run(std::string_view input) {
    static const tests::TempFolder folder;
    static const bool isSet = [] {
        ::setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
        ::setenv("HOME", "/home/somebody", 1);
        return true;
    }();
    static_cast<void>(isSet);
    folder.write("vref/config.toml", input);
    ConfigurationFile file;
    try {
        file = ConfigurationFile::ofThisPerson();
    } catch (const tools::UnusableError& error) {
        const std::string_view message = error.what();
        require(message.find("config.toml") != std::string_view::npos && isUtf8(message),
                "An error names the file", message);
        return;
    }
    require(file.isThere, "The file is there");
    require(!file.documentationSet || file.documentationSet->value.starts_with('/'),
            "A folder is an absolute path");
    const std::string again = written(file);
    folder.write("vref/config.toml", again);
    const auto reread = ConfigurationFile::ofThisPerson();
    require(isSame(reread.documentationSet, file.documentationSet) &&
                isSame(reread.preferredProducts, file.preferredProducts) &&
                isSame(reread.language, file.language) && isSame(reread.pager, file.pager) &&
                isSame(reread.colours, file.colours),
            "What was read can be written", again);
}

const FuzzTarget target("ConfigurationFile", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
