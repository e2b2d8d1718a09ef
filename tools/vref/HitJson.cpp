#include "vref/HitJson.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include <boost/json/array.hpp>

#include "docset/ItemWriter.hpp"
#include "fl/i18n/utf.hpp"
#include "property/DeprecationStatus.hpp"
#include "property/RefEntityType.hpp"
#include "vref/ResultJson.hpp"
#include "vref/RpcError.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;
using property::RefEntityType;

// What is said of a hit besides its item, in the order of the members.
constexpr std::string_view placeMembers[] = {"name",       "type",       "product", "purpose",
                                             "helpFolder", "href",       "address", "rung",
                                             "change",     "deprecated", "note"};
constexpr std::string_view shortSet[] = {"name",    "type", "product", "purpose",   "href",
                                         "address", "rung", "change",  "deprecated"};

// Of the item's members, this is said of its place, too.
constexpr std::string_view purpose = "purpose";

std::vector<std::string> knownFields() {
    std::vector<std::string> names(std::begin(placeMembers), std::end(placeMembers));
    for (const std::string_view member : itemMembers())
        if (member != purpose)
            names.emplace_back(member);
    return names;
}

// The type of the entity that bears the name, or of the first.
std::string entityTypeOf(const FoundHit& hit) {
    const auto& entities = hit.data.getRefItem().getRefEntities();
    if (entities.empty())
        return {};
    const auto named = std::ranges::find(entities, hit.name, &property::RefEntity::getName);
    return RefEntityType::enumToString(
        (named != entities.end() ? *named : entities.front()).getRefEntityType());
}

class HitWriter {
  public:
    explicit HitWriter(const HitFields& fields) : m_fields(fields) {}

    template <typename Value>
    void add(std::string_view name, Value&& value) {
        if (m_fields.has(name))
            m_hit.emplace(json::string_view(name.data(), name.size()), std::forward<Value>(value));
    }
    void addKnown(std::string_view name, const std::optional<std::string>& value) {
        if (value)
            add(name, *value);
    }

    // The item's other members are made only where one is wanted: its body may not have been read
    // yet.
    void addItem(const property::RefItem& item) {
        const auto isWanted = [this](std::string_view name) {
            return name != purpose && m_fields.has(name);
        };
        if (std::ranges::none_of(itemMembers(), isWanted))
            return;
        json::object members = docset::toJson(item, docset::JsonForm::Complete);
        for (const std::string_view name : itemMembers())
            if (auto* const member = members.if_contains({name.data(), name.size()});
                member != nullptr && name != purpose)
                add(name, std::move(*member));
    }

    [[nodiscard]] json::object take() { return std::move(m_hit); }

  private:
    const HitFields& m_fields;
    json::object m_hit;
};

}  // namespace

HitFields HitFields::brief() {
    return HitFields({std::begin(shortSet), std::end(shortSet)});
}

HitFields HitFields::all() {
    return HitFields(knownFields());
}

HitFields HitFields::parse(RpcParameters& parameters, HitFields otherwise) {
    constexpr const char* name = "fields";
    if (parameters.any(name) == nullptr)
        return otherwise;
    auto wanted = parameters.texts(name);
    if (wanted.size() == 1 && wanted.front().parameter == name && wanted.front().text == "all")
        return all();
    const auto known = knownFields();
    std::vector<std::string> names;
    names.reserve(wanted.size());
    for (auto& [parameter, text] : wanted) {
        if (std::ranges::find(known, text) == known.end())
            throw RpcError::unknownName(parameter, "field", text, known);
        names.push_back(std::move(text));
    }
    return HitFields(std::move(names));
}

bool HitFields::has(std::string_view field) const {
    return std::ranges::find(m_names, field) != m_names.end();
}

FoundHit foundHit(const ask::Hit& hit) {
    return {.name = hit.name,
            .data = hit.data,
            .rung = std::string(ask::toString(hit.rung)),
            .change = fl::i18n::toUtf8(hit.change)};
}

FoundHit foundHit(const api::ReferenceData& data, const std::u16string& asked) {
    const auto& entities = data.getRefItem().getRefEntities();
    const bool isNamed =
        std::ranges::find(entities, asked, &property::RefEntity::getName) != entities.end();
    return {.name = isNamed || entities.empty() ? asked : entities.front().getName(), .data = data};
}

json::object toJson(const FoundHit& hit, const HitFields& fields,
                    const Documentation& documentation) {
    const auto& header = hit.data.getHeaderInfo();
    const auto& item = hit.data.getRefItem();
    HitWriter writer(fields);
    writer.add("name", fl::i18n::toUtf8(hit.name));
    writer.add("type", entityTypeOf(hit));
    writer.add("product", fl::i18n::toUtf8(header.getShortName()));
    writer.add(purpose, fl::i18n::toUtf8(item.getPurpose()));
    writer.add("helpFolder", fl::i18n::toUtf8(header.getHelpFolder()));
    writer.add("href", fl::i18n::toUtf8(item.getHref()));
    if (fields.has("address"))
        if (const auto file = documentation.placeOf(hit.data))
            writer.add("address", file->address());
    writer.addKnown("rung", hit.rung);
    writer.addKnown("change", hit.change);
    writer.add("deprecated", item.getDeprecationStatus() != property::DeprecationStatus::Current);
    writer.addKnown("note", hit.note);
    writer.addItem(item);
    return writer.take();
}

}  // namespace reference::tools
