#include "sphinx/Assembly.hpp"

#include <algorithm>
#include <functional>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "docset/hrefs.hpp"
#include "fl/i18n/utf.hpp"
#include "sphinx/Filing.hpp"
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

class Assembly {
  public:
    explicit Assembly(const Gathered& gathered)
        : m_gathered(gathered),
          m_scopes(gathered.objects),
          m_filed(fileObjects(gathered, m_scopes)) {}

    Assembled run() {
        connectLinks();
        fillPages();
        fillEntities();
        addFurtherNames();
        m_result.undescribed = std::move(m_filed.undescribed);
        return std::move(m_result);
    }

  private:
    [[nodiscard]] const InventoryObject& object(std::size_t index) const {
        return m_gathered.objects[index];
    }

    using NameAndKind =
        std::tuple<std::string_view, RefEntityType::Value, property::FunctionType::Value>;

    [[nodiscard]] NameAndKind nameAndKind(std::size_t index) const {
        const Kind kind = m_filed.objects[index].kind;
        return {object(index).name, kind.type, kind.functionType};
    }

    [[nodiscard]] std::vector<property::RefEntity> entitiesOf(const DraftItem& draft) const {
        std::vector<property::RefEntity> entities;
        std::set<NameAndKind> seen;
        for (const std::size_t index : draft.objects)
            if (seen.insert(nameAndKind(index)).second)
                entities.emplace_back(m_filed.objects[index].kind.type, toUtf16(object(index).name),
                                      m_filed.objects[index].kind.functionType);
        return entities;
    }

    [[nodiscard]] std::string summaryOf(std::size_t index) const {
        const auto found = m_gathered.summaries.find(object(index).name);
        return m_filed.objects[index].kind.type == RefEntityType::Package &&
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
        for (std::size_t index = 0; index < m_filed.objects.size(); ++index) {
            const FiledObject& entry = m_filed.objects[index];
            const std::string& href = m_filed.drafts[entry.draft].href;
            m_hrefs.emplace(hrefOf(object(index).page, object(index).anchor), href);
            if (entry.signature == nullptr)
                continue;
            for (const std::string& anchor : entry.signature->anchors)
                m_hrefs.emplace(hrefOf(object(index).page, anchor), href);
        }
    }

    void fillPages() {
        for (const DraftItem& draft : m_filed.drafts) {
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
        const FiledObject& entry = m_filed.objects[index];
        if (entry.owner.has_value())
            return m_filed.drafts[entry.draft].classProperties.purposeOf(
                std::string(lastComponent(object(index).name)));
        return entry.facts != nullptr ? itemPurpose(*entry.facts, summaryOf(index))
                                      : summaryOf(index);
    }

    // Of the objects that share a name, a kind and a place (overloads) the first on the page stands
    // for all of them in the lookup.
    [[nodiscard]] std::size_t speaker(std::size_t index) const {
        const FiledObject& entry = m_filed.objects[index];
        return entry.owner.has_value()
                   ? index
                   : m_speakers.at({m_filed.drafts[entry.draft].href, nameAndKind(index)});
    }

    void addRecord(const std::string& name, Kind kind, std::size_t draft,
                   const std::string& purpose) {
        const property::RefItemLookup record(kind.type, kind.functionType,
                                             toUtf16(m_filed.drafts[draft].href), toUtf16(purpose));
        const auto isNew =
            m_recorded.insert({name, m_filed.drafts[draft].href, kind.type, kind.functionType})
                .second;
        if (isNew)
            m_result.documentation.entities[toUtf16(name)].push_back(record);
    }

    void fillEntities() {
        for (const DraftItem& draft : m_filed.drafts)
            for (const std::size_t index : draft.objects)
                m_speakers.try_emplace({draft.href, nameAndKind(index)}, index);
        for (std::size_t index = 0; index < m_filed.objects.size(); ++index)
            addRecord(object(index).name, m_filed.objects[index].kind, m_filed.objects[index].draft,
                      purposeOf(speaker(index)));
        const Kind propertyKind{RefEntityType::Property, property::FunctionType::Property};
        const auto isName = [](const std::string& name) {
            return !name.empty() && name.find_first_of(" .,*()[]") == std::string::npos;
        };
        for (std::size_t draft = 0; draft < m_filed.drafts.size(); ++draft)
            for (const std::size_t index : m_filed.drafts[draft].objects) {
                if (!holdsProperties(m_filed.objects[index].kind.type) ||
                    object(index).domain == "cpp")
                    continue;
                for (const std::string& name : m_filed.drafts[draft].classProperties.names()) {
                    const std::string qualified = object(index).name + "." + name;
                    if (isName(name) &&
                        !m_result.documentation.entities.contains(toUtf16(qualified)))
                        addRecord(qualified, propertyKind, draft,
                                  m_filed.drafts[draft].classProperties.purposeOf(name));
                }
            }
    }

    // Commands whose names may be written in any case are listed in lower case and shown as people
    // write them.
    void addShownSpellings(std::vector<FurtherName>& names) const {
        for (std::size_t index = 0; index < m_filed.objects.size(); ++index) {
            const SignatureFacts* const signature = m_filed.objects[index].signature;
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
            const FiledObject& entry = m_filed.objects[index];
            if (!entities.contains(name))
                add(name, {entry.kind.type, entry.kind.functionType,
                           toUtf16(m_filed.drafts[entry.draft].href),
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
    Filed m_filed;
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
