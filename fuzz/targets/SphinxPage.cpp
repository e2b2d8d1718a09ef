// One HTML page of a built tree, as the importer reads it.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "sphinx/PageReader.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using namespace importers::sphinx;

// The ids that inputs use.
const std::vector<WantedObject>& wantedObjects() {
    static const std::vector<WantedObject> wanted = {{0, "m.f", false},
                                                     {1, "m.C", false},
                                                     {2, "m.C.p", false},
                                                     {3, "module-m", true},
                                                     {4, "x", false}};
    return wanted;
}

void requireText(const std::string& text) {
    require(isUtf8(text), "All texts are UTF-8", text);
}

void requireSound(const DescriptionFacts& facts) {
    for (const auto& signature : facts.signatures) {
        for (const auto* const text :
             {&signature.text, &signature.name, &signature.type, &signature.value})
            requireText(*text);
        std::ranges::for_each(signature.parameters, requireText);
        std::ranges::for_each(signature.prefixes, requireText);
        for (const std::size_t object : signature.objects)
            require(object < wantedObjects().size(), "A signature is of objects that are wanted");
    }
    std::ranges::for_each(facts.names, requireText);
    std::ranges::for_each(facts.bases, requireText);
    for (const auto* const text : {&facts.purpose, &facts.purposeParagraphRest, &facts.description,
                                   &facts.explanation, &facts.title, &facts.introduced})
        requireText(*text);
    for (const auto& field : facts.fields) {
        requireText(field.title);
        requireText(field.prose);
        for (const auto& part : field.parts) {
            requireText(part.name);
            requireText(part.classifier);
            requireText(part.text);
        }
    }
    for (const auto& example : facts.examples) {
        requireText(example.title);
        requireText(example.code);
    }
    for (const auto* const links : {&facts.seeAlso, &facts.replacements})
        for (const auto& link : *links) {
            requireText(link.href);
            requireText(link.name);
            requireText(link.text);
        }
}

void run(std::string_view input) {
    static HtmlArena arena;
    const PageFacts facts = readPage(arena, input, "api/m.html", wantedObjects());
    requireText(facts.fault);
    require(!facts.fault.empty() || isUtf8(input), "Bytes that are not UTF-8 are reported");
    for (const auto& description : facts.descriptions)
        requireSound(description);
    for (const auto* const names : {&facts.codeNames.imports, &facts.codeNames.assignments})
        for (const auto& [name, meanings] : *names) {
            requireText(name);
            for (const auto& meaning : meanings)
                require(isUtf8(meaning.first) && meaning.second > 0, "A name was seen", name);
        }
}

const FuzzTarget target("SphinxPage", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
