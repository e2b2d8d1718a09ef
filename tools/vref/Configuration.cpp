#include "vref/Configuration.hpp"

#include <utility>

#include "vref/ConfigurationFile.hpp"
#include "vref/Environment.hpp"

namespace reference::tools {
namespace {

Origin option(const char* name) {
    return {.kind = Origin::Kind::Option, .name = name};
}

Origin variable(const char* name) {
    return {.kind = Origin::Kind::Environment, .name = name};
}

// Takes the value of the file, where it has one.
template <typename T>
void take(const ConfigurationFile& file, const std::optional<Configured<T>>& configured,
          Setting<T>& setting) {
    if (configured)
        setting = {
            configured->value,
            {.kind = Origin::Kind::File, .name = file.path.string(), .line = configured->line}};
}

Configuration resolve(const ConfigurationFile& file, const GivenSettings& given) {
    Configuration all{.pager = {"less", {}}, .file = file.path, .isFileThere = file.isThere};
    take(file, file.documentationSet, all.documentationSet);
    take(file, file.preferredProducts, all.preferredProducts);
    take(file, file.language, all.language);
    take(file, file.pager, all.pager);
    take(file, file.colours, all.colours);

    if (std::string root = environmentText("VELTRA_DOC_ROOT"); !root.empty())
        all.documentationSet = {std::move(root), variable("VELTRA_DOC_ROOT")};
    if (std::string pager = environmentText("PAGER"); !pager.empty())
        all.pager = {std::move(pager), variable("PAGER")};
    if (!environmentText("NO_COLOR").empty())
        all.colours = {Colours::Never, variable("NO_COLOR")};

    if (!given.docRoot.empty())
        all.documentationSet = {given.docRoot, option("--doc-root")};
    if (!given.language.empty())
        all.language = {given.language, option("--language")};
    if (given.noPager)
        all.pager = {{}, option("--no-pager")};
    if (given.colours)
        all.colours = {*given.colours, option("--colours")};
    return all;
}

// For an error about a value that the person may have forgotten.
std::string placeInFile(const Origin& origin) {
    return origin.kind == Origin::Kind::File ? toString(origin) : std::string();
}

}  // namespace

std::string toString(const Origin& origin) {
    switch (origin.kind) {
        case Origin::Kind::Option:
        case Origin::Kind::Environment:
            return origin.name;
        case Origin::Kind::File:
            return origin.name + ":" + std::to_string(origin.line);
        case Origin::Kind::Default:
            break;
    }
    return "default";
}

Configuration Configuration::inForce(const GivenSettings& given) {
    return resolve(ConfigurationFile::ofThisPerson(), given);
}

Configuration Configuration::withoutFile(const GivenSettings& given) {
    return resolve({}, given);
}

DocumentationOptions Configuration::documentation() const {
    return {.docRoot = documentationSet.value,
            .language = language.value,
            .docRootPlace = placeInFile(documentationSet.origin),
            .languagePlace = placeInFile(language.origin)};
}

}  // namespace reference::tools
