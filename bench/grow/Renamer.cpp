#include "grow/Renamer.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "grow/asciiWords.hpp"

namespace reference::bench {
namespace {

using namespace property;

std::string lowerCase(std::u16string_view word) {
    std::string lower;
    for (const char16_t letter : word)
        lower += static_cast<char>(letter | 0x20);
    return lower;
}

// The spelling, with capitals where the word has them.
void appendLike(std::u16string_view word, const std::string& spelling, std::u16string& to) {
    for (std::size_t n = 0; n < spelling.size(); ++n) {
        const char16_t like = word[std::min(n, word.size() - 1)];
        const auto letter = static_cast<char16_t>(spelling[n]);
        to += like < u'a' ? static_cast<char16_t>(letter - u'a' + u'A') : letter;
    }
}

// Each element as `change` makes it anew.
template <typename Row, typename Change>
std::vector<Row> changed(const std::vector<Row>& rows, Change change) {
    std::vector<Row> result;
    result.reserve(rows.size());
    for (const Row& row : rows)
        result.push_back(change(row));
    return result;
}

}  // namespace

const std::string& Renamer::spellingOf(const std::string& word) {
    const auto [known, isNew] = m_spellings.try_emplace(word);
    if (isNew)
        known->second = m_vocabulary->spelling(word, m_product);
    return known->second;
}

std::u16string Renamer::text(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    forEachRun(text, [&](std::u16string_view run, bool isWord) {
        if (isWord)
            appendLike(run, spellingOf(lowerCase(run)), result);
        else
            result += run;
    });
    return result;
}

std::u16string Renamer::entityName(std::u16string_view name) {
    const auto first = std::ranges::find_if(name, &isAsciiLetter);
    if (first == name.end())
        return std::u16string(name);
    const auto end = std::find_if_not(first, name.end(), &isAsciiLetter);
    const std::u16string_view word(first, end);
    std::u16string result(name.begin(), first);
    appendLike(word, Vocabulary::ownSpelling(lowerCase(word), m_product), result);
    return result + text({end, name.end()});
}

std::u16string Renamer::href(std::u16string_view href) {
    constexpr std::u16string_view ending = u".html";
    const auto page = href.find(ending);
    if (page == std::u16string_view::npos)
        return href.empty() ? std::u16string() : m_folder + text(href);
    return m_folder + text(href.substr(0, page)).append(ending) +
           text(href.substr(page + ending.size()));
}

RefItem Renamer::item(const RefItem& item) {
    const auto words = [this](const std::u16string& words) { return text(words); };
    const auto info = [&]<typename Info>(const Info& info) {
        return Info(text(info.getName()), text(info.getPurpose()), href(info.getHref()),
                    changed(info.getValues(), words));
    };
    const auto seeAlso = [&](const SeeAlso& other) {
        return SeeAlso(href(other.getPage()), text(other.getName()));
    };
    const AppThumbnail& thumbnail = item.getAppThumbnail();
    RefItem result(
        href(item.getHref()),
        changed(item.getRefEntities(),
                [&](const RefEntity& entity) {
                    return RefEntity(entity.getRefEntityType(), entityName(entity.getName()),
                                     entity.getFunctionType());
                }),
        entityName(item.getPackageName()), text(item.getPurpose()), item.getIntroduced(),
        text(item.getDescription()),
        AppThumbnail(thumbnail.getSource(), text(thumbnail.getAlternativeText())),
        item.getDeprecationStatus(),
        changed(item.getSyntaxGroups(),
                [&](const SyntaxGroup& group) {
                    return SyntaxGroup(text(group.getTitle()), changed(group.getSyntaxes(), words));
                }),
        changed(item.getInputs(), info),
        changed(item.getInputGroups(),
                [&](const InputGroup& group) {
                    return InputGroup(text(group.getTitle()), changed(group.getInputs(), info));
                }),
        changed(item.getOutputs(), info),
        changed(item.getClassPropertyGroups(),
                [&](const ClassPropertyGroup& group) {
                    return ClassPropertyGroup(text(group.getTitle()),
                                              changed(group.getClassProperties(), info));
                }),
        changed(item.getSeeAlsoInfo(), seeAlso),
        changed(item.getExamples(),
                [&](const Example& example) {
                    return Example(text(example.getTitle()), text(example.getCode()));
                }),
        changed(item.getParameters(), [&](const Parameter& parameter) {
            return Parameter(text(parameter.getName()), text(parameter.getPurpose()),
                             text(parameter.getDefaultValue()));
        }));
    result.setReplacements(changed(item.getReplacements(), seeAlso));
    return result;
}

}  // namespace reference::bench
