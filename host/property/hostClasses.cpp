// The property library's classes as the scripting language sees them.
#include <cctype>
#include <cstdint>
#include <string>
#include <vector>

#include "property/hostNames.hpp"
#include "zorb/ClassDescription.hpp"

namespace reference::property {
namespace {

using zorb::ClassDescription;
using zorb::Member;
using zorb::registerEnumeration;

// "type-alias" as a script writes it: "TypeAlias".
std::string memberName(const std::string& text) {
    std::string name;
    bool isStart = true;
    for (const char unit : text) {
        if (unit != '-')
            name +=
                isStart ? static_cast<char>(std::toupper(static_cast<unsigned char>(unit))) : unit;
        isStart = unit == '-';
    }
    return name;
}

template <typename Enumeration>
std::vector<Member> membersOf() {
    std::vector<Member> members;
    for (const auto value : Enumeration::namedValues())
        members.push_back({.name = memberName(Enumeration::enumToString(value)),
                           .number = static_cast<std::uint32_t>(value)});
    return members;
}

// What inputs, outputs and properties of classes have in common.
template <typename Kind>
void registerObjectInfo(const char* documentation) {
    ClassDescription<Kind>(documentation)
        .readOnly("Name", &ObjectInfo::getName, "The own, unqualified name.")
        .readOnly("Purpose", &ObjectInfo::getPurpose, "The explanation.")
        .readOnly("Href", &ObjectInfo::getHref,
                  "Where it is documented, relative to the product's help folder; empty when only "
                  "on its owner's page.")
        .readOnly("Values", &ObjectInfo::getValues,
                  "The classifiers and allowed values that the page lists.")
        .registerClass();
}

bool registerClasses() {
    registerEnumeration<RefEntityType>("What kind of thing is documented.",
                                       membersOf<RefEntityType>());
    registerEnumeration<FunctionType>("How something that can be called is called.",
                                      membersOf<FunctionType>());
    registerEnumeration<DeprecationStatus>("Whether something is still to be used.",
                                           membersOf<DeprecationStatus>());

    registerObjectInfo<ClassProperty>("A property of a class.");
    registerObjectInfo<Input>("An input of a function.");
    registerObjectInfo<Output>("An output of a function.");
    ClassDescription<AppThumbnail>("The picture of an app.")
        .readOnly("Source", &AppThumbnail::getSource, "Where the picture is.")
        .readOnly("AlternativeText", &AppThumbnail::getAlternativeText,
                  "What is said to those who do not see it.")
        .registerClass();
    ClassDescription<ClassPropertyGroup>("The properties of a class under one heading.")
        .readOnly("Title", &ClassPropertyGroup::getTitle, "The heading; empty for none.")
        .readOnly("ClassProperties", &ClassPropertyGroup::getClassProperties,
                  "The properties, in page order.")
        .registerClass();
    ClassDescription<Example>("An example.")
        .readOnly("Title", &Example::getTitle, "What it shows; may be empty.")
        .readOnly("Code", &Example::getCode, "The code.")
        .registerClass();
    ClassDescription<HeaderInfo>("The product that a result is from.")
        .readOnly("ReferenceFileName", &HeaderInfo::getReferenceFileName,
                  "The file that the product's pages are read from.")
        .readOnly("HelpFolder", &HeaderInfo::getHelpFolder,
                  "The folder of its pages below the help root.")
        .readOnly("ShortName", &HeaderInfo::getShortName, "What the product is asked for by.")
        .readOnly("DisplayName", &HeaderInfo::getDisplayName, "What readers call the product.")
        .readOnly("Version", &HeaderInfo::getVersion, "The product's version.")
        .registerClass();
    ClassDescription<InputGroup>("The inputs of a function under one heading.")
        .readOnly("Title", &InputGroup::getTitle, "The heading; empty for none.")
        .readOnly("Inputs", &InputGroup::getInputs, "The inputs, in page order.")
        .registerClass();
    ClassDescription<Parameter>("A parameter of a block, command or the like.")
        .readOnly("Name", &Parameter::getName, "Its name.")
        .readOnly("Purpose", &Parameter::getPurpose, "The explanation.")
        .readOnly("DefaultValue", &Parameter::getDefaultValue, "What it is until it is set.")
        .registerClass();
    ClassDescription<RefEntity>("Something that a page documents.")
        .readOnly("RefEntityType", &RefEntity::getRefEntityType, "What kind of thing it is.")
        .readOnly("Name", &RefEntity::getName, "Its qualified name.")
        .readOnly("FunctionType", &RefEntity::getFunctionType, "How it is called.")
        .registerClass();
    ClassDescription<SeeAlso>("A page to read as well.")
        .readOnly("Page", &SeeAlso::getPage, "The page.")
        .readOnly("Name", &SeeAlso::getName, "What it is called.")
        .registerClass();
    ClassDescription<SyntaxGroup>("The ways to call a function, under one heading.")
        .readOnly("Title", &SyntaxGroup::getTitle, "The heading; empty for none.")
        .readOnly("Syntaxes", &SyntaxGroup::getSyntaxes, "The calls, as they are written.")
        .registerClass();
    ClassDescription<RefItem>("An entry of the documentation: what a page says of its entities.")
        .readOnly("Href", &RefItem::getHref,
                  "The page, relative to the product's help folder, with a fragment where the page "
                  "documents more than this.")
        .readOnly("RefEntities", &RefItem::getRefEntities, "What the entry documents.")
        .readOnly("PackageName", &RefItem::getPackageName, "The package of the entities.")
        .readOnly("Purpose", &RefItem::getPurpose, "One sentence.")
        .readOnly("Introduced", &RefItem::getIntroduced, "The version that brought the entities.")
        .readOnly("Description", &RefItem::getDescription,
                  "The remaining prose; paragraphs are parted by an empty line.")
        .readOnly("AppThumbnail", &RefItem::getAppThumbnail, "The picture of an app.")
        .readOnly("DeprecationStatus", &RefItem::getDeprecationStatus,
                  "Whether the entities are still to be used.")
        .readOnly("SyntaxGroups", &RefItem::getSyntaxGroups, "The ways to call them.")
        .readOnly("Inputs", &RefItem::getInputs, "The inputs outside groups.")
        .readOnly("InputGroups", &RefItem::getInputGroups, "The inputs in groups.")
        .readOnly("Outputs", &RefItem::getOutputs, "The outputs.")
        .readOnly("ClassPropertyGroups", &RefItem::getClassPropertyGroups,
                  "The properties of a class, in groups.")
        .readOnly("SeeAlsoInfo", &RefItem::getSeeAlsoInfo, "Pages to read as well.")
        .readOnly("Examples", &RefItem::getExamples, "The examples.")
        .readOnly("Parameters", &RefItem::getParameters, "The parameters.")
        .readOnly("Replacements", &RefItem::getReplacements,
                  "What is to be used instead of deprecated entities.")
        .registerClass();
    return true;
}

const bool isRegistered [[maybe_unused]] = registerClasses();

}  // namespace
}  // namespace reference::property
