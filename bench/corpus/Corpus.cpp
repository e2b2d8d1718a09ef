#include "corpus/Corpus.hpp"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "corpus/fold.hpp"
#include "docparser/DocResource.hpp"
#include "docparser/FileDocSource.hpp"
#include "fl/i18n/utf.hpp"
#include "property/RefItem.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::bench {
namespace {

using docparser::DocResource;
using fl::i18n::toUtf8;
using property::RefEntity;
using property::RefEntityType;
using property::RefItem;
using property::RefItemLookup;

// The kinds that are also found without their package, as the library documents them.
bool isFoundWithoutPackage(RefEntityType::Value type) {
    using enum RefEntityType::Value;
    constexpr std::array kinds = {Function, Class,       Package,   Method,   Property,
                                  Event,    Enumeration, Interface, Constant, Constructor,
                                  Operator, TypeAlias,   Macro};
    return std::ranges::find(kinds, type) != kinds.end();
}

bool hasMembers(RefEntityType::Value type) {
    return type == RefEntityType::Class || type == RefEntityType::Enumeration ||
           type == RefEntityType::Interface;
}

std::u16string_view lastPart(std::u16string_view name, std::size_t count) {
    std::size_t begin = name.size();
    for (std::size_t part = 0; part < count; ++part) {
        if (begin == 0)
            return name;
        const auto separator = name.find_last_of(u"./", begin - 1);
        if (separator == std::u16string_view::npos)
            return name;
        if (part + 1 == count)
            return name.substr(separator + 1);
        begin = separator;
    }
    return name;
}

std::u16string_view fileName(std::u16string_view href) {
    const auto slash = href.rfind(u'/', href.find(u'#'));
    return slash == std::u16string_view::npos ? href : href.substr(slash + 1);
}

// Puts one product's rows into the corpus.
class ProductReader {
  public:
    ProductReader(Corpus& corpus, const DocResource<RefItemLookup>& lookup)
        : m_corpus(corpus), m_product(static_cast<std::uint32_t>(corpus.products.size())) {
        m_corpus.products.push_back(toUtf8(lookup.getHeaderInfo().getShortName()));
        for (const auto& [key, records] : lookup.getItems())
            for (const RefItemLookup& record : records)
                addRecord(key, records.front().getType(), record);
    }

    void addItems(const DocResource<RefItem>& resource) {
        for (const auto& [href, items] : resource.getItems()) {
            const auto page = m_pages.find(href);
            if (page == m_pages.end())
                continue;  // no record leads here, so that no search does
            const auto begin = static_cast<std::uint32_t>(m_corpus.resultPages.size());
            for (const RefItem& item : items)
                addItem(page->second, item);
            m_corpus.pageResults[page->second] = {
                begin, static_cast<std::uint32_t>(m_corpus.resultPages.size())};
        }
    }

  private:
    struct PageRecord {
        std::uint32_t number;
        std::u16string key;
    };

    void addRecord(const std::u16string& key, RefEntityType::Value firstType,
                   const RefItemLookup& record) {
        const auto number = static_cast<std::uint32_t>(m_corpus.keys.size());
        const std::u16string& href = record.getHref();
        const auto [page, isNew] =
            m_pages.emplace(href, static_cast<std::uint32_t>(m_corpus.pageHrefs.size()));
        if (isNew) {
            m_corpus.pageHrefs.add(toUtf8(href));
            m_corpus.pageProducts.push_back(m_product);
            m_corpus.pageResults.emplace_back();
        }
        m_records[page->second].push_back({number, key});
        const std::string foldedKey = folded(key);
        m_corpus.keys.add(toUtf8(key));
        m_corpus.foldedKeys.add(foldedKey);
        m_corpus.recordPages.push_back(page->second);
        m_corpus.recordTexts.add(foldedKey + textSeparator + folded(record.getPurpose()));
        // The library asks a key's first record alone.
        const bool whole = !isFoundWithoutPackage(firstType);
        m_corpus.lastComponents.add(toUtf8(whole ? key : lastPart(key, 1)));
        m_corpus.lastTwoComponents.add(toUtf8(whole ? key : lastPart(key, 2)));
        m_corpus.fileNames.add(
            toUtf8(isFoundWithoutPackage(record.getType()) ? fileName(href) : href));
        if (hasMembers(record.getType())) {
            m_corpus.classRecords.push_back(number);
            m_corpus.classPages.emplace_back(toUtf8(key), page->second);
        }
        if (const auto dot = key.rfind(u'.'); dot != std::u16string::npos)
            m_corpus.classPages.emplace_back(toUtf8(key.substr(0, dot)), page->second);
    }

    std::uint32_t addResult(std::uint32_t page, const std::u16string& name,
                            const std::u16string& href, const std::u16string& purpose,
                            bool isProperty, bool isInClass, const std::string& text) {
        m_corpus.resultNames.add(toUtf8(name));
        m_corpus.resultHrefs.add(toUtf8(href));
        m_corpus.resultPurposes.add(toUtf8(purpose));
        m_corpus.resultPages.push_back(page);
        m_corpus.resultIsProperty.push_back(isProperty);
        m_corpus.resultIsInClass.push_back(isInClass);
        m_corpus.resultTexts.add(text);
        return static_cast<std::uint32_t>(m_corpus.resultPages.size() - 1);
    }

    void addItem(std::uint32_t page, const RefItem& item) {
        std::unordered_map<std::u16string, std::vector<std::uint32_t>> properties;
        for (const RefEntity& entity : item.getRefEntities())
            for (const auto& group : item.getClassPropertyGroups())
                for (const auto& property : group.getClassProperties()) {
                    const std::u16string name = entity.getName() + u"." + property.getName();
                    properties[name].push_back(
                        addResult(page, name, property.getHref(), property.getPurpose(), true, true,
                                  folded(name) + textSeparator + folded(property.getPurpose())));
                }
        const auto& entities = item.getRefEntities();
        std::string text;
        for (const RefEntity& entity : entities)
            text += folded(entity.getName()) + textSeparator;
        text += folded(item.getPurpose());
        const bool isInClass =
            properties.empty() || std::ranges::any_of(entities, [](const RefEntity& entity) {
                return hasMembers(entity.getRefEntityType());
            });
        const std::uint32_t self =
            addResult(page, entities.empty() ? std::u16string() : entities.front().getName(),
                      item.getHref(), item.getPurpose(), false, isInClass, text);
        for (const PageRecord& record : m_records[page]) {
            const auto found = properties.find(record.key);
            if (found == properties.end())
                m_corpus.recordResults.emplace_back(record.number, self);
            else
                for (const std::uint32_t result : found->second)
                    m_corpus.recordResults.emplace_back(record.number, result);
        }
        m_corpus.resultItems.resize(m_corpus.resultPages.size(), self);
        m_corpus.itemTexts.add(allTexts(item));
        m_corpus.itemResults.push_back(self);
    }

    static std::string allTexts(const RefItem& item) {
        std::u16string texts;
        const auto add = [&texts](const std::u16string& text) {
            if (text.empty())
                return;
            if (!texts.empty())
                texts += static_cast<char16_t>(textSeparator);
            texts += text;
        };
        const auto addInfo = [&add](const property::ObjectInfo& info) {
            add(info.getName());
            add(info.getPurpose());
            std::ranges::for_each(info.getValues(), add);
        };
        add(item.getPurpose());
        add(item.getDescription());
        add(item.getPackageName());
        for (const RefEntity& entity : item.getRefEntities())
            add(entity.getName());
        for (const auto& group : item.getSyntaxGroups()) {
            add(group.getTitle());
            std::ranges::for_each(group.getSyntaxes(), add);
        }
        std::ranges::for_each(item.getInputs(), addInfo);
        std::ranges::for_each(item.getOutputs(), addInfo);
        for (const auto& group : item.getClassPropertyGroups()) {
            add(group.getTitle());
            std::ranges::for_each(group.getClassProperties(), addInfo);
        }
        for (const auto& example : item.getExamples())
            add(example.getTitle());
        for (const auto& seeAlso : item.getSeeAlsoInfo())
            add(seeAlso.getName());
        return folded(texts);
    }

    Corpus& m_corpus;
    const std::uint32_t m_product;
    std::unordered_map<std::u16string, std::uint32_t> m_pages;
    std::unordered_map<std::uint32_t, std::vector<PageRecord>> m_records;
};

}  // namespace

Corpus readCorpus(const std::filesystem::path& root) {
    docparser::FileDocSource source(
        [root] { return docparser::DocumentationLocation{.docRoot = root}; });
    Corpus corpus;
    for (const auto& [name, lookup] : source.getResourceLookupFiles().installed) {
        ProductReader reader(corpus, lookup);
        const auto resources =
            source.getResourceFile(lookup.getHeaderInfo().getReferenceFileName());
        if (const auto resource = resources.find(name); resource != resources.end())
            reader.addItems(resource->second);
    }
    std::ranges::sort(corpus.classPages);
    corpus.classPages.erase(std::unique(corpus.classPages.begin(), corpus.classPages.end()),
                            corpus.classPages.end());
    std::ranges::sort(corpus.recordResults);
    return corpus;
}

}  // namespace reference::bench
