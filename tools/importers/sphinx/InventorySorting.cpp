#include "sphinx/InventorySorting.hpp"

#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "sphinx/Kinds.hpp"

namespace reference::importers::sphinx {
namespace {

bool isAlias(const InventoryObject& object) {
    return object.priority < 0 && object.domain != "std";
}

// "command:install" of the role "command" is what people call "install".
void takeOffRole(InventoryObject& object) {
    const std::string prefix = object.role + ":";
    if (object.domain == "cmake" && object.name.starts_with(prefix) &&
        object.name.size() > prefix.size())
        object.name.erase(0, prefix.size());
}

// An option without the program that it is listed with: "--help" of "cmake.--help". Empty: it is
// listed without one.
std::string_view optionAlone(const InventoryObject& object) {
    if (object.domain != "std" || object.role != "cmdoption")
        return {};
    const std::string_view name = object.name;
    for (const std::string_view mark : {".-", ".+", "./"})
        if (const std::size_t at = name.find(mark); at != std::string_view::npos && at > 0)
            return name.substr(at + 1);
    return {};
}

}  // namespace

SortedInventory sortInventory(std::vector<InventoryObject> all) {
    SortedInventory sorted;
    std::set<std::tuple<std::string, std::string, std::string, std::string, std::string>> seen;
    std::map<std::tuple<std::string, std::string, std::string>, std::size_t> places;
    std::vector<InventoryObject> aliases;
    for (InventoryObject& object : all) {
        takeOffRole(object);
        if (!isReferenceObject(object)) {
            if (isAlias(object))
                aliases.push_back(std::move(object));
            else
                ++sorted.leftOut[object.domain + ":" + object.role];
            continue;
        }
        if (!seen.emplace(object.domain, object.role, object.name, object.page, object.anchor)
                 .second)
            continue;
        const std::size_t index = sorted.objects.size();
        places.try_emplace({object.domain, object.page, object.anchor}, index);
        if (const std::string_view alone = optionAlone(object); !alone.empty())
            sorted.furtherNames.push_back({std::string(alone), index});
        sorted.objects.push_back(std::move(object));
    }
    for (InventoryObject& alias : aliases) {
        const auto place = places.find({alias.domain, alias.page, alias.anchor});
        if (place == places.end())
            ++sorted.leftOut[alias.domain + ":" + alias.role + " (alias)"];
        else
            sorted.furtherNames.push_back({std::move(alias.name), place->second});
    }
    return sorted;
}

}  // namespace reference::importers::sphinx
