#include "support/LookupModel.hpp"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include <unicode/locid.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

#include "support/Items.hpp"

namespace reference::tests {
namespace {

using namespace property;
using std::ranges::any_of;
using Answer = std::vector<std::pair<std::u16string, RefItem>>;
using Text = std::u16string;

bool isWellFormed(const Text& text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (U16_IS_TRAIL(text[at]))
            return false;
        if (U16_IS_LEAD(text[at])) {
            ++at;
            if (at == text.size() || !U16_IS_TRAIL(text[at]))
                return false;
        }
    }
    return true;
}

bool isPart(const Text& part, const Text& text) {
    return text.find(part) != Text::npos;
}

bool namesUnqualified(const Text& pattern, const Text& candidate) {
    return pattern == candidate || (!pattern.empty() && (candidate.ends_with(u"." + pattern) ||
                                                         candidate.ends_with(u"/" + pattern)));
}

class Model {
  public:
    Model(Search search, const api::ReferenceRequest& request)
        : m_search(search), m_request(request), m_text(fold(request.getEntityText())) {}

    [[nodiscard]] Answer answer(const std::vector<docset::ProductDocumentation>& products) const {
        std::map<Text, const docset::ProductDocumentation*> byName;
        for (const auto& product : products)
            byName[product.header.shortName] = &product;
        Answer answer;
        for (const auto& [name, product] : byName)
            if (isWanted(name))
                for (const auto& href : hrefs(*product))
                    if (const auto page = product->pages.find(href); page != product->pages.end())
                        for (const auto& item : page->second)
                            addItem(name, item, answer);
        return answer;
    }

  private:
    [[nodiscard]] bool sensitive() const { return m_request.getEntityCaseSensitivity() == 0; }
    [[nodiscard]] bool exact() const { return m_request.getEntityPrecision() == 0; }
    [[nodiscard]] bool everything() const { return m_request.isAllTextMatch(); }
    [[nodiscard]] Text fold(const Text& text) const {
        return sensitive() ? text : modelLowerCase(text);
    }

    [[nodiscard]] bool isWanted(const Text& product) const {
        const auto& wanted = m_request.getProducts();
        if (wanted.empty() || (wanted.size() == 1 && wanted[0].empty()))
            return true;
        return any_of(wanted, [&](const Text& name) { return name == product; });
    }

    [[nodiscard]] bool hasType(std::uint32_t type) const {
        return any_of(m_request.getTypes(), [&](auto wanted) { return wanted == type; });
    }
    [[nodiscard]] bool admits(std::uint32_t type) const {
        return m_request.getTypes().empty() || hasType(type);
    }
    [[nodiscard]] bool accepts(const RefItemLookup& record) const {
        return admits(record.getType()) ||
               (hasType(3) && record.getType() == 0 && record.getFunctionType() == 1);
    }

    [[nodiscard]] bool isNamed(const Text& candidate, const RefItemLookup& record) const {
        if (everything())
            return true;
        static const std::set<std::uint32_t> unqualified = {0, 1, 2,  3,  4,  5, 6,
                                                            7, 8, 10, 11, 22, 23};
        if (exact() || !unqualified.contains(record.getType()))
            return candidate == m_text;
        return namesUnqualified(m_text, candidate);
    }

    [[nodiscard]] bool isNameOrPurpose(const Text& name, const Text& purpose) const {
        return !m_text.empty() && (isPart(m_text, fold(name)) || isPart(m_text, fold(purpose)));
    }

    static bool isClassLike(std::uint32_t type) { return type == 1 || type == 6 || type == 7; }

    [[nodiscard]] std::set<Text> hrefs(const docset::ProductDocumentation& product) const {
        std::set<Text> found;
        for (const auto& [name, records] : product.entities) {
            // The answer of the first record of the key whose name was asked for, if one was.
            std::optional<bool> known;
            for (const auto& record : records)
                if (accepts(record) && isHit(fold(name), record, known))
                    found.insert(record.getHref());
        }
        return found;
    }

    [[nodiscard]] bool isHit(const Text& key, const RefItemLookup& record,
                             std::optional<bool>& known) const {
        switch (m_search) {
            case Search::AllText:
                return true;
            case Search::Page:
                return isNamed(fold(record.getHref()), record);
            case Search::Purpose:
                return everything() || isNameOrPurpose(key, record.getPurpose());
            case Search::Class: {
                if (isClassLike(record.getType()) && isNamed(key, record))
                    return true;
                if (known || everything())
                    break;
                const auto dot = key.rfind(u'.');
                if (dot == Text::npos || m_text.size() >= key.size())
                    return false;
                known = isNamed(key.substr(0, dot), record);
                return *known;
            }
            case Search::Entity:
                break;
        }
        if (!known)
            known = isNamed(key, record);
        return *known;
    }

    void addItem(const Text& product, const RefItem& item, Answer& answer) const {
        if (m_search == Search::AllText) {
            if (saysText(item))
                answer.emplace_back(product, item);
            return;
        }
        if (admits(4))
            for (const auto& entity : item.getRefEntities()) {
                const auto properties = propertiesOf(entity, item);
                if (properties.empty())
                    continue;
                if (any_of(item.getRefEntities(),
                           [&](const RefEntity& each) { return bringsClass(each, item); }))
                    answer.emplace_back(product, item);
                for (const auto& property : properties)
                    answer.emplace_back(product, property);
                return;
            }
        answer.emplace_back(product, item);
    }

    [[nodiscard]] bool bringsClass(const RefEntity& entity, const RefItem& item) const {
        switch (m_search) {
            case Search::Class:
                return isClassLike(entity.getRefEntityType());
            case Search::Purpose:
                return admits(entity.getRefEntityType()) &&
                       (everything() || isNameOrPurpose(entity.getName(), item.getPurpose()));
            case Search::Entity:
                return admits(entity.getRefEntityType()) && everything();
            case Search::AllText:
            case Search::Page:
                break;
        }
        return false;
    }

    [[nodiscard]] bool isWantedProperty(const Text& name, const ClassProperty& property) const {
        if (everything())
            return true;
        switch (m_search) {
            case Search::Class:
                return true;
            case Search::Purpose:
                return isNameOrPurpose(name, property.getPurpose());
            case Search::Entity:
                return exact() ? fold(name) == m_text : namesUnqualified(m_text, fold(name));
            case Search::AllText:
            case Search::Page:
                break;
        }
        return false;
    }

    [[nodiscard]] std::vector<RefItem> propertiesOf(const RefEntity& entity,
                                                    const RefItem& item) const {
        std::vector<RefItem> properties;
        for (const auto& group : item.getClassPropertyGroups())
            for (const auto& property : group.getClassProperties()) {
                const Text name = entity.getName() + u"." + property.getName();
                if (!isWantedProperty(name, property))
                    continue;
                const Text full = isPart(item.getPackageName(), name)
                                      ? name
                                      : item.getPackageName() + u"." + name;
                const Text page = item.getHref().substr(item.getHref().find_last_of(u'/') + 1);
                properties.push_back(makeItem(
                    {.href = property.getHref(),
                     .entities = {RefEntity(RefEntityType::Property, full, FunctionType::Property)},
                     .packageName = item.getPackageName(),
                     .purpose = property.getPurpose(),
                     .introduced = item.getIntroduced(),
                     .deprecationStatus = item.getDeprecationStatus(),
                     .classPropertyGroups = {ClassPropertyGroup(group.getTitle(), {property})},
                     .seeAlso = {SeeAlso(page, entity.getName())}}));
            }
        return properties;
    }

    [[nodiscard]] bool saysText(const RefItem& item) const {
        std::vector<Text> texts = {item.getPurpose(), item.getDescription(), item.getPackageName()};
        const auto addInfo = [&texts](const ObjectInfo& info) {
            texts.push_back(info.getName());
            texts.push_back(info.getPurpose());
            texts.insert(texts.end(), info.getValues().begin(), info.getValues().end());
        };
        for (const auto& entity : item.getRefEntities())
            texts.push_back(entity.getName());
        for (const auto& group : item.getSyntaxGroups()) {
            texts.push_back(group.getTitle());
            texts.insert(texts.end(), group.getSyntaxes().begin(), group.getSyntaxes().end());
        }
        std::ranges::for_each(item.getInputs(), addInfo);
        std::ranges::for_each(item.getOutputs(), addInfo);
        for (const auto& group : item.getClassPropertyGroups()) {
            texts.push_back(group.getTitle());
            std::ranges::for_each(group.getClassProperties(), addInfo);
        }
        for (const auto& example : item.getExamples())
            texts.push_back(example.getTitle());
        for (const auto& seeAlso : item.getSeeAlsoInfo())
            texts.push_back(seeAlso.getName());
        return any_of(texts, [&](const Text& text) { return isPart(m_text, fold(text)); });
    }

    Search m_search;
    const api::ReferenceRequest& m_request;
    Text m_text;
};

}  // namespace

std::u16string modelLowerCase(const std::u16string& text) {
    if (!isWellFormed(text))
        return text;
    icu::UnicodeString unicode(text.data(), static_cast<std::int32_t>(text.size()));
    unicode.toLower(icu::Locale::getRoot());
    return {unicode.getBuffer(), static_cast<std::size_t>(unicode.length())};
}

Answer modelAnswer(Search search, const api::ReferenceRequest& request,
                   const std::vector<docset::ProductDocumentation>& products) {
    return Model(search, request).answer(products);
}

}  // namespace reference::tests
