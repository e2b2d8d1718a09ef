#include "relevance/Entities.hpp"

#include <algorithm>
#include <unordered_map>

#include "corpus/Corpus.hpp"
#include "docimage/nameParts.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::bench {
namespace {

// The same for names of the same entry: what is documented at one place, under the same last
// component and with the same purpose.
std::string entryKey(const Corpus& corpus, std::uint32_t record) {
    std::string key(corpus.productOfRecord(record));
    const std::string_view searched = corpus.recordTexts[record];
    for (const std::string_view text :
         {corpus.hrefOfRecord(record), lastComponent(corpus.keys[record]),
          searched.substr(searched.find(textSeparator))})
        key.append(1, textSeparator).append(text);
    return key;
}

}  // namespace

std::vector<Entity> readEntities(const std::filesystem::path& root) {
    const Corpus corpus = readCorpus(root);
    std::unordered_map<std::uint32_t, std::uint32_t> itemOfResult;
    for (std::uint32_t item = 0; item < corpus.itemResults.size(); ++item)
        itemOfResult.emplace(corpus.itemResults[item], item);

    std::vector<Entity> entities;
    entities.reserve(corpus.keys.size());
    std::unordered_map<std::string, std::uint32_t> entries;
    auto link = corpus.recordResults.begin();
    for (std::uint32_t record = 0; record < corpus.keys.size(); ++record) {
        const std::string name(corpus.keys[record]);
        std::string label = std::string(corpus.productOfRecord(record)) + ":" + name;
        // The records of a name are neighbours.
        if (entities.empty() || entities.back().label != label)
            entities.push_back(
                {.label = std::move(label),
                 .name = name,
                 .entry = entries.try_emplace(entryKey(corpus, record), record).first->second});
        Entity& entity = entities.back();
        const std::string_view searched = corpus.recordTexts[record];
        entity.purpose += searched.substr(searched.find(textSeparator) + 1);
        entity.purpose += textSeparator;
        for (; link != corpus.recordResults.end() && link->first == record; ++link) {
            const std::uint32_t result = link->second;
            const auto item = itemOfResult.find(result);
            entity.text += item == itemOfResult.end() ? corpus.resultTexts[result]
                                                      : corpus.itemTexts[item->second];
            entity.text += textSeparator;
        }
    }
    // What has no page is not found by the library either.
    std::erase_if(entities, [](const Entity& entity) { return entity.text.empty(); });
    return entities;
}

std::string spacedParts(const std::string& name) {
    std::string spaced;
    for (const std::string& part : docimage::nameParts(fl::i18n::toUtf16(name))) {
        if (!spaced.empty())
            spaced += ' ';
        spaced += part;
    }
    return spaced;
}

std::string_view lastComponent(std::string_view name) {
    return name.substr(name.rfind('.') + 1);
}

bool AnswerList::add(std::size_t entity) {
    const Entity& found = m_entities[entity];
    if (!isFull() && std::ranges::find(m_entries, found.entry) == m_entries.end()) {
        m_entries.push_back(found.entry);
        m_labels.push_back(found.label);
    }
    return !isFull();
}

}  // namespace reference::bench
