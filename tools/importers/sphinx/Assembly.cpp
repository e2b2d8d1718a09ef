#include "sphinx/Assembly.hpp"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "docset/hrefs.hpp"
#include "fl/i18n/utf.hpp"
#include "sphinx/ClassProperties.hpp"
#include "sphinx/Hrefs.hpp"
#include "sphinx/ItemText.hpp"
#include "sphinx/Kinds.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

using fl::i18n::toUtf16;
using property::RefEntityType;

// Under how many further names of a class its members are filed, too: there are as many records as
// the product of both.
constexpr std::size_t mostNamesWithMembers = 20;

constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

// What is known of one object beyond the inventory.
struct Entry {
    Kind kind;
    // Null: nothing was found.
    const DescriptionFacts* facts = nullptr;
    const SignatureFacts* signature = nullptr;
    // The class that has the object as a property; `none`: it has an item of its own.
    std::size_t owner = none;
    // Where the object itself is documented.
    std::string ownHref;
    // The item that the object is filed with.
    std::size_t draft = none;
};

// An item in the making.
struct Draft {
    std::string href;
    // Null: nothing was found.
    const DescriptionFacts* facts = nullptr;
    // The objects that are its entities, and those that are properties of one of them.
    std::vector<std::size_t> objects;
    std::vector<std::size_t> properties;
    ClassProperties classProperties;
};

std::vector<std::size_t> objectsOf(const DescriptionFacts& facts) {
    std::vector<std::size_t> objects;
    for (const SignatureFacts& signature : facts.signatures)
        objects.insert(objects.end(), signature.objects.begin(), signature.objects.end());
    return objects;
}

class Assembly {
  public:
    explicit Assembly(const Gathered& gathered)
        : m_gathered(gathered), m_scopes(gathered.objects), m_entries(gathered.objects.size()) {}

    Assembled run() {
        connectDescriptions();
        attachProperties();
        for (const auto& [page, facts] : m_gathered.pages)
            fileDescriptions(page, facts);
        fileUndescribed();
        collectProperties();
        connectLinks();
        fillPages();
        fillEntities();
        addFurtherNames();
        return std::move(m_result);
    }

  private:
    [[nodiscard]] const InventoryObject& object(std::size_t index) const {
        return m_gathered.objects[index];
    }

    using NameAndKind =
        std::tuple<std::string_view, RefEntityType::Value, property::FunctionType::Value>;

    [[nodiscard]] NameAndKind nameAndKind(std::size_t index) const {
        const Kind kind = m_entries[index].kind;
        return {object(index).name, kind.type, kind.functionType};
    }

    void connectDescriptions() {
        for (const auto& [page, facts] : m_gathered.pages)
            for (const DescriptionFacts& description : facts.descriptions)
                for (const SignatureFacts& signature : description.signatures)
                    for (const std::size_t index : signature.objects) {
                        m_entries[index].facts = &description;
                        m_entries[index].signature = &signature;
                    }
        for (std::size_t index = 0; index < m_entries.size(); ++index) {
            Entry& entry = m_entries[index];
            entry.kind = kindOf(object(index), m_scopes, entry.facts, entry.signature);
            if (entry.facts == nullptr) {
                m_result.undescribed.push_back(index);
                m_undescribedOf[object(index).page].push_back(index);
            }
        }
    }

    // A property belongs to the class whose name, with a period and the property's own name after
    // it, makes up the name that the property is filed under.
    void attachProperties() {
        std::unordered_map<std::string, std::size_t> classes;
        for (std::size_t index = 0; index < m_entries.size(); ++index)
            if (holdsProperties(m_entries[index].kind.type))
                classes.emplace(object(index).domain + ":" + object(index).name, index);
        for (std::size_t index = 0; index < m_entries.size(); ++index) {
            if (m_entries[index].kind.type != RefEntityType::Property)
                continue;
            const std::string_view enclosing = Scopes::enclosing(object(index));
            const auto found = classes.find(object(index).domain + ":" + std::string(enclosing));
            if (found != classes.end())
                m_entries[index].owner = found->second;
        }
    }

    // Where a description would be found on its page: at the first of its entities or, where all
    // its objects are properties of classes, at the first of these.
    [[nodiscard]] std::size_t leadingObject(const DescriptionFacts& facts) const {
        const std::vector<std::size_t> objects = objectsOf(facts);
        const auto entity = std::ranges::find_if(
            objects, [&](std::size_t index) { return m_entries[index].owner == none; });
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
            const Kind kind = m_entries[lead].kind;
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
        Draft draft{.href = href,
                    .facts = &description,
                    .objects = {},
                    .properties = {},
                    .classProperties = {}};
        for (const std::size_t index : objectsOf(description)) {
            Entry& entry = m_entries[index];
            if (entry.owner != none) {
                entry.ownHref = hasPage ? href : hrefOf(object(index).page, object(index).anchor);
                continue;
            }
            entry.ownHref = href;
            entry.draft = m_drafts.size();
            draft.objects.push_back(index);
        }
        if (!draft.objects.empty())
            m_drafts.push_back(std::move(draft));
    }

    void fileUndescribed() {
        for (const std::size_t index : m_result.undescribed) {
            Entry& entry = m_entries[index];
            entry.ownHref = hrefOf(object(index).page, object(index).anchor);
            if (entry.owner != none)
                continue;
            entry.draft = m_drafts.size();
            m_drafts.push_back({.href = entry.ownHref,
                                .facts = nullptr,
                                .objects = {index},
                                .properties = {},
                                .classProperties = {}});
        }
    }

    [[nodiscard]] DocumentedProperty documentedProperty(std::size_t index) const {
        const Entry& entry = m_entries[index];
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
        for (std::size_t index = 0; index < m_entries.size(); ++index) {
            Entry& entry = m_entries[index];
            if (entry.owner == none)
                continue;
            entry.draft = m_entries[entry.owner].draft;
            m_drafts[entry.draft].properties.push_back(index);
        }
        for (Draft& draft : m_drafts) {
            if (draft.facts != nullptr)
                draft.classProperties.addFields(draft.facts->fields);
            const std::string& page = object(draft.objects.front()).page;
            std::ranges::stable_sort(draft.properties, {}, [&](std::size_t index) {
                const DescriptionFacts* const facts = m_entries[index].facts;
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

    [[nodiscard]] std::vector<property::RefEntity> entitiesOf(const Draft& draft) const {
        std::vector<property::RefEntity> entities;
        std::set<NameAndKind> seen;
        for (const std::size_t index : draft.objects)
            if (seen.insert(nameAndKind(index)).second)
                entities.emplace_back(m_entries[index].kind.type, toUtf16(object(index).name),
                                      m_entries[index].kind.functionType);
        return entities;
    }

    [[nodiscard]] std::string summaryOf(std::size_t index) const {
        const auto found = m_gathered.summaries.find(object(index).name);
        return m_entries[index].kind.type == RefEntityType::Package &&
                       found != m_gathered.summaries.end()
                   ? found->second
                   : std::string();
    }

    // Where a link leads in terms of the records: to the item of the object at that place. Empty
    // for one that may not stand in a documentation set; its text stays.
    [[nodiscard]] std::string recordHref(const std::string& href) const {
        std::string target = placeOfLink(href);
        return docset::whyNotATarget(toUtf16(target), m_gathered.helpFolder) ? std::string()
                                                                             : target;
    }

    [[nodiscard]] std::string placeOfLink(const std::string& href) const {
        const auto found = m_hrefs.find(href);
        if (found != m_hrefs.end())
            return found->second;
        const auto decoded = m_hrefs.find(percentDecoded(href));
        return decoded != m_hrefs.end() ? decoded->second : href;
    }

    void connectLinks() {
        for (std::size_t index = 0; index < m_entries.size(); ++index) {
            const Entry& entry = m_entries[index];
            const std::string& href = m_drafts[entry.draft].href;
            m_hrefs.emplace(hrefOf(object(index).page, object(index).anchor), href);
            if (entry.signature == nullptr)
                continue;
            for (const std::string& anchor : entry.signature->anchors)
                m_hrefs.emplace(hrefOf(object(index).page, anchor), href);
        }
    }

    void fillPages() {
        for (const Draft& draft : m_drafts) {
            ItemSource source;
            source.href = draft.href;
            source.entities = entitiesOf(draft);
            source.packageName = m_scopes.moduleOf(object(draft.objects.front()));
            source.summary = summaryOf(draft.objects.front());
            source.facts = draft.facts;
            source.properties = draft.classProperties.groups();
            source.recordHref = [this](const std::string& href) { return recordHref(href); };
            auto& items = m_result.documentation.pages[toUtf16(draft.href)];
            property::RefItem item = toItem(source);
            if (isNew(item, items))
                items.push_back(std::move(item));
        }
    }

    // Of items under one href, an item is compared only with those that say the same of themselves.
    [[nodiscard]] bool isNew(const property::RefItem& item,
                             const std::vector<property::RefItem>& items) {
        const std::hash<std::u16string> hash;
        std::size_t said = hash(item.getHref());
        for (const auto* const text : {&item.getPurpose(), &item.getDescription()})
            said = said * 31 + hash(*text);
        for (const auto& entity : item.getRefEntities())
            said = said * 31 + hash(entity.getName());
        for (const auto& group : item.getSyntaxGroups())
            for (const auto& syntax : group.getSyntaxes())
                said = said * 31 + hash(syntax);
        std::vector<std::size_t>& alike = m_itemsSaying[said];
        if (std::ranges::any_of(alike, [&](std::size_t at) { return items[at] == item; }))
            return false;
        alike.push_back(items.size());
        return true;
    }

    [[nodiscard]] std::string purposeOf(std::size_t index) const {
        const Entry& entry = m_entries[index];
        if (entry.owner != none)
            return m_drafts[entry.draft].classProperties.purposeOf(
                std::string(lastComponent(object(index).name)));
        return entry.facts != nullptr ? itemPurpose(*entry.facts, summaryOf(index))
                                      : summaryOf(index);
    }

    // Of the objects that share a name, a kind and a place (overloads) the first on the page stands
    // for all of them in the lookup.
    [[nodiscard]] std::size_t speaker(std::size_t index) const {
        const Entry& entry = m_entries[index];
        return entry.owner != none
                   ? index
                   : m_speakers.at({m_drafts[entry.draft].href, nameAndKind(index)});
    }

    void addRecord(const std::string& name, Kind kind, std::size_t draft,
                   const std::string& purpose) {
        const property::RefItemLookup record(kind.type, kind.functionType,
                                             toUtf16(m_drafts[draft].href), toUtf16(purpose));
        const auto isNew =
            m_recorded.insert({name, m_drafts[draft].href, kind.type, kind.functionType}).second;
        if (isNew)
            m_result.documentation.entities[toUtf16(name)].push_back(record);
    }

    void fillEntities() {
        for (const Draft& draft : m_drafts)
            for (const std::size_t index : draft.objects)
                m_speakers.try_emplace({draft.href, nameAndKind(index)}, index);
        for (std::size_t index = 0; index < m_entries.size(); ++index)
            addRecord(object(index).name, m_entries[index].kind, m_entries[index].draft,
                      purposeOf(speaker(index)));
        const Kind propertyKind{RefEntityType::Property, property::FunctionType::Property};
        const auto isName = [](const std::string& name) {
            return !name.empty() && name.find_first_of(" .,*()[]") == std::string::npos;
        };
        for (std::size_t draft = 0; draft < m_drafts.size(); ++draft)
            for (const std::size_t index : m_drafts[draft].objects) {
                if (!holdsProperties(m_entries[index].kind.type) || object(index).domain == "cpp")
                    continue;
                for (const std::string& name : m_drafts[draft].classProperties.names()) {
                    const std::string qualified = object(index).name + "." + name;
                    if (isName(name) &&
                        !m_result.documentation.entities.contains(toUtf16(qualified)))
                        addRecord(qualified, propertyKind, draft,
                                  m_drafts[draft].classProperties.purposeOf(name));
                }
            }
    }

    // Commands whose names may be written in any case are listed in lower case and shown as people
    // write them.
    void addShownSpellings(std::vector<FurtherName>& names) const {
        for (std::size_t index = 0; index < m_entries.size(); ++index) {
            const SignatureFacts* const signature = m_entries[index].signature;
            if (signature != nullptr && object(index).domain == "cmake" &&
                signature->name != object(index).name &&
                lowered(signature->name) == object(index).name)
                names.push_back({signature->name, index});
        }
    }

    void addFurtherNames() {
        auto& entities = m_result.documentation.entities;
        std::map<std::u16string, std::vector<property::RefItemLookup>> further;
        std::set<std::tuple<std::u16string, RefEntityType::Value, property::FunctionType::Value,
                            std::u16string, std::u16string>>
            added;
        const auto add = [&](const std::u16string& name, const property::RefItemLookup& record) {
            if (added
                    .emplace(name, record.getType(), record.getFunctionType(), record.getHref(),
                             record.getPurpose())
                    .second)
                further[name].push_back(record);
        };
        std::unordered_map<std::size_t, std::size_t> namesWithMembers;
        std::vector<FurtherName> names = m_gathered.furtherNames;
        addShownSpellings(names);
        for (const auto& [text, index] : names) {
            const std::u16string name = toUtf16(text);
            const Entry& entry = m_entries[index];
            if (!entities.contains(name))
                add(name,
                    {entry.kind.type, entry.kind.functionType, toUtf16(m_drafts[entry.draft].href),
                     toUtf16(purposeOf(speaker(index)))});
            if (!holdsProperties(entry.kind.type) ||
                ++namesWithMembers[index] > mostNamesWithMembers)
                continue;
            const std::u16string own = toUtf16(object(index).name);
            const std::u16string within = own + (object(index).domain == "cpp" ? u"::" : u".");
            for (auto member = entities.lower_bound(within);
                 member != entities.end() && member->first.starts_with(within); ++member) {
                const std::u16string memberName = name + member->first.substr(own.size());
                if (!entities.contains(memberName))
                    for (const property::RefItemLookup& record : member->second)
                        add(memberName, record);
            }
        }
        for (auto& [name, records] : further) {
            m_result.furtherNames.insert(name);
            entities.emplace(name, std::move(records));
        }
    }

    const Gathered& m_gathered;
    Scopes m_scopes;
    std::vector<Entry> m_entries;
    std::vector<Draft> m_drafts;
    std::map<std::string, std::vector<std::size_t>> m_undescribedOf;  // by page
    // Of each name and kind at an href, the first object.
    std::map<std::pair<std::string_view, NameAndKind>, std::size_t> m_speakers;
    // What has a record: name, href and kind.
    std::set<
        std::tuple<std::string, std::string, RefEntityType::Value, property::FunctionType::Value>>
        m_recorded;
    // The places of items among those of their href, by what they say.
    std::unordered_map<std::size_t, std::vector<std::size_t>> m_itemsSaying;
    // Place of an object to href of its record.
    std::unordered_map<std::string, std::string> m_hrefs;
    Assembled m_result;
};

}  // namespace

Assembled assemble(const Gathered& gathered) {
    return Assembly(gathered).run();
}

}  // namespace reference::importers::sphinx
