#include "vref/SettingOptions.hpp"

#include <string>

#include <CLI/CLI.hpp>

#include "vref/DisplayText.hpp"

namespace reference::tools {

void addDocumentationOptions(CLI::App& command, GivenSettings& given) {
    command
        .add_option("--doc-root", given.docRoot,
                    "The documentation set to read (else VELTRA_DOC_ROOT, else what is configured, "
                    "else the one installed with the library)")
        ->type_name("FOLDER");
    command
        .add_option("--language", given.language,
                    "The language to read it in, such as ja_JP or ja (else what is configured, "
                    "else the locale's, else English, else the set's first)")
        ->type_name("LOCALE");
}

void addPagerOption(CLI::App& command, GivenSettings& given) {
    command.add_flag("--no-pager", given.noPager,
                     "Do not show a long answer with a pager (else PAGER, else what is "
                     "configured, else less)");
}

void addColoursOption(CLI::App& command, GivenSettings& given) {
    command
        .add_option_function<std::string>(
            "--colours,--color",
            [&given](const std::string& text) {
                given.colours = coloursNamed(text);
                if (!given.colours)
                    throw CLI::ValidationError("--colours", "There is no \"" + printableLine(text) +
                                                                "\"; there is: auto, always, "
                                                                "never.");
            },
            "Colours: on a terminal, always, or never (else NO_COLOR, else what is configured)")
        ->type_name("auto|always|never");
}

}  // namespace reference::tools
