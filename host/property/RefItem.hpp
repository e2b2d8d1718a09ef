#pragma once

#include <string>
#include <utility>
#include <vector>

#include "foundation/core/export.hpp"
#include "property/AppThumbnail.hpp"
#include "property/ClassPropertyGroup.hpp"
#include "property/DeprecationStatus.hpp"
#include "property/Example.hpp"
#include "property/Input.hpp"
#include "property/InputGroup.hpp"
#include "property/Output.hpp"
#include "property/Parameter.hpp"
#include "property/RefEntity.hpp"
#include "property/SeeAlso.hpp"
#include "property/SyntaxGroup.hpp"

namespace reference::property {

// One documentation entry: everything that a reference page says of the entity, or the few
// entities, that it documents together. Texts are UTF-16 and empty where the page says nothing;
// lists are in page order.
//
// A plain value: separate objects may be used from separate threads, one object may be read from
// many. References from the getters stay valid until the object is changed or destroyed.
class VELTRA_HOST_API RefItem {
  public:
    // An item that says nothing: empty texts and lists, status Current.
    RefItem() = default;

    // `href` is the page, relative to the product's help folder, with a fragment where the page
    // documents more than this entry; `packageName` the package that the entities belong to;
    // `purpose` one sentence; `introduced` the version that brought the entity; `description` the
    // remaining prose, paragraphs separated by an empty line.
    RefItem(std::u16string href, std::vector<RefEntity> refEntities, std::u16string packageName,
            std::u16string purpose, std::u16string introduced, std::u16string description,
            AppThumbnail appThumbnail, DeprecationStatus::Value deprecationStatus,
            std::vector<SyntaxGroup> syntaxGroups, std::vector<Input> inputs,
            std::vector<InputGroup> inputGroups, std::vector<Output> outputs,
            std::vector<ClassPropertyGroup> classPropertyGroups, std::vector<SeeAlso> seeAlsoInfo,
            std::vector<Example> examples, std::vector<Parameter> parameters);

    [[nodiscard]] const std::u16string& getHref() const noexcept { return m_href; }
    [[nodiscard]] const std::vector<RefEntity>& getRefEntities() const noexcept {
        return m_refEntities;
    }
    [[nodiscard]] const std::u16string& getPackageName() const noexcept { return m_packageName; }
    [[nodiscard]] const std::u16string& getPurpose() const noexcept { return m_purpose; }
    [[nodiscard]] const std::u16string& getIntroduced() const noexcept { return m_introduced; }
    [[nodiscard]] const std::u16string& getDescription() const noexcept { return m_description; }
    [[nodiscard]] const AppThumbnail& getAppThumbnail() const noexcept { return m_appThumbnail; }
    [[nodiscard]] DeprecationStatus::Value getDeprecationStatus() const noexcept {
        return m_deprecationStatus;
    }
    [[nodiscard]] const std::vector<SyntaxGroup>& getSyntaxGroups() const noexcept {
        return m_syntaxGroups;
    }
    [[nodiscard]] const std::vector<Input>& getInputs() const noexcept { return m_inputs; }
    [[nodiscard]] const std::vector<InputGroup>& getInputGroups() const noexcept {
        return m_inputGroups;
    }
    [[nodiscard]] const std::vector<Output>& getOutputs() const noexcept { return m_outputs; }
    [[nodiscard]] const std::vector<ClassPropertyGroup>& getClassPropertyGroups() const noexcept {
        return m_classPropertyGroups;
    }
    [[nodiscard]] const std::vector<SeeAlso>& getSeeAlsoInfo() const noexcept {
        return m_seeAlsoInfo;
    }
    [[nodiscard]] const std::vector<Example>& getExamples() const noexcept { return m_examples; }
    [[nodiscard]] const std::vector<Parameter>& getParameters() const noexcept {
        return m_parameters;
    }

    // What the documentation says to use instead of a deprecated entity; mostly empty. Not a
    // parameter of the constructor, because few items have any.
    [[nodiscard]] const std::vector<SeeAlso>& getReplacements() const noexcept {
        return m_replacements;
    }
    void setReplacements(std::vector<SeeAlso> replacements) {
        m_replacements = std::move(replacements);
    }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] RefItem copy() const { return *this; }

    friend bool operator==(const RefItem&, const RefItem&) = default;

  private:
    std::u16string m_href;
    std::vector<RefEntity> m_refEntities;
    std::u16string m_packageName;
    std::u16string m_purpose;
    std::u16string m_introduced;
    std::u16string m_description;
    AppThumbnail m_appThumbnail;
    DeprecationStatus::Value m_deprecationStatus = DeprecationStatus::Current;
    std::vector<SyntaxGroup> m_syntaxGroups;
    std::vector<Input> m_inputs;
    std::vector<InputGroup> m_inputGroups;
    std::vector<Output> m_outputs;
    std::vector<ClassPropertyGroup> m_classPropertyGroups;
    std::vector<SeeAlso> m_seeAlsoInfo;
    std::vector<Example> m_examples;
    std::vector<Parameter> m_parameters;
    std::vector<SeeAlso> m_replacements;
};

}  // namespace reference::property
