#include "grow/grow.hpp"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "corpus/fold.hpp"
#include "docparser/DocResource.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/ProductDocumentation.hpp"
#include "docset/publish.hpp"
#include "grow/Renamer.hpp"
#include "grow/Vocabulary.hpp"
#include "grow/asciiWords.hpp"
#include "grow/mix.hpp"
#include "property/RefItem.hpp"
#include "property/RefItemLookup.hpp"

namespace reference::bench {
namespace {

using property::RefItem;
using property::RefItemLookup;

// A page of the real set, with the records that lead to it.
struct RealPage {
    std::u16string href;
    std::vector<RefItem> items;
    std::vector<std::pair<std::u16string, RefItemLookup>> records;
};

// In the order of products and hrefs, in which pages that belong together are neighbours.
std::vector<RealPage> readPages(const std::filesystem::path& root) {
    docparser::FileDocSource source(
        [root] { return docparser::DocumentationLocation{.docRoot = root}; });
    std::vector<RealPage> pages;
    for (const auto& [name, lookup] : source.getResourceLookupFiles().installed) {
        auto resource =
            source.getResourceFile(lookup.getHeaderInfo().getReferenceFileName()).at(name);
        std::map<std::u16string, RealPage> byHref;
        for (auto& [href, items] : resource.takeItems())
            byHref[href] = {.href = href, .items = std::move(items), .records = {}};
        for (const auto& [key, records] : lookup.getItems())
            for (const RefItemLookup& record : records)
                byHref[record.getHref()].records.emplace_back(key, record);
        for (auto& [href, page] : byHref)
            pages.push_back(std::move(page));
    }
    return pages;
}

void addWords(std::u16string_view text, std::set<std::string>& words) {
    forEachRun(text, [&](std::u16string_view run, bool isWord) {
        if (isWord)
            words.insert(folded(run));
    });
}

// Counts in which items words occur, by the texts that nearly all words are in.
Vocabulary countWords(const std::vector<RealPage>& pages) {
    Vocabulary vocabulary;
    for (const RealPage& page : pages)
        for (const RefItem& item : page.items) {
            std::set<std::string> words;
            addWords(item.getPurpose(), words);
            addWords(item.getDescription(), words);
            for (const auto& entity : item.getRefEntities())
                addWords(entity.getName(), words);
            for (const auto& input : item.getInputs()) {
                addWords(input.getName(), words);
                addWords(input.getPurpose(), words);
            }
            for (const auto& group : item.getClassPropertyGroups())
                for (const auto& property : group.getClassProperties()) {
                    addWords(property.getName(), words);
                    addWords(property.getPurpose(), words);
                }
            for (const auto& word : words)
                vocabulary.count(word);
            vocabulary.countItem();
        }
    return vocabulary;
}

void addPage(const RealPage& page, Renamer& renamer, docset::ProductDocumentation& product) {
    const std::u16string href = renamer.href(page.href);
    auto& items = product.pages[href];
    for (const RefItem& item : page.items)
        items.push_back(renamer.item(item));
    for (const auto& [key, record] : page.records)
        product.entities[renamer.entityName(key)].emplace_back(
            record.getType(), record.getFunctionType(), href, renamer.text(record.getPurpose()));
}

std::u16string utf16(const std::string& text) {
    return {text.begin(), text.end()};
}

docset::ProductDocumentation makeProduct(const std::vector<RealPage>& pages,
                                         const Vocabulary& vocabulary, std::uint32_t number,
                                         std::size_t products, std::size_t entities) {
    // As many neighbours as a module or a large class has.
    constexpr std::size_t run = 200;
    const std::u16string name = u"p" + utf16(std::to_string(number));
    docset::ProductDocumentation product{
        .header = {.shortName = name,
                   .displayName = u"Product " + utf16(std::to_string(number)),
                   .helpFolder = name,
                   .version = u"1.0"},
        .entities = {},
        .pages = {}};
    Renamer renamer(vocabulary, number, u"");
    std::vector<bool> isTaken(pages.size());
    std::uint64_t random = mix(number);
    // A product that is larger than the real set takes pages again, with the words of one more
    // product.
    std::size_t records = 0;
    std::size_t taken = 0;
    std::size_t round = 0;
    while (records < entities) {
        if (taken == pages.size()) {
            isTaken.assign(pages.size(), false);
            taken = 0;
            ++round;
            renamer = Renamer(vocabulary, static_cast<std::uint32_t>(number + round * products),
                              u"more" + utf16(std::to_string(round)) + u"/");
        }
        random = mix(random);
        const std::size_t begin = random % pages.size();
        for (std::size_t n = begin; n < std::min(begin + run, pages.size()); ++n) {
            if (isTaken[n] || records >= entities)
                continue;
            isTaken[n] = true;
            ++taken;
            addPage(pages[n], renamer, product);
            records += pages[n].records.size();
        }
    }
    return product;
}

}  // namespace

void grow(const std::filesystem::path& from, const std::filesystem::path& into,
          std::size_t entities, std::size_t products) {
    const auto pages = readPages(from);
    const Vocabulary vocabulary = countWords(pages);
    std::size_t left = entities;
    for (std::size_t number = 1; number <= products; ++number) {
        // As equal as whole numbers and whole pages allow, and in all what was asked for.
        const auto product = makeProduct(pages, vocabulary, static_cast<std::uint32_t>(number),
                                         products, left / (products - number + 1));
        std::size_t made = 0;
        for (const auto& [key, records] : product.entities)
            made += records.size();
        left -= std::min(left, made);
        docset::publishProduct(into, "en_US", product);
    }
}

}  // namespace reference::bench
