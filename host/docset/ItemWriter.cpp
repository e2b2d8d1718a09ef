#include "docset/ItemWriter.hpp"

#include <string>
#include <string_view>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

namespace json = boost::json;
using namespace property;

// Gathers the members of one object.
class Members {
  public:
    explicit Members(EmptyMembers emptyMembers) : m_emptyMembers(emptyMembers) {}

    Members& text(json::string_view name, const std::u16string& value) {
        if (m_emptyMembers == EmptyMembers::Keep || !value.empty())
            m_object.emplace(name, fl::i18n::toUtf8(value));
        return *this;
    }

    Members& always(json::string_view name, const std::string& value) {
        m_object.emplace(name, value);
        return *this;
    }

    template <typename Element, typename Write>
    Members& list(json::string_view name, const std::vector<Element>& elements, Write write) {
        if (m_emptyMembers == EmptyMembers::Omit && elements.empty())
            return *this;
        json::array array;
        array.reserve(elements.size());
        for (const auto& element : elements)
            array.push_back(write(element));
        m_object.emplace(name, std::move(array));
        return *this;
    }

    Members& texts(json::string_view name, const std::vector<std::u16string>& values) {
        return list(name, values,
                    [](const std::u16string& value) { return json::value(fl::i18n::toUtf8(value)); });
    }

    [[nodiscard]] json::object take() { return std::move(m_object); }

  private:
    EmptyMembers m_emptyMembers;
    json::object m_object;
};

// Writes items with one treatment of empty members throughout.
class ItemWriter {
  public:
    explicit ItemWriter(EmptyMembers emptyMembers) : m_emptyMembers(emptyMembers) {}

    [[nodiscard]] json::object item(const RefItem& item) const {
        Members members(m_emptyMembers);
        members.list("entities", item.getRefEntities(), [](const RefEntity& e) { return entity(e); })
            .text("packageName", item.getPackageName())
            .text("purpose", item.getPurpose())
            .text("introduced", item.getIntroduced())
            .text("description", item.getDescription());
        json::object thumbnail = Members(EmptyMembers::Omit)
                                     .text("source", item.getAppThumbnail().getSource())
                                     .text("alternativeText",
                                           item.getAppThumbnail().getAlternativeText())
                                     .take();
        json::object object = members.take();
        if (!thumbnail.empty())
            object.emplace("appThumbnail", std::move(thumbnail));
        if (m_emptyMembers == EmptyMembers::Keep ||
            item.getDeprecationStatus() != DeprecationStatus::Current)
            object.emplace("deprecationStatus",
                           DeprecationStatus::enumToString(item.getDeprecationStatus()));
        json::object lists = listsOf(item);
        for (auto& member : lists)
            object.emplace(member.key(), std::move(member.value()));
        return object;
    }

  private:
    [[nodiscard]] json::object listsOf(const RefItem& item) const {
        const auto info = [this](const ObjectInfo& i) { return objectInfo(i); };
        return Members(m_emptyMembers)
            .list("syntaxGroups", item.getSyntaxGroups(),
                  [this](const SyntaxGroup& group) {
                      return Members(m_emptyMembers)
                          .text("title", group.getTitle())
                          .texts("syntaxes", group.getSyntaxes())
                          .take();
                  })
            .list("inputs", item.getInputs(), info)
            .list("inputGroups", item.getInputGroups(),
                  [&](const InputGroup& group) {
                      return Members(m_emptyMembers)
                          .text("title", group.getTitle())
                          .list("inputs", group.getInputs(), info)
                          .take();
                  })
            .list("outputs", item.getOutputs(), info)
            .list("classPropertyGroups", item.getClassPropertyGroups(),
                  [&](const ClassPropertyGroup& group) {
                      return Members(m_emptyMembers)
                          .text("title", group.getTitle())
                          .list("properties", group.getClassProperties(), info)
                          .take();
                  })
            .list("seeAlso", item.getSeeAlsoInfo(),
                  [this](const SeeAlso& seeAlso) {
                      return Members(m_emptyMembers)
                          .text("page", seeAlso.getPage())
                          .always("name", fl::i18n::toUtf8(seeAlso.getName()))
                          .take();
                  })
            .list("examples", item.getExamples(),
                  [this](const Example& example) {
                      return Members(m_emptyMembers)
                          .text("title", example.getTitle())
                          .text("code", example.getCode())
                          .take();
                  })
            .list("parameters", item.getParameters(),
                  [this](const Parameter& parameter) {
                      return Members(m_emptyMembers)
                          .always("name", fl::i18n::toUtf8(parameter.getName()))
                          .text("purpose", parameter.getPurpose())
                          .text("defaultValue", parameter.getDefaultValue())
                          .take();
                  })
            .take();
    }

    [[nodiscard]] static json::object entity(const RefEntity& entity) {
        return Members(EmptyMembers::Keep)
            .text("name", entity.getName())
            .always("type", RefEntityType::enumToString(entity.getRefEntityType()))
            .always("functionType", FunctionType::enumToString(entity.getFunctionType()))
            .take();
    }

    [[nodiscard]] json::object objectInfo(const ObjectInfo& info) const {
        return Members(m_emptyMembers)
            .always("name", fl::i18n::toUtf8(info.getName()))
            .text("purpose", info.getPurpose())
            .text("href", info.getHref())
            .texts("values", info.getValues())
            .take();
    }

    EmptyMembers m_emptyMembers;
};

}  // namespace

json::object toJson(const RefItemLookup& record) {
    return Members(EmptyMembers::Omit)
        .always("type", RefEntityType::enumToString(record.getType()))
        .always("functionType", FunctionType::enumToString(record.getFunctionType()))
        .text("href", record.getHref())
        .text("purpose", record.getPurpose())
        .take();
}

json::object toJson(const RefItem& item, EmptyMembers emptyMembers) {
    return ItemWriter(emptyMembers).item(item);
}

}  // namespace reference::docset
