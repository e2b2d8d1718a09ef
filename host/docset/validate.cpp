#include "docset/validate.hpp"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "docset/AliasFile.hpp"
#include "docset/ContainedFile.hpp"
#include "docset/JsonDocument.hpp"
#include "docset/Manifest.hpp"
#include "docset/ProductFileReader.hpp"
#include "docset/hrefs.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

namespace fs = std::filesystem;
using fl::i18n::toUtf8;
using property::RefItem;

using Kind = std::pair<property::RefEntityType::Value, property::FunctionType::Value>;

// The names and kinds in the items of an href, which its records must match.
struct Answers {
    // The names of entities, and of their classes' properties with the class's before it.
    std::set<std::u16string> names;
    // The kinds of the entities, and the properties' own names: what a further name may lead to.
    std::set<Kind> kinds;
    std::set<std::u16string> properties;
};

Answers answersOf(const std::vector<RefItem>& items) {
    Answers answers;
    for (const auto& item : items)
        for (const auto& entity : item.getRefEntities()) {
            answers.names.insert(entity.getName());
            answers.kinds.emplace(entity.getRefEntityType(), entity.getFunctionType());
            for (const auto& group : item.getClassPropertyGroups())
                for (const auto& property : group.getClassProperties()) {
                    answers.names.insert(entity.getName() + u"." + property.getName());
                    answers.properties.insert(property.getName());
                }
        }
    return answers;
}

// Whether the record may file a further name of an entity there (an alias, the module where it is
// really defined): it is of the entity's kind, or the last part of its name is a property's.
bool isFurtherName(const std::u16string& name, const property::RefItemLookup& record,
                   const Answers& answers) {
    if (record.getType() == property::RefEntityType::Property)
        return answers.properties.contains(name.substr(name.rfind(u'.') + 1));
    return answers.kinds.contains({record.getType(), record.getFunctionType()});
}

class Validator {
  public:
    explicit Validator(fs::path root) : m_root(std::move(root)) {}

    ValidationReport run() {
        const auto manifest = readManifest(m_root, handler());
        if (!manifest)
            return std::move(m_report);
        ++m_report.files;
        reportRepeatedMembers(manifestFileName);
        m_report.products = manifest->products.size();
        for (const auto& product : manifest->products)
            for (const auto& [locale, files] : product.files)
                checkProduct(product, files);
        return std::move(m_report);
    }

  private:
    using ReferenceByProduct = std::map<std::u16string, ReferenceContents>;

    [[nodiscard]] FaultHandler handler() {
        return [this](const Fault& fault) { m_report.faults.push_back(fault); };
    }

    void fault(const std::string& relativePath, std::string field, std::string problem) {
        m_report.faults.push_back({.file = (m_root / relativePath).string(),
                                   .field = std::move(field),
                                   .problem = std::move(problem)});
    }

    // The reader has already reported why a file cannot be read, so only readable files are looked
    // at.
    void reportRepeatedMembers(const std::string& relativePath) {
        const auto ignore = [](const Fault&) {};
        const auto folder = openRoot(m_root, relativePath, ignore);
        if (const auto document =
                folder ? JsonDocument::read(*folder, relativePath, ignore) : nullptr)
            document->reportRepeatedMembersTo(handler());
    }

    // A reference file that several products share is read once.
    const ReferenceByProduct& referenceFile(const std::string& relativePath) {
        const auto [at, isNew] = m_references.try_emplace(relativePath);
        if (!isNew)
            return at->second;
        ++m_report.files;
        if (auto contents = readReferenceFile(m_root, relativePath, handler())) {
            reportRepeatedMembers(relativePath);
            for (auto& product : *contents) {
                for (const auto& [href, items] : product.pages)
                    m_report.items += items.size();
                const std::u16string shortName = product.header.shortName;
                if (!at->second.emplace(shortName, std::move(product)).second)
                    fault(relativePath, "products",
                          "The product \"" + toUtf8(shortName) + "\" occurs twice in the file.");
            }
        }
        return at->second;
    }

    // A file that the manifest names again is not read again.
    void checkProduct(const ManifestProduct& product, const ProductFiles& files) {
        const auto known = m_owners.find(files.lookup);
        if (known != m_owners.end() && known->second != product.shortName) {
            faultOfOwner(files.lookup, known->second, product.shortName);
            return;
        }
        if (!m_checked.emplace(product.shortName, files.lookup, files.reference).second)
            return;
        ++m_report.files;
        const auto lookup = readLookupFile(m_root, files.lookup, handler());
        if (lookup) {
            m_owners.emplace(files.lookup, lookup->header.shortName);
            reportRepeatedMembers(files.lookup);
            for (const auto& [name, records] : lookup->entities)
                m_report.entities += records.size();
            if (lookup->header.shortName != product.shortName)
                faultOfOwner(files.lookup, lookup->header.shortName, product.shortName);
            checkAliases(files.lookup);
        }
        if (files.reference.empty())
            return;
        const std::size_t faultsBefore = m_report.faults.size();
        const auto& references = referenceFile(files.reference);
        const auto reference = references.find(product.shortName);
        if (reference == references.end()) {
            if (m_report.faults.size() == faultsBefore)
                fault(files.reference, "products",
                      "The product \"" + toUtf8(product.shortName) +
                          "\" is missing; the manifest names this file for it.");
            return;
        }
        if (lookup)
            compare(*lookup, files, reference->second);
    }

    void faultOfOwner(const std::string& lookupFile, const std::u16string& owner,
                      const std::u16string& product) {
        fault(lookupFile, "product.shortName",
              "The file is of the product \"" + toUtf8(owner) + "\"; the manifest names it for \"" +
                  toUtf8(product) + "\".");
    }

    void checkAliases(const std::string& lookupFile) {
        const auto root = openRoot(m_root, lookupFile, handler());
        if (!root)
            return;
        const auto file = readAliasFile(*root, lookupFile, handler());
        if (!file.isThere)
            return;
        ++m_report.files;
        if (file.aliases)
            reportRepeatedMembers(aliasFileName(lookupFile));
    }

    void compare(const LookupContents& lookup, const ProductFiles& files,
                 const ReferenceContents& reference) {
        if (!(lookup.header == reference.header))
            fault(files.reference, "products",
                  "The head of the product \"" + toUtf8(lookup.header.shortName) +
                      "\" is not the one that its lookup file has.");
        std::map<std::u16string, Answers> answersByHref;
        for (const auto& [href, items] : reference.pages) {
            answersByHref.emplace(href, answersOf(items));
            checkHrefs(href, items, reference.header.helpFolder, files.reference);
        }

        std::map<std::u16string, std::set<std::u16string>> filedByHref;
        for (const auto& [name, records] : lookup.entities)
            for (const auto& record : records) {
                filedByHref[record.getHref()].insert(name);
                checkRecord(name, record, files, answersByHref);
            }
        for (const auto& [href, items] : reference.pages)
            for (const auto& item : items)
                for (const auto& entity : item.getRefEntities())
                    if (!filedByHref[href].contains(entity.getName()))
                        fault(files.reference, "pages[\"" + toUtf8(href) + "\"]",
                              "No record of the lookup file leads from \"" +
                                  toUtf8(entity.getName()) + "\" to this item.");
    }

    // An href is opened in a browser: it must lead nowhere but to the documentation and the web.
    void checkHrefs(const std::u16string& page, const std::vector<RefItem>& items,
                    const std::u16string& helpFolder, const std::string& file) {
        const std::string field = "pages[\"" + shortened(toUtf8(page)) + "\"]";
        if (const auto reason = whyNotAPage(page))
            fault(file, field, "The page's href is none. " + *reason);
        const auto requireTarget = [&](const std::u16string& href, const char* where) {
            if (const auto reason = whyNotATarget(href, helpFolder))
                fault(file, field,
                      "The href \"" + shortened(toUtf8(href)) + "\" of " + where + " is none. " +
                          *reason);
        };
        for (const auto& item : items) {
            for (const auto& entry : item.getSeeAlsoInfo())
                requireTarget(entry.getPage(), "a reference to another page");
            for (const auto& entry : item.getReplacements())
                requireTarget(entry.getPage(), "a replacement");
            for (const auto& input : item.getInputs())
                requireTarget(input.getHref(), "an input");
            for (const auto& output : item.getOutputs())
                requireTarget(output.getHref(), "an output");
            for (const auto& group : item.getClassPropertyGroups())
                for (const auto& property : group.getClassProperties())
                    requireTarget(property.getHref(), "a property");
        }
    }

    void checkRecord(const std::u16string& name, const property::RefItemLookup& record,
                     const ProductFiles& files,
                     const std::map<std::u16string, Answers>& answersByHref) {
        const auto answers = answersByHref.find(record.getHref());
        const std::string field = "entities[\"" + toUtf8(name) + "\"]";
        if (answers == answersByHref.end())
            fault(
                files.lookup, field,
                "The href \"" + toUtf8(record.getHref()) + "\" is no page of the reference file.");
        else if (!answers->second.names.contains(name) &&
                 !isFurtherName(name, record, answers->second))
            fault(files.lookup, field,
                  "The items under \"" + toUtf8(record.getHref()) +
                      "\" have neither an entity nor a class property of this name, nor one of "
                      "this kind that it could be a further name of.");
    }

    fs::path m_root;
    ValidationReport m_report;
    std::map<std::string, ReferenceByProduct> m_references;
    // Whose each lookup file that was read is.
    std::map<std::string, std::u16string> m_owners;
    // Product, lookup file and reference file.
    std::set<std::tuple<std::u16string, std::string, std::string>> m_checked;
};

}  // namespace

ValidationReport validate(const fs::path& root) {
    return Validator(root).run();
}

}  // namespace reference::docset
