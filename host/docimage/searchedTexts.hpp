// The texts of an item that a search of all texts looks at.
#pragma once

#include <string>

#include "property/RefItem.hpp"

namespace reference::docimage {

// Calls `visit(text)` for each of them until it returns true; returns whether it did. The most
// likely places come first, so that most matches are found early. Examples are searched by title
// alone.
template <typename Visit>
bool anySearchedText(const property::RefItem& item, Visit visit) {
    const auto anyOfInfo = [&visit](const property::ObjectInfo& info) {
        if (visit(info.getName()) || visit(info.getPurpose()))
            return true;
        for (const std::u16string& value : info.getValues())
            if (visit(value))
                return true;
        return false;
    };
    if (visit(item.getPurpose()) || visit(item.getDescription()) || visit(item.getPackageName()))
        return true;
    for (const auto& entity : item.getRefEntities())
        if (visit(entity.getName()))
            return true;
    for (const auto& group : item.getSyntaxGroups()) {
        if (visit(group.getTitle()))
            return true;
        for (const std::u16string& syntax : group.getSyntaxes())
            if (visit(syntax))
                return true;
    }
    for (const auto& input : item.getInputs())
        if (anyOfInfo(input))
            return true;
    for (const auto& output : item.getOutputs())
        if (anyOfInfo(output))
            return true;
    for (const auto& group : item.getClassPropertyGroups()) {
        if (visit(group.getTitle()))
            return true;
        for (const auto& property : group.getClassProperties())
            if (anyOfInfo(property))
                return true;
    }
    for (const auto& example : item.getExamples())
        if (visit(example.getTitle()))
            return true;
    for (const auto& seeAlso : item.getSeeAlsoInfo())
        if (visit(seeAlso.getName()))
            return true;
    return false;
}

}  // namespace reference::docimage
