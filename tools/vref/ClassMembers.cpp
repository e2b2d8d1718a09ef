#include "vref/ClassMembers.hpp"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "property/RefEntityType.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::tools {
namespace {

using property::RefEntityType;

struct Title {
    RefEntityType::Value type;
    const char* text;
};

// In the order in which a reader wants them; every other kind comes last.
constexpr Title titles[] = {
    {RefEntityType::Constructor, "Constructors"}, {RefEntityType::Method, "Methods"},
    {RefEntityType::Operator, "Operators"},       {RefEntityType::Event, "Events"},
    {RefEntityType::Constant, "Constants"},       {RefEntityType::Class, "Classes"},
};

std::size_t groupOf(RefEntityType::Value type) {
    const auto* const found = std::ranges::find(titles, type, &Title::type);
    return static_cast<std::size_t>(found - std::begin(titles));
}

// All kinds but properties: with these the library would make an entry for each property.
std::vector<RefEntityType::Value> memberTypes() {
    std::vector<RefEntityType::Value> types;
    for (const auto type : RefEntityType::namedValues())
        if (type != RefEntityType::Property)
            types.push_back(type);
    return types;
}

// The rest of a name that stands directly within the class; empty if it does not.
std::u16string_view nameWithin(std::u16string_view name, std::u16string_view className) {
    if (!name.starts_with(className) || name.substr(className.size(), 1) != u".")
        return {};
    name.remove_prefix(className.size() + 1);
    return name.find(u'.') == std::u16string_view::npos ? name : std::u16string_view();
}

}  // namespace

std::vector<ClassMemberGroup> membersOf(const api::ReferenceData& result) {
    std::map<std::size_t, ClassMemberGroup> groups;
    for (const auto& entity : result.getRefItem().getRefEntities()) {
        if (!cache_manager::ReferenceCacheManager::IsClassLikeType(entity.getRefEntityType()))
            continue;
        const api::ReferenceRequest request(entity.getName(), memberTypes(),
                                            {result.getHeaderInfo().getShortName()});
        for (const auto& found : api::ClassEntityDataRetriever(request).getReferenceData())
            for (const auto& member : found.getRefItem().getRefEntities()) {
                const auto name = nameWithin(member.getName(), entity.getName());
                if (name.empty())
                    continue;
                const std::size_t group = groupOf(member.getRefEntityType());
                groups[group].title = group < std::size(titles) ? titles[group].text : "Members";
                groups[group].members.push_back(
                    {std::u16string(name), found.getRefItem().getPurpose()});
            }
    }
    std::vector<ClassMemberGroup> sorted;
    for (auto& [place, group] : groups) {
        std::ranges::stable_sort(group.members, {}, &ClassMember::name);
        sorted.push_back(std::move(group));
    }
    return sorted;
}

}  // namespace reference::tools
