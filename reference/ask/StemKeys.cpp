#include "reference/ask/StemKeys.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

#include "docimage/Lexicon.hpp"
#include "reference/ask/Likeliest.hpp"
#include "reference/ask/keyLists.hpp"
#include "reference/ask/shares.hpp"

namespace reference::ask {

using docimage::Lexicon;

namespace {

// Stems of words that most questions could have, whatever they ask for.
constexpr std::string_view weakStems[] = {
    "allow",  "calcul",  "class",  "code",    "comput", "creat",  "exampl", "find", "function",
    "get",    "given",   "give",   "librari", "make",   "method", "modul",  "new",  "object",
    "packag", "perform", "return", "support", "take",   "use",    "valu",   "work"};

bool isWeakStem(std::string_view stem) {
    return std::ranges::find(weakStems, stem) != std::end(weakStems) ||
           std::ranges::all_of(stem, [](char unit) { return unit >= '0' && unit <= '9'; });
}

constexpr std::uint64_t bitOf(std::size_t number) noexcept {
    return std::uint64_t{1} << number;
}

// Names in a row, so few that what is counted for them stays in the nearest cache.
class NameBlock {
  public:
    static constexpr std::uint32_t size = 4096;

    void begin(std::uint32_t first) noexcept { m_first = first; }

    // From now on each name is counted anew.
    void beginStem() noexcept { m_isCounted.fill(0); }

    // Counts a name of the block, once for the stem.
    void count(std::uint32_t key, float score) noexcept {
        const std::uint32_t at = key - m_first;
        const std::uint64_t bit = bitOf(at % bits);
        if ((m_isCounted[at / bits] & bit) != 0)
            return;
        m_isCounted[at / bits] |= bit;
        if ((m_isFound[at / bits] & bit) == 0) {
            m_isFound[at / bits] |= bit;
            m_scores[at] = score;
        } else {
            m_scores[at] += score;
        }
    }

    // Calls `visit(key, score)` for the names that were counted, in their order, and forgets them.
    template <typename Visit>
    void take(Visit visit) {
        for (std::uint32_t word = 0; word < m_isFound.size(); ++word)
            for (std::uint64_t left = std::exchange(m_isFound[word], 0); left != 0;
                 left &= left - 1) {
                const std::uint32_t at =
                    word * bits + static_cast<std::uint32_t>(std::countr_zero(left));
                visit(m_first + at, m_scores[at]);
            }
    }

  private:
    static constexpr std::uint32_t bits = 64;

    std::uint32_t m_first = 0;
    std::array<std::uint64_t, size / bits> m_isCounted{};
    std::array<std::uint64_t, size / bits> m_isFound{};
    std::array<float, size> m_scores;
};

}  // namespace

StemKeys::StemKeys(const search::LookupIndex& index, std::span<const std::string> stems)
    : m_index(index), m_questions(index.questions()) {
    for (const auto& text : stems.first(std::min(stems.size(), most)))
        m_stems.push_back({.text = text, .isWeak = isWeakStem(text)});
    addMeanings(stems.first(m_stems.size()));
    m_keys.resize(m_stems.size());
    const bool areAllWeak = std::ranges::all_of(m_stems, &Stem::isWeak);
    for (std::size_t at = 0; at < m_stems.size(); ++at)
        if (!m_stems[at].isWeak || areAllWeak)
            m_required |= bitOf(at);
}

void StemKeys::addMeanings(std::span<const std::string> stems) {
    for (const auto& [meant, said] : meaningsOf(stems, m_stemmer))
        docimage::forEachWord(said, [&, meant = meant](std::string_view word) {
            Synonym synonym{.stem = std::string(m_stemmer.stem(word)), .name = std::string(word)};
            std::erase(synonym.name, '_');
            synonym.isName = synonym.name.size() < word.size();
            for (std::size_t at = 0; at < m_stems.size(); ++at) {
                Stem& asked = m_stems[at];
                if ((meant & bitOf(at)) == 0 || synonym.stem == asked.text)
                    continue;
                const bool isPhrase = !std::has_single_bit(meant);
                if (asked.isWeak && !isPhrase)
                    continue;
                auto& synonyms = isPhrase ? asked.phrases : asked.synonyms;
                if (std::ranges::find(synonyms, synonym.stem, &Synonym::stem) == synonyms.end())
                    synonyms.push_back(synonym);
            }
        });
}

std::vector<std::string_view> StemKeys::partsOf(std::string_view stem) const {
    std::vector<std::string_view> parts;
    for (const std::uint32_t part : keysOf(m_questions.partStems(), stem))
        parts.push_back(m_questions.partWords()[part]);
    return parts;
}

// Leaves those of products for which `isKept(product, count)` holds, where `count` of them are.
template <typename IsKept>
StemKeys::Keys StemKeys::ofProducts(Keys keys, IsKept isKept) const {
    const auto& first = m_questions.firstKeys();
    auto left = keys.begin();
    for (auto at = keys.begin(); at != keys.end();) {
        const std::uint32_t product = m_questions.productOf(*at);
        const auto end = std::lower_bound(at, keys.end(), first[product + 1]);
        if (isKept(product, static_cast<std::size_t>(end - at)))
            left = std::copy(at, end, left);
        at = end;
    }
    keys.erase(left, keys.end());
    return keys;
}

// What can stand beside another word in a compound: a word that purposes of the product have, or
// one that says nothing, such as "is" or "by".
StemKeys::Keys StemKeys::keysOfCompound(const Compound& compound) {
    constexpr std::size_t shortest = 3;
    const std::string_view rest = compound.rest;
    if (rest.size() > 1 && docimage::isStopWord(rest))
        return keysOf(m_questions.lastParts(), compound.text);
    if (rest.size() < shortest)
        return {};
    const Keys inPurposes = keysOf(m_questions.purposes(), m_stemmer.stem(rest));
    if (inPurposes.empty())
        return {};
    return ofProducts(keysOf(m_questions.lastParts(), compound.text),
                      [&](std::uint32_t product, std::size_t /*count*/) {
                          const auto& first = m_questions.firstKeys();
                          const auto found = std::ranges::lower_bound(inPurposes, first[product]);
                          return found != inPurposes.end() && *found < first[product + 1];
                      });
}

std::vector<StemKeys::Compound> StemKeys::compoundsOf(std::string_view stem) const {
    // Shorter ones stand in too many words by chance.
    constexpr std::size_t shortestPart = 4;
    const docimage::TextTable& parts = m_questions.partWords();
    const auto byEnds = m_questions.partsByEnds();
    std::vector<Compound> compounds;
    auto forms = partsOf(stem);
    if (std::ranges::find(forms, stem) == forms.end())
        forms.push_back(stem);
    for (const std::string_view part : forms) {
        if (part.size() < shortestPart)
            continue;
        for (std::size_t at = parts.lowerBound(part); at < parts.size(); ++at) {
            const std::string_view text = parts[at];
            if (!text.starts_with(part))
                break;
            if (text.size() > part.size())
                compounds.push_back({.text = text, .rest = text.substr(part.size())});
        }
        const auto endsBefore = [&parts](std::uint32_t number, std::string_view end) {
            const std::string_view text = parts[number];
            return std::lexicographical_compare(text.rbegin(), text.rend(), end.rbegin(),
                                                end.rend());
        };
        for (auto at = std::lower_bound(byEnds.begin(), byEnds.end(), part, endsBefore);
             at != byEnds.end() && parts[*at].ends_with(part); ++at) {
            const std::string_view text = parts[*at];
            if (text.size() > part.size())
                compounds.push_back(
                    {.text = text, .rest = text.substr(0, text.size() - part.size())});
        }
    }
    return compounds;
}

// Leaves those of products in which not too many names have the word.
StemKeys::Keys StemKeys::withoutCommon(Keys keys) const {
    return ofProducts(std::move(keys), [&](std::uint32_t product, std::size_t count) {
        const auto& first = m_questions.firstKeys();
        const std::size_t names = first[product + 1] - first[product];
        return count <= std::max(names / share::commonInNames, share::neverCommon);
    });
}

StemKeys::Keys StemKeys::find(const Stem& stem, Field field) {
    Keys keys;
    bool isOne = true;
    const auto addKeys = [&](const Keys& found) {
        if (found.empty())
            return;
        if (found.back() >= m_questions.keyCount())
            throw docimage::DamagedImage("An image refers to a name that it does not have.");
        isOne = keys.empty();
        keys.insert(keys.end(), found.begin(), found.end());
    };
    const auto add = [&](const Lexicon& lexicon, std::string_view word) {
        addKeys(keysOf(lexicon, word));
    };
    const auto addParts = [&](const Lexicon& lexicon, std::string_view text) {
        for (const auto part : partsOf(text))
            add(lexicon, part);
    };
    const auto addSynonyms = [&](const std::vector<Synonym>& synonyms) {
        for (const Synonym& synonym : synonyms) {
            if (!synonym.isName)
                addKeys(withoutCommon(keysOf(m_questions.purposes(), synonym.stem)));
            const auto parts = partsOf(synonym.stem);
            for (const auto part : parts)
                add(m_questions.lastParts(), part);
            // It may be several parts in a row.
            if (std::ranges::find(parts, synonym.name) == parts.end())
                add(m_questions.lastParts(), synonym.name);
        }
    };
    switch (field) {
        case Field::Last:
            addParts(m_questions.lastParts(), stem.text);
            break;
        case Field::Purpose:
            add(m_questions.purposes(), stem.text);
            break;
        case Field::Phrase:
            addSynonyms(stem.phrases);
            break;
        case Field::Synonym:
            addSynonyms(stem.synonyms);
            break;
        case Field::Compound:
            for (const Compound& compound : compoundsOf(stem.text))
                addKeys(keysOfCompound(compound));
            break;
        case Field::Outer:
            addParts(m_questions.outerParts(), stem.text);
            break;
    }
    if (!isOne)
        putInOrder(keys, m_questions.keyCount());
    return keys;
}

const StemKeys::Keys& StemKeys::keysWith(std::size_t stem, Field field) {
    auto& keys = m_keys[stem][static_cast<std::size_t>(field)];
    if (!keys)
        keys = find(m_stems[stem], field);
    return *keys;
}

StemKeys::Places StemKeys::placesOf(std::uint32_t key) {
    Places places;
    for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
        const auto mark = [&](Field field, std::uint64_t& bits) {
            if (holds(keysWith(stem, field), key))
                bits |= bitOf(stem);
        };
        mark(Field::Last, places.last);
        mark(Field::Purpose, places.purpose);
        mark(Field::Phrase, places.phrase);
        mark(Field::Synonym, places.synonym);
        mark(Field::Compound, places.compound);
        mark(Field::Outer, places.outer);
    }
    return places;
}

// The names of the rarest stem are those that may have all.
StemKeys::Keys StemKeys::keysWithAll(bool isPurposeWanted) {
    static constexpr Field inPurpose[] = {Field::Purpose};
    static constexpr Field inAny[] = {Field::Last, Field::Purpose, Field::Outer};
    const std::span<const Field> wanted =
        isPurposeWanted ? std::span<const Field>(inPurpose) : std::span<const Field>(inAny);
    std::size_t rarest = 0;
    std::size_t fewest = std::numeric_limits<std::size_t>::max();
    for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
        if ((m_required & bitOf(stem)) == 0)
            continue;
        std::size_t count = 0;
        for (const Field field : wanted)
            count += keysWith(stem, field).size();
        if (count == 0)
            return {};
        if (count < fewest) {
            fewest = count;
            rarest = stem;
        }
    }
    Keys keys;
    if (m_stems.empty())
        return keys;
    for (const Field field : wanted)
        unite(keys, keysWith(rarest, field));
    for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
        if (stem == rarest || (m_required & bitOf(stem)) == 0)
            continue;
        std::erase_if(keys, [&](std::uint32_t key) {
            return std::ranges::none_of(
                wanted, [&](Field field) { return holds(keysWith(stem, field), key); });
        });
    }
    return keys;
}

void StemKeys::weigh() {
    const auto& first = m_questions.firstKeys();
    const std::size_t products = m_index.products().size();
    m_weights.resize(products * m_stems.size());
    for (std::size_t stem = 0; stem < m_stems.size(); ++stem)
        for (const Field field : {Field::Last, Field::Purpose, Field::Outer}) {
            const Keys& keys = keysWith(stem, field);
            for (auto at = keys.begin(); at != keys.end();) {
                const auto product = static_cast<std::size_t>(std::ranges::upper_bound(first, *at) -
                                                              first.begin() - 1);
                const auto end = std::lower_bound(at, keys.end(), first[product + 1]);
                m_weights[product * m_stems.size() + stem] += static_cast<float>(end - at);
                at = end;
            }
        }
    for (std::size_t product = 0; product < products; ++product) {
        const auto names = static_cast<float>(first[product + 1] - first[product]);
        for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
            float& weight = m_weights[product * m_stems.size() + stem];
            weight = std::log(1 + names / (share::rare + weight));
            if (m_stems[stem].isWeak)
                weight *= share::weak;
        }
    }
}

std::span<const float> StemKeys::weightsIn(std::uint32_t product) {
    if (m_weights.empty())
        weigh();
    return std::span(m_weights).subspan(product * m_stems.size(), m_stems.size());
}

// Goes through the names in blocks, each within one product. Of the fields in which a name has a
// stem, the one that says most counts.
std::vector<StemKeys::Scored> StemKeys::likeliest(
    std::size_t count, const FieldShares& shares,
    const std::function<bool(std::uint32_t key)>& isLeftOut) {
    struct List {
        Keys::const_iterator next;
        Keys::const_iterator end;
    };
    std::vector<List> lists;
    lists.reserve(m_stems.size() * std::size(fields));
    for (std::size_t stem = 0; stem < m_stems.size(); ++stem)
        for (const Field field : fields) {
            const Keys& keys = keysWith(stem, field);
            lists.push_back({.next = keys.begin(), .end = keys.end()});
        }
    Likeliest<Scored> best(count);
    NameBlock block;
    const auto& firstKeys = m_questions.firstKeys();
    for (;;) {
        std::uint32_t first = std::numeric_limits<std::uint32_t>::max();
        for (const List& list : lists)
            if (list.next != list.end)
                first = std::min(first, *list.next);
        if (first == std::numeric_limits<std::uint32_t>::max())
            break;
        const std::uint32_t product = m_questions.productOf(first);
        const auto end = static_cast<std::uint32_t>(std::min<std::uint64_t>(
            std::uint64_t{first} + NameBlock::size, firstKeys[product + 1]));
        const auto weights = weightsIn(product);
        float all = 0;
        block.begin(first);
        for (std::size_t stem = 0; stem < m_stems.size(); ++stem) {
            all += weights[stem];
            block.beginStem();
            for (std::size_t field = 0; field < std::size(fields); ++field) {
                List& list = lists[stem * std::size(fields) + field];
                const float score = weights[stem] * shares[field];
                for (; list.next != list.end && *list.next < end; ++list.next)
                    block.count(*list.next, score);
            }
        }
        block.take([&](std::uint32_t key, float score) {
            if (all > 0 && best.isBetter(score / all) && !isLeftOut(key))
                best.add({.key = key, .score = score / all});
        });
    }
    return best.take();
}

}  // namespace reference::ask
