#include "sphinx/Filing.hpp"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "sphinx/Hrefs.hpp"
#include "sphinx/ItemText.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

using property::RefEntityType;

std::vector<std::size_t> objectsOf(const DescriptionFacts& facts) {
    std::vector<std::size_t> objects;
    for (const SignatureFacts& signature : facts.signatures)
        objects.insert(objects.end(), signature.objects.begin(), signature.objects.end());
    return objects;
}

class Filing {
  public:
    Filing(const Gathered& gathered, const Scopes& scopes)
        : m_gathered(gathered), m_scopes(scopes) {
        m_filed.objects.resize(gathered.objects.size());
    }

    Filed run() {
        connectDescriptions();
        attachProperties();
        for (const auto& [page, facts] : m_gathered.pages)
            fileDescriptions(page, facts);
        fileUndescribed();
        collectProperties();
        return std::move(m_filed);
    }

  private:
    [[nodiscard]] const InventoryObject& object(std::size_t index) const {
        return m_gathered.objects[index];
    }

    void connectDescriptions() {
        for (const auto& [page, facts] : m_gathered.pages)
            for (const DescriptionFacts& description : facts.descriptions)
                for (const SignatureFacts& signature : description.signatures)
                    for (const std::size_t index : signature.objects) {
                        m_filed.objects[index].facts = &description;
                        m_filed.objects[index].signature = &signature;
                    }
        for (std::size_t index = 0; index < m_filed.objects.size(); ++index) {
            FiledObject& entry = m_filed.objects[index];
            entry.kind = kindOf(object(index), m_scopes, entry.facts, entry.signature);
            if (entry.facts == nullptr) {
                m_filed.undescribed.push_back(index);
                m_undescribedOf[object(index).page].push_back(index);
            }
        }
    }

    // A property belongs to the class whose name, with a period and the property's own name after
    // it, makes up the name that the property is filed under.
    void attachProperties() {
        std::unordered_map<std::string, std::size_t> classes;
        for (std::size_t index = 0; index < m_filed.objects.size(); ++index)
            if (holdsProperties(m_filed.objects[index].kind.type))
                classes.emplace(object(index).domain + ":" + object(index).name, index);
        for (std::size_t index = 0; index < m_filed.objects.size(); ++index) {
            if (m_filed.objects[index].kind.type != RefEntityType::Property)
                continue;
            const std::string_view enclosing = Scopes::enclosing(object(index));
            const auto found = classes.find(object(index).domain + ":" + std::string(enclosing));
            if (found != classes.end())
                m_filed.objects[index].owner = found->second;
        }
    }

    // Where a description would be found on its page: at the first of its entities or, where all
    // its objects are properties of classes, at the first of these.
    [[nodiscard]] std::size_t leadingObject(const DescriptionFacts& facts) const {
        const std::vector<std::size_t> objects = objectsOf(facts);
        const auto entity = std::ranges::find_if(
            objects, [&](std::size_t index) { return !m_filed.objects[index].owner.has_value(); });
        return entity != objects.end() ? *entity : objects.front();
    }

    void fileDescriptions(const std::string& page, const PageFacts& facts) {
        // Overloads share the place of the first of them.
        using Identity = std::tuple<std::string, std::string, RefEntityType::Value, std::uint32_t>;
        std::map<Identity, std::string> places;
        std::vector<std::string> hrefs;
        std::set<std::string> topLevel;
        for (const DescriptionFacts& description : facts.descriptions) {
            const std::size_t lead = leadingObject(description);
            const Kind kind = m_filed.objects[lead].kind;
            const auto [place, isNew] = places.try_emplace(
                Identity(object(lead).domain, object(lead).name, kind.type, kind.functionType),
                hrefOf(page, object(lead).anchor));
            hrefs.push_back(place->second);
            if (!description.isNested)
                topLevel.insert(place->second);
        }
        if (const auto undescribed = m_undescribedOf.find(page);
            undescribed != m_undescribedOf.end())
            for (const std::size_t index : undescribed->second)
                topLevel.insert(hrefOf(page, object(index).anchor));

        for (std::size_t index = 0; index < facts.descriptions.size(); ++index) {
            const DescriptionFacts& description = facts.descriptions[index];
            const bool hasPage = topLevel.size() == 1 && !description.isNested;
            fileDescription(description, hasPage ? hrefOf(page, {}) : hrefs[index], hasPage);
        }
    }

    void fileDescription(const DescriptionFacts& description, const std::string& href,
                         bool hasPage) {
        DraftItem draft{.href = href,
                        .facts = &description,
                        .objects = {},
                        .properties = {},
                        .classProperties = {}};
        for (const std::size_t index : objectsOf(description)) {
            FiledObject& entry = m_filed.objects[index];
            if (entry.owner.has_value()) {
                entry.ownHref = hasPage ? href : hrefOf(object(index).page, object(index).anchor);
                continue;
            }
            entry.ownHref = href;
            entry.draft = m_filed.drafts.size();
            draft.objects.push_back(index);
        }
        if (!draft.objects.empty())
            m_filed.drafts.push_back(std::move(draft));
    }

    void fileUndescribed() {
        for (const std::size_t index : m_filed.undescribed) {
            FiledObject& entry = m_filed.objects[index];
            entry.ownHref = hrefOf(object(index).page, object(index).anchor);
            if (entry.owner.has_value())
                continue;
            entry.draft = m_filed.drafts.size();
            m_filed.drafts.push_back({.href = entry.ownHref,
                                      .facts = nullptr,
                                      .objects = {index},
                                      .properties = {},
                                      .classProperties = {}});
        }
    }

    [[nodiscard]] DocumentedProperty documentedProperty(std::size_t index) const {
        const FiledObject& entry = m_filed.objects[index];
        DocumentedProperty property;
        property.name = std::string(lastComponent(object(index).name));
        property.title = object(index).role == "property" || object(index).role == "method"
                             ? "Properties"
                             : "Attributes";
        property.href = entry.ownHref;
        if (entry.facts != nullptr) {
            property.classifier = entry.signature->type;
            property.value = entry.signature->value;
            for (const Field& field : entry.facts->fields)
                if (field.role == FieldRole::Type)
                    property.classifier = field.prose;
            property.purpose = entry.facts->purpose;
            property.explanation = explanationOf(*entry.facts);
        }
        return property;
    }

    // The properties on the class's own page come first, in page order; the others in the order of
    // the inventory.
    void collectProperties() {
        for (std::size_t index = 0; index < m_filed.objects.size(); ++index) {
            FiledObject& entry = m_filed.objects[index];
            if (!entry.owner.has_value())
                continue;
            entry.draft = m_filed.objects[*entry.owner].draft;
            m_filed.drafts[entry.draft].properties.push_back(index);
        }
        for (DraftItem& draft : m_filed.drafts) {
            if (draft.facts != nullptr)
                draft.classProperties.addFields(draft.facts->fields);
            const std::string& page = object(draft.objects.front()).page;
            std::ranges::stable_sort(draft.properties, {}, [&](std::size_t index) {
                const DescriptionFacts* const facts = m_filed.objects[index].facts;
                const bool isElsewhere = facts == nullptr || object(index).page != page;
                // A page keeps its descriptions in one vector, in the order of the page.
                return std::pair(
                    isElsewhere,
                    isElsewhere ? 0 : facts - m_gathered.pages.at(page).descriptions.data());
            });
            for (const std::size_t index : draft.properties)
                draft.classProperties.add(documentedProperty(index));
        }
    }

    const Gathered& m_gathered;
    const Scopes& m_scopes;
    std::map<std::string, std::vector<std::size_t>> m_undescribedOf;  // by page
    Filed m_filed;
};

}  // namespace

Filed fileObjects(const Gathered& gathered, const Scopes& scopes) {
    return Filing(gathered, scopes).run();
}

}  // namespace reference::importers::sphinx
