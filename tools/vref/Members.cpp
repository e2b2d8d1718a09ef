#include "vref/Members.hpp"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "property/RefEntityType.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::tools {
namespace {

using property::RefEntity;
using property::RefEntityType;

struct Title {
    RefEntityType::Value type;
    const char* text;
};

constexpr Title titles[] = {
    {RefEntityType::Function, "Functions"},
    {RefEntityType::Class, "Classes"},
    {RefEntityType::Package, "Packages"},
    {RefEntityType::Method, "Methods"},
    {RefEntityType::Property, "Properties"},
    {RefEntityType::Event, "Events"},
    {RefEntityType::Enumeration, "Enumerations"},
    {RefEntityType::Interface, "Interfaces"},
    {RefEntityType::Constructor, "Constructors"},
    {RefEntityType::Destructor, "Destructors"},
    {RefEntityType::Constant, "Constants"},
    {RefEntityType::Operator, "Operators"},
    {RefEntityType::Variable, "Variables"},
    {RefEntityType::Keyword, "Keywords"},
    {RefEntityType::Command, "Commands"},
    {RefEntityType::App, "Apps"},
    {RefEntityType::Block, "Blocks"},
    {RefEntityType::Option, "Options"},
    {RefEntityType::Setting, "Settings"},
    {RefEntityType::TypeAlias, "Type aliases"},
    {RefEntityType::Macro, "Macros"},
    {RefEntityType::Tool, "Tools"},
    {RefEntityType::Model, "Models"},
};

// Of the types that have no title, all go into one group behind the others.
std::size_t groupOf(RefEntityType::Value type) {
    const auto* const found = std::ranges::find(titles, type, &Title::type);
    return static_cast<std::size_t>(found - std::begin(titles));
}

// All types for a package. For a class all but properties: with these the library would make an
// entry for each property.
std::vector<RefEntityType::Value> memberTypes(bool isClass) {
    std::vector<RefEntityType::Value> types = RefEntityType::namedValues();
    if (isClass)
        std::erase(types, RefEntityType::Property);
    return types;
}

// The rest of a name that stands directly within the owner's; empty if it does not.
std::u16string_view nameWithin(std::u16string_view name, std::u16string_view owner) {
    if (!name.starts_with(owner) || name.substr(owner.size(), 1) != u".")
        return {};
    name.remove_prefix(owner.size() + 1);
    return name.find(u'.') == std::u16string_view::npos ? name : std::u16string_view();
}

using Groups = std::map<std::size_t, MemberGroup>;

void addMembers(const RefEntity& owner, const api::ReferenceData& found, PageAddresses* addresses,
                Groups& groups) {
    const auto& item = found.getRefItem();
    for (const auto& entity : item.getRefEntities()) {
        const auto name = nameWithin(entity.getName(), owner.getName());
        if (name.empty())
            continue;
        const std::size_t at = groupOf(entity.getRefEntityType());
        MemberGroup& group = groups[at];
        group.title = at < std::size(titles) ? titles[at].text : "Members";
        group.members.push_back(
            {.name = std::u16string(name),
             .purpose = item.getPurpose(),
             .status = item.getDeprecationStatus(),
             .address = addresses != nullptr ? addresses->of(found) : std::string()});
    }
}

}  // namespace

std::vector<MemberGroup> membersOf(const api::ReferenceData& result, PageAddresses* addresses) {
    Groups groups;
    for (const auto& owner : result.getRefItem().getRefEntities()) {
        const auto type = owner.getRefEntityType();
        const bool isClass = cache_manager::ReferenceCacheManager::IsClassLikeType(type);
        if (!isClass && type != RefEntityType::Package)
            continue;
        const api::ReferenceRequest request(owner.getName(), memberTypes(isClass),
                                            {result.getHeaderInfo().getShortName()});
        for (const auto& found : api::ClassEntityDataRetriever(request).getReferenceData())
            addMembers(owner, found, addresses, groups);
    }
    std::vector<MemberGroup> sorted;
    sorted.reserve(groups.size());
    for (auto& [place, group] : groups) {
        std::ranges::stable_sort(group.members, {}, &Member::name);
        sorted.push_back(std::move(group));
    }
    return sorted;
}

}  // namespace reference::tools
