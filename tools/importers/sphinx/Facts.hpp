#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

// What a page says of an object, as read from it and before it is known how the object fits into
// the product: plain values, all texts UTF-8, passed between the readers and the assembly.
namespace reference::importers::sphinx {

// A parameter, a returned value or an attribute as a field or a signature names it.
struct NamedPart {
    std::string name;
    // Its type or allowed values as written; empty: none.
    std::string classifier;
    std::string text;
};

enum class FieldRole {
    Inputs,
    Outputs,
    OutputType,
    // What may be raised, and the warnings that may be given.
    Raises,
    Properties,
    Type,
    SeeAlso,
    Ignored,
    Prose
};

// One entry of a field list.
struct Field {
    // The heading without the colon.
    std::string title;
    FieldRole role = FieldRole::Prose;
    std::vector<NamedPart> parts;
    // The whole of the field as text, where it does not consist of parts.
    std::string prose;
};

struct ExampleFacts {
    std::string title;
    std::string code;
};

// A link of a see-also section.
struct LinkFacts {
    // As the page has it; empty: the name is not linked.
    std::string href;
    std::string name;
    // What the section says of it; empty: nothing.
    std::string text;
};

// One signature line.
struct SignatureFacts {
    // As displayed.
    std::string text;
    // The words before the name that are set off as properties: "class", "static", "async", …
    std::vector<std::string> prefixes;
    // The name that is defined.
    std::string name;
    // The type that a signature without brackets gives, before the name in C, after it elsewhere;
    // empty: none.
    std::string type;
    // The value that it gives: "5" of "x: int = 5"; empty: none.
    std::string value;
    // The comma-separated parts within the brackets.
    std::vector<std::string> parameters;
    // All ids on the line, including those of older forms of the name.
    std::vector<std::string> anchors;
    // Positions, in the list given to the page reader, of the objects whose ids the line has.
    std::vector<std::size_t> objects;
};

// Everything that is said of one description: one object, or the few that are described together.
struct DescriptionFacts {
    std::vector<SignatureFacts> signatures;
    // The names that the signatures define, as far as they are shown; for a module its name.
    std::vector<std::string> names;
    // Whether it stands within another object's description.
    bool isNested = false;
    bool isModule = false;
    // The first sentence, and the rest of its paragraph, with which the description goes on.
    std::string purpose;
    std::string purposeParagraphRest;
    std::string description;
    // All that is said, code and version boxes in their places; set only where the object may be a
    // property of a class, which has no place for a purpose, examples and versions of its own.
    std::string explanation;
    // A module's heading.
    std::string title;
    // The base classes that are shown.
    std::vector<std::string> bases;
    std::vector<Field> fields;
    std::vector<ExampleFacts> examples;
    std::vector<LinkFacts> seeAlso;
    // The version that introduced it; empty: unknown.
    std::string introduced;
    bool isDeprecated = false;
    // What the box that deprecates it refers to, for use instead.
    std::vector<LinkFacts> replacements;
};

// How often the code of a page gives names to things.
struct CodeNames {
    using ByName = std::map<std::string, std::map<std::string, std::uint32_t>>;
    // By alias what is imported under it: "np", then "numpy".
    ByName imports;
    // By variable what is called for its value: "df", then "pd.DataFrame"; empty: no call.
    ByName assignments;
};

// What was read from one page.
struct PageFacts {
    // In page order.
    std::vector<DescriptionFacts> descriptions;
    CodeNames codeNames;
    // What is wrong with the page; empty: nothing. With `isMissing` nothing could be read.
    std::string fault;
    bool isMissing = false;
};

}  // namespace reference::importers::sphinx
