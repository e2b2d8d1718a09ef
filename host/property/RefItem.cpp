#include "property/RefItem.hpp"

#include <utility>

namespace reference::property {

RefItem::RefItem(std::u16string href, std::vector<RefEntity> refEntities,
                 std::u16string packageName, std::u16string purpose, std::u16string introduced,
                 std::u16string description, AppThumbnail appThumbnail,
                 DeprecationStatus::Value deprecationStatus, std::vector<SyntaxGroup> syntaxGroups,
                 std::vector<Input> inputs, std::vector<InputGroup> inputGroups,
                 std::vector<Output> outputs, std::vector<ClassPropertyGroup> classPropertyGroups,
                 std::vector<SeeAlso> seeAlsoInfo, std::vector<Example> examples,
                 std::vector<Parameter> parameters)
    : m_href(std::move(href)),
      m_refEntities(std::move(refEntities)),
      m_packageName(std::move(packageName)),
      m_purpose(std::move(purpose)),
      m_introduced(std::move(introduced)),
      m_description(std::move(description)),
      m_appThumbnail(std::move(appThumbnail)),
      m_deprecationStatus(deprecationStatus),
      m_syntaxGroups(std::move(syntaxGroups)),
      m_inputs(std::move(inputs)),
      m_inputGroups(std::move(inputGroups)),
      m_outputs(std::move(outputs)),
      m_classPropertyGroups(std::move(classPropertyGroups)),
      m_seeAlsoInfo(std::move(seeAlsoInfo)),
      m_examples(std::move(examples)),
      m_parameters(std::move(parameters)) {}

}  // namespace reference::property
