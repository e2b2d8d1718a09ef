#include "docimage/QuestionIndex.hpp"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>

#include <boost/unordered/unordered_flat_map.hpp>

#include "docimage/Stemmer.hpp"
#include "docimage/componentForms.hpp"
#include "docimage/nameParts.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"

namespace reference::docimage {
namespace {

// The sections of an image, counted from its first.
enum QuestionSection : std::uint32_t {
    QuestionFirstKeys = 0,
    QuestionFacts = 1,
    QuestionLastNames = 2,  // 8 sections a lexicon
    QuestionLastParts = 10,
    QuestionOuterParts = 18,
    QuestionPurposes = 26,
    QuestionPartStems = 34,
    QuestionPartWords = 42,   // 2 sections
    QuestionAliases = 44,     // 2 sections
    QuestionAliasNames = 46,  // 2 sections
    QuestionPartsByEnds = 48,
    QuestionFirstNames = 49,  // 8 sections
};

// A longer run of letters is no part that anybody types.
constexpr std::size_t longestTerm = 64;

std::uint8_t toByte(std::size_t number) {
    return static_cast<std::uint8_t>(
        std::min<std::size_t>(number, std::numeric_limits<std::uint8_t>::max()));
}

// The kind by which the preferred order goes: type before function type.
std::uint16_t kindOf(const StoredRecord& record) {
    constexpr std::uint32_t perType = 16;
    return static_cast<std::uint16_t>(std::min<std::uint32_t>(record.type, 1000) * perType +
                                      std::min(record.functionType, perType - 1));
}

// Reads the names and purposes of all products, key by key.
class QuestionIndexBuilder {
  public:
    void add(const LookupImage& lookup) {
        m_roots.clear();
        for (std::size_t key = 0; key < lookup.keyCount(); ++key)
            addKey(lookup, key);
        for (const auto& [alias, names] : lookup.aliases())
            for (const auto& [name, count] : names)
                m_aliases[toUnitBytes(alias)][toUnitBytes(name)] += count;
    }

    void writeTo(ImageWriter& writer, std::uint32_t firstSection) {
        writer.addArray(firstSection + QuestionFacts, m_facts);
        m_firstNames.writeTo(writer, firstSection + QuestionFirstNames, FoundBy::Ends);
        m_lastNames.writeTo(writer, firstSection + QuestionLastNames, FoundBy::Ends);
        m_lastParts.writeTo(writer, firstSection + QuestionLastParts, FoundBy::Ends);
        m_outerParts.writeTo(writer, firstSection + QuestionOuterParts, FoundBy::Ends);
        m_purposes.writeTo(writer, firstSection + QuestionPurposes, FoundBy::Ends);
        LexiconBuilder stems;
        TextTableBuilder words;
        std::vector<std::string_view> parts;
        parts.reserve(m_partWords.size());
        for (const auto& word : m_partWords) {
            const auto number = toOffset(words.add(word));
            parts.push_back(word);
            stems.addWord(m_stemmer.stem(word), number);
        }
        stems.writeTo(writer, firstSection + QuestionPartStems, FoundBy::Ends);
        words.writeTo(writer, firstSection + QuestionPartWords);
        writer.addArray(firstSection + QuestionPartsByEnds, orderByEnds(parts));
        writeAliases(writer, firstSection);
    }

  private:
    void addKey(const LookupImage& lookup, std::size_t key) {
        const auto number = toOffset(m_facts.size());
        KeyFacts facts{};
        addFirst(lookup.key(key), number);
        assignUnitBytes(lookup.key(key), m_text);
        addName(m_text, number, facts);
        facts.length = toByte(m_text.size());
        facts.kind = std::numeric_limits<std::uint16_t>::max();
        const auto [first, last] = lookup.recordsOfKey(key);
        m_hrefs.clear();
        for (std::uint32_t at = first; at < last; ++at) {
            const StoredRecord& record = lookup.record(at);
            facts.types |= typeBit(record.type);
            facts.kind = std::min(facts.kind, kindOf(record));
            m_hrefs.insert(record.href);
            assignUnitBytes(lookup.purpose(at), m_text);
            facts.purposeWords = std::max(facts.purposeWords, addPurpose(m_text, number));
        }
        facts.entries = toByte(m_hrefs.size());
        m_facts.push_back(facts);
    }

    void addFirst(std::string_view name, std::uint32_t number) {
        const std::string_view first = firstComponent(name);
        if (first.size() == name.size() || m_roots.emplace(first).second)
            m_firstNames.addWord(searchForm(fromUnitBytes(first)), number);
    }

    void addName(std::u16string_view name, std::uint32_t number, KeyFacts& facts) {
        std::size_t depth = 0;
        for (std::size_t begin = 0; begin <= name.size(); ++depth) {
            const std::size_t end = std::min(name.find(u'.', begin), name.size());
            const auto component = name.substr(begin, end - begin);
            // A dot at the end is a part of the name, as in the operator "..".
            if (end == name.size() || end + 1 == name.size()) {
                addLast(name.substr(begin), number, facts);
                ++depth;
                break;
            }
            addRuns(nameParts(component), m_outerParts, number);
            begin = end + 1;
        }
        facts.depth = toByte(depth);
    }

    void addLast(std::u16string_view component, std::uint32_t number, KeyFacts& facts) {
        const auto parts = nameParts(component);
        std::string all;
        for (const auto& part : parts)
            all += part;
        facts.lastParts = toByte(parts.size());
        facts.lastLength = toByte(all.size());
        m_lastNames.addWord(all, number);
        addRuns(parts, m_lastParts, number);
    }

    void addRuns(const std::vector<std::string>& parts, LexiconBuilder& lexicon,
                 std::uint32_t number) {
        for (const auto& part : parts)
            if (part.size() <= longestTerm)
                m_partWords.insert(part);
        forEachRun(parts.size(), [&](std::size_t begin, std::size_t end) {
            std::string term;
            for (std::size_t at = begin; at < end; ++at)
                term += parts[at];
            if (term.size() <= longestTerm)
                lexicon.addWord(term, number);
        });
    }

    // Returns how many words the first sentence has: what follows it says more about the same.
    std::uint8_t addPurpose(std::u16string_view purpose, std::uint32_t number) {
        const std::size_t end = std::min(purpose.find(u". "), purpose.size());
        const std::size_t count = addWords(purpose.substr(0, end), number);
        addWords(purpose.substr(end), number);
        return toByte(count);
    }

    std::size_t addWords(std::u16string_view text, std::uint32_t number) {
        std::size_t count = 0;
        for (const auto& word : wordsOf(text)) {
            if (isStopWord(word) || word.size() > longestTerm)
                continue;
            m_purposes.addWord(m_stemmer.stem(word), number);
            ++count;
        }
        return count;
    }

    void writeAliases(ImageWriter& writer, std::uint32_t firstSection) const {
        TextTableBuilder aliases;
        TextTableBuilder names;
        for (const auto& [alias, counts] : m_aliases) {
            std::vector<std::pair<std::string, std::uint64_t>> order(counts.begin(), counts.end());
            std::ranges::stable_sort(order, std::greater(), &decltype(order)::value_type::second);
            for (const auto& [name, count] : order) {
                aliases.add(alias);
                names.add(name);
            }
        }
        aliases.writeTo(writer, firstSection + QuestionAliases);
        names.writeTo(writer, firstSection + QuestionAliasNames);
    }

    Stemmer m_stemmer;
    std::vector<KeyFacts> m_facts;
    LexiconBuilder m_firstNames;
    LexiconBuilder m_lastNames;
    LexiconBuilder m_lastParts;
    LexiconBuilder m_outerParts;
    LexiconBuilder m_purposes;
    std::set<std::string, std::less<>> m_partWords;
    // How often a name is seen under an alias, in all products.
    std::map<std::string, std::map<std::string, std::uint64_t>> m_aliases;
    std::u16string m_text;
    std::set<std::string, std::less<>> m_roots;  // that names of the product go on from
    std::set<std::uint32_t> m_hrefs;
};

}  // namespace

QuestionIndex::QuestionIndex(std::shared_ptr<const Image> image, std::uint32_t firstSection)
    : m_image(std::move(image)),
      m_facts(*m_image, firstSection + QuestionFacts),
      m_firstNames(*m_image, firstSection + QuestionFirstNames),
      m_lastNames(*m_image, firstSection + QuestionLastNames),
      m_lastParts(*m_image, firstSection + QuestionLastParts),
      m_outerParts(*m_image, firstSection + QuestionOuterParts),
      m_purposes(*m_image, firstSection + QuestionPurposes),
      m_partStems(*m_image, firstSection + QuestionPartStems),
      m_partWords(*m_image, firstSection + QuestionPartWords),
      m_partsByEnds(*m_image, firstSection + QuestionPartsByEnds),
      m_aliases(*m_image, firstSection + QuestionAliases),
      m_aliasNames(*m_image, firstSection + QuestionAliasNames) {
    const ImageArray<std::uint32_t> stored(*m_image, firstSection + QuestionFirstKeys);
    const auto numbers = stored.range(0, stored.size());
    if (numbers.empty() || numbers.front() != 0 || !std::ranges::is_sorted(numbers) ||
        numbers.back() != m_facts.size())
        throw DamagedImage("An image has the first keys of other names than it holds.");
    m_firstKeys.assign(numbers.begin(), numbers.end());
}

QuestionIndex::~QuestionIndex() = default;

std::uint32_t QuestionIndex::productOf(std::uint32_t key) const {
    if (key >= keyCount())
        throw DamagedImage("An image refers to a name that it does not have.");
    return static_cast<std::uint32_t>(std::ranges::upper_bound(m_firstKeys, key) -
                                      m_firstKeys.begin() - 1);
}

std::vector<std::string_view> QuestionIndex::namesOfAlias(std::string_view alias) const {
    std::vector<std::string_view> names;
    for (std::size_t at = m_aliases.lowerBound(alias);
         at < m_aliases.size() && m_aliases[at] == alias; ++at)
        names.push_back(m_aliasNames[at]);
    return names;
}

void QuestionIndex::write(std::span<const LookupImage* const> products, ImageWriter& writer,
                          std::uint32_t firstSection) {
    QuestionIndexBuilder builder;
    std::vector<std::uint32_t> firstKeys;
    firstKeys.reserve(products.size() + 1);
    std::size_t keys = 0;
    for (const LookupImage* const product : products) {
        firstKeys.push_back(toOffset(keys));
        keys += product->keyCount();
        builder.add(*product);
    }
    firstKeys.push_back(toOffset(keys));
    writer.addArray(firstSection + QuestionFirstKeys, firstKeys);
    builder.writeTo(writer, firstSection);
}

}  // namespace reference::docimage
