#include "sphinx/ClassProperties.hpp"

#include <algorithm>
#include <utility>

#include "fl/i18n/utf.hpp"
#include "sphinx/Sentence.hpp"

namespace reference::importers::sphinx {
namespace {

using fl::i18n::toUtf16;

std::string sentenceOf(const std::string& text) {
    InlineText paragraph;
    paragraph.addText(text.substr(0, text.find("\n\n")));
    return firstSentence(paragraph);
}

void fillGap(std::string& text, const std::string& other) {
    if (text.empty())
        text = other;
}

std::string summaryOf(const DocumentedProperty& property) {
    if (!property.purpose.empty())
        return property.purpose;
    return sentenceOf(property.explanation);
}

// A property has no place for a syntax, so its type and value are shown together as its values:
// "int = 5", or "5" where the type is not known.
property::ClassProperty toProperty(const DocumentedProperty& property) {
    std::string said = property.classifier;
    if (!property.value.empty())
        said += (said.empty() ? "" : " = ") + property.value;
    std::vector<std::u16string> values;
    if (!said.empty())
        values.push_back(toUtf16(said));
    return {toUtf16(property.name), toUtf16(property.explanation), toUtf16(property.href),
            std::move(values)};
}

}  // namespace

void ClassProperties::append(DocumentedProperty property) {
    const auto [group, isNew] = m_groupsByTitle.try_emplace(property.title, m_groups.size());
    if (isNew)
        m_groups.push_back({property.title, {}});
    auto& properties = m_groups[group->second].properties;
    m_placesByName.try_emplace(property.name, group->second, properties.size());
    properties.push_back(std::move(property));
}

DocumentedProperty* ClassProperties::find(const std::string& name) {
    const auto found = m_placesByName.find(name);
    return found == m_placesByName.end()
               ? nullptr
               : &m_groups[found->second.first].properties[found->second.second];
}

void ClassProperties::addFields(const std::vector<Field>& fields) {
    for (const Field& field : fields) {
        if (field.role != FieldRole::Properties)
            continue;
        for (const NamedPart& part : field.parts) {
            if (DocumentedProperty* const known = find(part.name)) {
                fillGap(known->classifier, part.classifier);
                fillGap(known->explanation, part.text);
                continue;
            }
            append({.name = part.name,
                    .title = field.title,
                    .href = {},
                    .classifier = part.classifier,
                    .value = {},
                    .purpose = {},
                    .explanation = part.text});
        }
    }
}

void ClassProperties::add(const DocumentedProperty& property) {
    DocumentedProperty* const known = find(property.name);
    if (known == nullptr) {
        append(property);
        return;
    }
    DocumentedProperty merged = property;
    fillGap(merged.href, known->href);
    fillGap(merged.classifier, known->classifier);
    if (merged.explanation.empty()) {
        merged.purpose = known->purpose;
        merged.explanation = known->explanation;
    }
    *known = std::move(merged);
}

std::string ClassProperties::purposeOf(const std::string& name) const {
    const auto found = m_placesByName.find(name);
    return found == m_placesByName.end()
               ? std::string()
               : summaryOf(m_groups[found->second.first].properties[found->second.second]);
}

std::vector<std::string> ClassProperties::names() const {
    std::vector<std::string> names;
    for (const Group& group : m_groups)
        for (const DocumentedProperty& each : group.properties)
            names.push_back(each.name);
    return names;
}

std::vector<property::ClassPropertyGroup> ClassProperties::groups() const {
    std::vector<property::ClassPropertyGroup> groups;
    for (const Group& group : m_groups) {
        std::vector<property::ClassProperty> properties;
        std::ranges::transform(group.properties, std::back_inserter(properties), toProperty);
        if (properties.empty())
            continue;
        property::ClassPropertyGroup entry(toUtf16(group.title), std::move(properties));
        groups.push_back(std::move(entry));
    }
    return groups;
}

}  // namespace reference::importers::sphinx
