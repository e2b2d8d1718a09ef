#include "docset/ItemWriter.hpp"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
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
    explicit Members(JsonForm form) : m_form(form) {}

    Members& text(json::string_view name, const std::u16string& value) {
        if (m_form == JsonForm::Complete || !value.empty())
            m_object.emplace(name, fl::i18n::toUtf8(value));
        return *this;
    }

    Members& always(json::string_view name, const std::string& value) {
        m_object.emplace(name, value);
        return *this;
    }

    // A value of an enumeration, by its name where it has one.
    template <typename Enumeration>
    Members& enumeration(json::string_view name, typename Enumeration::Value value) {
        const auto& named = Enumeration::namedValues();
        const bool isNamed = std::ranges::find(named, value) != named.end();
        if (isNamed || m_form == JsonForm::Complete)
            m_object.emplace(name, Enumeration::enumToString(value));
        else
            m_object.emplace(name, static_cast<std::uint32_t>(value));
        return *this;
    }

    template <typename Element, typename Write>
    Members& list(json::string_view name, const std::vector<Element>& elements, Write write) {
        if (m_form == JsonForm::Set && elements.empty())
            return *this;
        return always(name, elements, write);
    }

    template <typename Element, typename Write>
    Members& always(json::string_view name, const std::vector<Element>& elements, Write write) {
        json::array array;
        array.reserve(elements.size());
        for (const auto& element : elements)
            array.push_back(write(element));
        m_object.emplace(name, std::move(array));
        return *this;
    }

    Members& texts(json::string_view name, const std::vector<std::u16string>& values) {
        return list(name, values, [](const std::u16string& value) {
            return json::value(fl::i18n::toUtf8(value));
        });
    }

    [[nodiscard]] json::object take() { return std::move(m_object); }

  private:
    JsonForm m_form;
    json::object m_object;
};

// Writes items with one treatment of empty members throughout.
class ItemWriter {
  public:
    explicit ItemWriter(JsonForm form) : m_form(form) {}

    [[nodiscard]] json::object item(const RefItem& item) const {
        Members members(m_form);
        members
            .always("entities", item.getRefEntities(),
                    [this](const RefEntity& e) { return entity(e); })
            .text("packageName", item.getPackageName())
            .text("purpose", item.getPurpose())
            .text("introduced", item.getIntroduced())
            .text("description", item.getDescription());
        if (m_form == JsonForm::Complete ||
            item.getDeprecationStatus() != DeprecationStatus::Current)
            members.enumeration<DeprecationStatus>("deprecationStatus",
                                                   item.getDeprecationStatus());
        json::object object = members.take();
        const AppThumbnail& thumbnail = item.getAppThumbnail();
        if (!(thumbnail == AppThumbnail()))
            object.emplace("appThumbnail",
                           Members(JsonForm::Set)
                               .text("source", thumbnail.getSource())
                               .text("alternativeText", thumbnail.getAlternativeText())
                               .take());
        json::object lists = listsOf(item);
        for (auto& member : lists)
            object.emplace(member.key(), std::move(member.value()));
        return object;
    }

  private:
    [[nodiscard]] json::object listsOf(const RefItem& item) const {
        const auto pointer = [this](const SeeAlso& seeAlso) {
            return Members(m_form)
                .text("page", seeAlso.getPage())
                .always("name", fl::i18n::toUtf8(seeAlso.getName()))
                .take();
        };
        const auto info = [this](const ObjectInfo& i) { return objectInfo(i); };
        return Members(m_form)
            .list("syntaxGroups", item.getSyntaxGroups(),
                  [this](const SyntaxGroup& group) {
                      return Members(m_form)
                          .text("title", group.getTitle())
                          .texts("syntaxes", group.getSyntaxes())
                          .take();
                  })
            .list("inputs", item.getInputs(), info)
            .list("inputGroups", item.getInputGroups(),
                  [&](const InputGroup& group) {
                      return Members(m_form)
                          .text("title", group.getTitle())
                          .list("inputs", group.getInputs(), info)
                          .take();
                  })
            .list("outputs", item.getOutputs(), info)
            .list("classPropertyGroups", item.getClassPropertyGroups(),
                  [&](const ClassPropertyGroup& group) {
                      return Members(m_form)
                          .text("title", group.getTitle())
                          .list("properties", group.getClassProperties(), info)
                          .take();
                  })
            .list("seeAlso", item.getSeeAlsoInfo(), pointer)
            .list("examples", item.getExamples(),
                  [this](const Example& example) {
                      return Members(m_form)
                          .text("title", example.getTitle())
                          .text("code", example.getCode())
                          .take();
                  })
            .list("parameters", item.getParameters(),
                  [this](const Parameter& parameter) {
                      return Members(m_form)
                          .always("name", fl::i18n::toUtf8(parameter.getName()))
                          .text("purpose", parameter.getPurpose())
                          .text("defaultValue", parameter.getDefaultValue())
                          .take();
                  })
            .list("replacements", item.getReplacements(), pointer)
            .take();
    }

    [[nodiscard]] json::object entity(const RefEntity& entity) const {
        return Members(m_form)
            .always("name", fl::i18n::toUtf8(entity.getName()))
            .enumeration<RefEntityType>("type", entity.getRefEntityType())
            .enumeration<FunctionType>("functionType", entity.getFunctionType())
            .take();
    }

    [[nodiscard]] json::object objectInfo(const ObjectInfo& info) const {
        return Members(m_form)
            .always("name", fl::i18n::toUtf8(info.getName()))
            .text("purpose", info.getPurpose())
            .text("href", info.getHref())
            .texts("values", info.getValues())
            .take();
    }

    JsonForm m_form;
};

}  // namespace

json::object toJson(const RefItemLookup& record) {
    return Members(JsonForm::Set)
        .enumeration<RefEntityType>("type", record.getType())
        .enumeration<FunctionType>("functionType", record.getFunctionType())
        .text("href", record.getHref())
        .text("purpose", record.getPurpose())
        .take();
}

json::object toJson(const RefItem& item, JsonForm form) {
    return ItemWriter(form).item(item);
}

}  // namespace reference::docset
