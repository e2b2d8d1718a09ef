#include "sphinx/ItemText.hpp"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

#include "fl/i18n/utf.hpp"
#include "sphinx/FieldLists.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

using fl::i18n::toUtf16;

std::vector<std::u16string> valuesOf(const NamedPart& part) {
    std::vector<std::u16string> values;
    if (!part.classifier.empty())
        values.push_back(toUtf16(part.classifier));
    return values;
}

std::vector<property::SyntaxGroup> syntaxGroupsOf(const DescriptionFacts& facts) {
    std::vector<std::u16string> syntaxes;
    std::set<std::string_view> seen;
    for (const SignatureFacts& signature : facts.signatures)
        if (!signature.text.empty() && seen.insert(signature.text).second)
            syntaxes.push_back(toUtf16(signature.text));
    if (syntaxes.empty())
        return {};
    return {property::SyntaxGroup(u"", std::move(syntaxes))};
}

std::vector<property::InputGroup> inputGroupsOf(const DescriptionFacts& facts) {
    std::vector<property::InputGroup> groups;
    for (const Field& field : facts.fields) {
        if (field.role != FieldRole::Inputs || field.parts.empty())
            continue;
        std::vector<property::Input> inputs;
        for (const NamedPart& part : field.parts)
            inputs.emplace_back(toUtf16(part.name), toUtf16(part.text), u"", valuesOf(part));
        property::InputGroup group(toUtf16(field.title), std::move(inputs));
        groups.push_back(std::move(group));
    }
    return groups;
}

// A type that the page gives apart from the value belongs to the first value without one.
std::vector<property::Output> outputsOf(const DescriptionFacts& facts) {
    std::vector<NamedPart> parts;
    for (const Field& field : facts.fields)
        if (field.role == FieldRole::Outputs)
            parts.insert(parts.end(), field.parts.begin(), field.parts.end());
    std::size_t untyped = 0;  // no part before it is without a type
    for (const Field& field : facts.fields) {
        if (field.role != FieldRole::OutputType || field.prose.empty())
            continue;
        while (untyped < parts.size() && !parts[untyped].classifier.empty())
            ++untyped;
        if (untyped < parts.size())
            parts[untyped].classifier = field.prose;
        else
            parts.push_back({.name = {}, .classifier = field.prose, .text = {}});
    }
    std::vector<property::Output> outputs;
    outputs.reserve(parts.size());
    for (const NamedPart& part : parts)
        outputs.emplace_back(toUtf16(part.name), toUtf16(part.text), u"", valuesOf(part));
    return outputs;
}

// Where an item's purpose is not the description's first sentence, that sentence goes back to where
// it was taken from. A field that lists nothing is prose, too. What may be raised is neither input
// nor output, so it becomes the last section.
std::string descriptionOf(const DescriptionFacts& facts, const std::string& purpose) {
    std::string text = facts.description;
    if (!facts.purpose.empty() && purpose != facts.purpose) {
        const std::string& rest = facts.purposeParagraphRest;
        const std::size_t at = rest.empty() ? 0 : text.find(rest);
        text.insert(at, facts.purpose + (rest.empty() ? text.empty() ? "" : "\n\n" : " "));
    }
    for (const Field& field : facts.fields) {
        const bool isSaid = field.role == FieldRole::OutputType ||
                            field.role == FieldRole::Raises || field.prose.empty();
        if (!isSaid)
            text += (text.empty() ? "" : "\n\n") + withLead(field.title + ":", field.prose);
    }
    for (const Field& field : facts.fields)
        if (field.role == FieldRole::Raises)
            text += (text.empty() ? "" : "\n\n") + sectionText(field);
    return text;
}

// The targets of links as the product's records name them, each once.
std::vector<property::SeeAlso> pointersOf(const std::vector<LinkFacts>& links,
                                          const ItemSource& source) {
    std::vector<property::SeeAlso> pointers;
    std::set<std::pair<std::string, std::string>> seen;
    for (const LinkFacts& link : links) {
        std::string page = link.href.empty() ? std::string() : source.recordHref(link.href);
        std::string text = link.text.empty() ? link.name : link.name + " – " + link.text;
        const auto [entry, isNew] = seen.emplace(std::move(page), std::move(text));
        if (isNew)
            pointers.emplace_back(toUtf16(entry->first), toUtf16(entry->second));
    }
    return pointers;
}

}  // namespace

std::string itemPurpose(const DescriptionFacts& facts, const std::string& summary) {
    if (!summary.empty())
        return summary;
    return facts.purpose.empty() ? facts.title : facts.purpose;
}

std::string explanationOf(const DescriptionFacts& facts) {
    if (!facts.explanation.empty())
        return facts.explanation;
    const std::string& rest = facts.purposeParagraphRest;
    if (facts.purpose.empty() || facts.description.empty())
        return facts.purpose + facts.description;
    const bool goesOn = !rest.empty() && facts.description.starts_with(rest);
    return facts.purpose + (goesOn ? " " : "\n\n") + facts.description;
}

property::RefItem toItem(const ItemSource& source) {
    const DescriptionFacts nothing;
    const DescriptionFacts& facts = source.facts != nullptr ? *source.facts : nothing;
    const std::string purpose = itemPurpose(facts, source.summary);

    std::vector<property::InputGroup> inputGroups = inputGroupsOf(facts);
    std::vector<property::Input> inputs;
    for (const property::InputGroup& group : inputGroups)
        std::ranges::copy(group.getInputs(), std::back_inserter(inputs));
    std::vector<property::Example> examples;
    for (const ExampleFacts& example : facts.examples)
        examples.emplace_back(toUtf16(example.title), toUtf16(example.code));

    property::RefItem item(
        toUtf16(source.href), source.entities, toUtf16(source.packageName), toUtf16(purpose),
        toUtf16(facts.introduced), toUtf16(descriptionOf(facts, purpose)), {},
        facts.isDeprecated ? property::DeprecationStatus::Deprecated
                           : property::DeprecationStatus::Current,
        syntaxGroupsOf(facts), std::move(inputs), std::move(inputGroups), outputsOf(facts),
        source.properties, pointersOf(facts.seeAlso, source), std::move(examples), {});
    // The box may refer to the deprecated object itself, too.
    auto replacements = pointersOf(facts.replacements, source);
    std::erase_if(replacements, [&item](const property::SeeAlso& each) {
        return each.getPage() == item.getHref();
    });
    item.setReplacements(std::move(replacements));
    return item;
}

}  // namespace reference::importers::sphinx
