#include "docimage/LookupImage.hpp"

#include <algorithm>

#include "docimage/componentForms.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"

namespace reference::docimage {
namespace {

using property::FunctionType;
using property::RefEntityType;
using property::RefItemLookup;

// The sections of an image. A number that was once given out keeps its meaning.
enum LookupSection : std::uint32_t {
    Keys = 100,  // 2 sections
    FirstRecords = 102,
    Records = 103,
    Purposes = 104,  // 2 sections
    Hrefs = 106,     // 2 sections
    HrefStarts = 108,
    HrefRecords = 109,
    Names = 110,  // 2 sections a kind
    Words = 130,  // 8 sections
    HrefsHash = 140,
    // Of each pair of an alias and a name: the alias, the name, how often it was seen.
    AliasTexts = 150,  // 2 sections
    AliasNames = 152,  // 2 sections
    AliasCounts = 154,
};

std::uint32_t namesSection(NameKind kind) {
    return Names + static_cast<std::uint32_t>(kind) * NameTable::sections;
}

void writeRecords(const LookupImage::Entities& entities, ImageWriter& writer) {
    std::vector<const std::u16string*> hrefs;
    for (const auto& entity : entities)
        for (const RefItemLookup& record : entity.second)
            hrefs.push_back(&record.getHref());
    const auto text = [](const std::u16string* href) -> const std::u16string& { return *href; };
    std::ranges::sort(hrefs, {}, text);
    hrefs.erase(std::unique(hrefs.begin(), hrefs.end(),
                            [](const auto* a, const auto* b) { return *a == *b; }),
                hrefs.end());

    TextTableBuilder keys;
    TextTableBuilder purposes;
    std::vector<std::uint32_t> firstRecords;
    std::vector<StoredRecord> records;
    std::vector<std::uint32_t> hrefStarts(hrefs.size() + 1);
    for (const auto& [key, recordsOfKey] : entities) {
        firstRecords.push_back(toOffset(records.size()));
        const auto number = toOffset(keys.add(toUnitBytes(key)));
        for (const RefItemLookup& record : recordsOfKey) {
            const auto href = std::ranges::lower_bound(hrefs, record.getHref(), {}, text);
            const auto hrefNumber = toOffset(static_cast<std::size_t>(href - hrefs.begin()));
            records.push_back({.type = record.getType(),
                               .functionType = record.getFunctionType(),
                               .href = hrefNumber,
                               .key = number});
            purposes.add(toUnitBytes(record.getPurpose()));
            ++hrefStarts[hrefNumber + 1];
        }
    }
    firstRecords.push_back(toOffset(records.size()));

    TextTableBuilder hrefTexts;
    for (const auto* href : hrefs)
        hrefTexts.add(toUnitBytes(*href));
    for (std::size_t at = 1; at < hrefStarts.size(); ++at)
        hrefStarts[at] += hrefStarts[at - 1];
    std::vector<std::uint32_t> hrefRecords(records.size());
    std::vector<std::uint32_t> next(hrefStarts.begin(), hrefStarts.end() - 1);
    for (std::size_t at = 0; at < records.size(); ++at)
        hrefRecords[next[records[at].href]++] = toOffset(at);

    keys.writeTo(writer, Keys);
    writer.addArray(FirstRecords, firstRecords);
    writer.addArray(Records, records);
    purposes.writeTo(writer, Purposes);
    hrefTexts.writeTo(writer, Hrefs);
    writer.addArray(HrefsHash, std::vector<std::uint64_t>{hrefTexts.hash()});
    writer.addArray(HrefStarts, hrefStarts);
    writer.addArray(HrefRecords, hrefRecords);
}

void writeAliases(const Aliases& aliases, ImageWriter& writer) {
    TextTableBuilder texts;
    TextTableBuilder names;
    std::vector<std::uint32_t> counts;
    for (const auto& [alias, namesOfAlias] : aliases)
        for (const auto& [name, count] : namesOfAlias) {
            texts.add(toUnitBytes(alias));
            names.add(toUnitBytes(name));
            counts.push_back(count);
        }
    texts.writeTo(writer, AliasTexts);
    names.writeTo(writer, AliasNames);
    writer.addArray(AliasCounts, counts);
}

void writeNames(const LookupImage& image, ImageWriter& writer) {
    std::array<std::vector<NameTable::Entry>, nameKinds> entries;
    const auto add = [&](NameKind kind, std::string_view form, std::size_t number) {
        entries[static_cast<std::size_t>(kind)].push_back(
            {.hash = nameHash(form), .number = toOffset(number)});
    };
    std::u16string text;
    for (std::size_t number = 0; number < image.keyCount(); ++number) {
        assignUnitBytes(image.key(number), text);
        const std::string form = searchForm(text);
        add(NameKind::KeyWhole, form, number);
        add(NameKind::KeyLast, lastComponent(form), number);
        add(NameKind::KeyLastTwo, lastTwoComponents(form), number);
        const std::size_t dot = form.rfind('.');
        if (dot == std::string::npos)
            continue;
        const std::string_view className(form.data(), dot);
        add(NameKind::ClassWhole, className, number);
        add(NameKind::ClassLast, lastComponent(className), number);
        add(NameKind::ClassLastTwo, lastTwoComponents(className), number);
    }
    for (std::size_t number = 0; number < image.hrefCount(); ++number) {
        assignUnitBytes(image.hrefs()[number], text);
        const std::string form = searchForm(text);
        add(NameKind::HrefWhole, form, number);
        add(NameKind::HrefLast, lastComponent(form), number);
        add(NameKind::HrefLastTwo, lastTwoComponents(form), number);
    }
    for (std::size_t kind = 0; kind < nameKinds; ++kind)
        NameTable::write(entries[kind], writer, namesSection(static_cast<NameKind>(kind)));
}

void writeWords(const LookupImage& image, ImageWriter& writer) {
    LexiconBuilder words;
    std::u16string key;
    std::u16string purpose;
    for (std::size_t number = 0; number < image.keyCount(); ++number) {
        assignUnitBytes(image.key(number), key);
        const auto [first, last] = image.recordsOfKey(number);
        for (std::uint32_t record = first; record < last; ++record) {
            words.addText(key, record);
            assignUnitBytes(image.purpose(record), purpose);
            words.addText(purpose, record);
        }
    }
    words.writeTo(writer, Words);
}

std::shared_ptr<const Image> imageOf(const LookupImage::Entities& entities,
                                     const Aliases& aliases) {
    ImageWriter writer;
    writeRecords(entities, writer);
    writeAliases(aliases, writer);
    return writer.finish();
}

}  // namespace

LookupImage::LookupImage(const Entities& entities, const Aliases& aliases)
    : LookupImage(imageOf(entities, aliases)) {}

LookupImage::LookupImage(std::shared_ptr<const Image> image)
    : m_image(std::move(image)),
      m_keys(*m_image, Keys),
      m_firstRecords(*m_image, FirstRecords),
      m_records(*m_image, Records),
      m_purposes(*m_image, Purposes),
      m_hrefs(*m_image, Hrefs),
      m_hrefsHash(*m_image, HrefsHash),
      m_hrefStarts(*m_image, HrefStarts),
      m_hrefRecords(*m_image, HrefRecords),
      m_aliases(*m_image, AliasTexts),
      m_aliasNames(*m_image, AliasNames),
      m_aliasCounts(*m_image, AliasCounts) {}

LookupImage::~LookupImage() = default;

void LookupImage::write(const Entities& entities, const Aliases& aliases, ImageWriter& writer) {
    const LookupImage image(entities);
    writeRecords(entities, writer);
    writeAliases(aliases, writer);
    writeNames(image, writer);
    writeWords(image, writer);
}

void LookupImage::makeNames() const {
    const Image* image = m_image.get();
    if (!image->has(Names)) {
        ImageWriter writer;
        writeNames(*this, writer);
        m_namesImage = writer.finish();
        image = m_namesImage.get();
    }
    for (std::size_t kind = 0; kind < nameKinds; ++kind)
        m_names[kind] = NameTable(*image, namesSection(static_cast<NameKind>(kind)));
}

void LookupImage::makeWords() const {
    const Image* image = m_image.get();
    if (!image->has(Words)) {
        ImageWriter writer;
        writeWords(*this, writer);
        m_wordsImage = writer.finish();
        image = m_wordsImage.get();
    }
    m_words = Lexicon(*image, Words);
}

std::optional<std::uint32_t> LookupImage::findKey(std::string_view bytes) const {
    const std::size_t number = m_keys.lowerBound(bytes);
    if (number == m_keys.size() || m_keys[number] != bytes)
        return std::nullopt;
    return static_cast<std::uint32_t>(number);
}

LookupImage::Entities LookupImage::entities() const {
    Entities entities;
    for (std::size_t number = 0; number < keyCount(); ++number) {
        std::vector<RefItemLookup> records;
        const auto [first, last] = recordsOfKey(number);
        for (std::uint32_t at = first; at < last; ++at) {
            const StoredRecord& stored = record(at);
            records.emplace_back(static_cast<RefEntityType::Value>(stored.type),
                                 static_cast<FunctionType::Value>(stored.functionType),
                                 fromUnitBytes(m_hrefs[stored.href]), fromUnitBytes(purpose(at)));
        }
        entities.emplace_hint(entities.end(), fromUnitBytes(key(number)), std::move(records));
    }
    return entities;
}

Aliases LookupImage::aliases() const {
    Aliases aliases;
    for (std::size_t pair = 0; pair < m_aliasCounts.size(); ++pair)
        aliases[fromUnitBytes(m_aliases[pair])][fromUnitBytes(m_aliasNames[pair])] =
            m_aliasCounts[pair];
    return aliases;
}

}  // namespace reference::docimage
