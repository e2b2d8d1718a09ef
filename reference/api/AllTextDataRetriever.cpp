#include "reference/api/AllTextDataRetriever.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

#include "reference/utils/toLowerCopy.hpp"

namespace reference::api {

using cache_manager::ReferenceCacheManager;
using property::ClassPropertyGroup;
using property::Example;
using property::ObjectInfo;
using property::RefEntity;
using property::RefItem;
using property::SeeAlso;
using property::SyntaxGroup;
using std::ranges::any_of;

AllTextDataRetriever::AllTextDataRetriever() = default;
AllTextDataRetriever::AllTextDataRetriever(ReferenceRequest request)
    : ReferenceDataRetriever(std::move(request)) {}
AllTextDataRetriever::AllTextDataRetriever(AllTextDataRetriever&& other) noexcept = default;
AllTextDataRetriever& AllTextDataRetriever::operator=(AllTextDataRetriever&& other) noexcept =
    default;
AllTextDataRetriever::~AllTextDataRetriever() = default;

ReferenceCacheManager::SearchMethod AllTextDataRetriever::getSearchMethod() const {
    return ReferenceCacheManager::AllTextSearch;
}

std::vector<ReferenceData> AllTextDataRetriever::filterReferenceData(
    const Resource& resource, const std::set<std::u16string>& hrefs) const {
    std::vector<ReferenceData> result;
    const auto& pages = resource.getItems();
    for (const auto& href : hrefs) {
        const auto page = pages.find(href);
        if (page == pages.end())
            continue;
        for (const RefItem& item : page->second)
            if (hasContentMatch(item))
                result.emplace_back(resource.getHeaderInfo().copy(), item.copy());
    }
    return result;
}

// The most likely places come first, so that most matches are found early.
bool AllTextDataRetriever::hasContentMatch(const RefItem& item) const {
    const auto infoMatches = [this](const ObjectInfo& info) { return hasInfoMatch(info); };
    return isTextMatch(item.getPurpose()) || isTextMatch(item.getDescription()) ||
           isTextMatch(item.getPackageName()) ||
           any_of(item.getRefEntities(),
                  [this](const RefEntity& entity) { return isTextMatch(entity.getName()); }) ||
           hasSyntaxGroupMatch(item.getSyntaxGroups()) || any_of(item.getInputs(), infoMatches) ||
           any_of(item.getOutputs(), infoMatches) ||
           hasClassPropertyMatch(item.getClassPropertyGroups()) ||
           hasExampleMatch(item.getExamples()) ||
           any_of(item.getSeeAlsoInfo(),
                  [this](const SeeAlso& seeAlso) { return isTextMatch(seeAlso.getName()); });
}

bool AllTextDataRetriever::isTextMatch(const std::u16string& text) const {
    const std::u16string& searched = getSearchedText();
    if (searched.empty())
        return true;
    const auto contains = [&searched](std::u16string_view candidate) {
        return candidate.find(searched) != std::u16string_view::npos;
    };
    return isCaseSensitive() ? contains(text) : contains(utils::LowerCased(text).view());
}

bool AllTextDataRetriever::hasInfoMatch(const ObjectInfo& info) const {
    return isTextMatch(info.getName()) || isTextMatch(info.getPurpose()) ||
           any_of(info.getValues(),
                  [this](const std::u16string& value) { return isTextMatch(value); });
}

bool AllTextDataRetriever::hasClassPropertyMatch(
    const std::vector<ClassPropertyGroup>& groups) const {
    return any_of(groups, [this](const ClassPropertyGroup& group) {
        return isTextMatch(group.getTitle()) ||
               any_of(group.getClassProperties(),
                      [this](const ObjectInfo& property) { return hasInfoMatch(property); });
    });
}

bool AllTextDataRetriever::hasExampleMatch(const std::vector<Example>& examples) const {
    return any_of(examples,
                  [this](const Example& example) { return isTextMatch(example.getTitle()); });
}

bool AllTextDataRetriever::hasSyntaxGroupMatch(const std::vector<SyntaxGroup>& groups) const {
    return any_of(groups, [this](const SyntaxGroup& group) {
        return isTextMatch(group.getTitle()) ||
               any_of(group.getSyntaxes(),
                      [this](const std::u16string& syntax) { return isTextMatch(syntax); });
    });
}

const char* AllTextDataRetriever::getZORBClassName() noexcept {
    return "AllTextDataRetriever";
}

}  // namespace reference::api
