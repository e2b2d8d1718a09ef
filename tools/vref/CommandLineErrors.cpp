#include "vref/CommandLineErrors.hpp"

#include <optional>
#include <vector>

#include "vref/DisplayText.hpp"
#include "vref/Nearest.hpp"

namespace reference::tools {
namespace {

std::string didYouMean(const std::optional<std::string>& meant) {
    return meant ? "; did you mean \"" + *meant + "\"?" : "";
}

// The command that the arguments were for.
const CLI::App& innermost(const CLI::App& app) {
    const auto parsed = app.get_subcommands();
    return parsed.empty() ? app : innermost(*parsed.back());
}

std::vector<std::string> optionNames(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
        for (const auto& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

std::string describeExtras(const CLI::App& app) {
    const auto extras = app.remaining(true);
    std::string text = extras.size() > 1 ? "The following arguments were not expected:"
                                         : "The following argument was not expected:";
    std::optional<std::string> meant;
    for (const auto& extra : extras) {
        text += " " + printableLine(extra);
        if (!meant && extra.starts_with("--"))
            meant = nearest(extra.substr(0, extra.find('=')), optionNames(innermost(app)));
    }
    return text + didYouMean(meant);
}

}  // namespace

std::string describe(const CLI::App& app, const CLI::ParseError& error) {
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)
        return describeExtras(app);
    return printable(error.what());
}

std::string describeUnknownCommand(const CLI::App& app, const std::string& typed) {
    std::vector<std::string> names;
    std::string known;
    for (const CLI::App* command : app.get_subcommands({})) {
        names.push_back(command->get_name());
        known += (known.empty() ? "" : ", ") + names.back();
    }
    const std::string meant = didYouMean(nearest(typed, names));
    return "There is no command \"" + printableLine(typed) + "\"" +
           (meant.empty() ? "; " : meant + " ") + (meant.empty() ? "there is: " : "There is: ") +
           known + ".";
}

}  // namespace reference::tools
