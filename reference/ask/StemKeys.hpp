// Which names have the words of a question. Internal: no public header includes it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "docimage/Stemmer.hpp"
#include "reference/ask/thesaurus.hpp"
#include "reference/search/LookupIndex.hpp"

namespace reference::ask {

// Where a name has a word, from the field that says most: in its last component; in its purpose; by
// what a phrase means that the word is part of, in either; by a synonym, in either; at an end of a
// part of its last component, as "isprime" has "prime"; in the components before the last.
enum class Field : std::uint8_t { Last, Purpose, Phrase, Synonym, Compound, Outer };
inline constexpr Field fields[] = {Field::Last,    Field::Purpose,  Field::Phrase,
                                   Field::Synonym, Field::Compound, Field::Outer};

// What a word that stands in a field counts, by field.
using FieldShares = std::array<float, std::size(fields)>;

// The stems of a question's words, each asked for once in every field. One thread.
class StemKeys {
  public:
    using Keys = std::vector<std::uint32_t>;
    // What is beyond is left out.
    static constexpr std::size_t most = mostMeant;

    // A word that means the same.
    struct Synonym {
        std::string stem;
        std::string name;     // the word without underscores
        bool isName = false;  // it has some, at which purposes divide their words
    };
    struct Stem {
        std::string text;
        // Most questions could have it, whatever they ask for: found, it counts a little; missing,
        // it does not matter. What else could be said in its place is not looked for.
        bool isWeak = false;
        std::vector<Synonym> synonyms;
        std::vector<Synonym> phrases;  // of phrases that it is part of
    };
    // Where a name has the stems: a bit for each.
    struct Places {
        std::uint64_t last = 0;
        std::uint64_t purpose = 0;
        std::uint64_t phrase = 0;
        std::uint64_t synonym = 0;
        std::uint64_t compound = 0;
        std::uint64_t outer = 0;

        [[nodiscard]] std::uint64_t any() const noexcept {
            return last | purpose | phrase | synonym | compound | outer;
        }
    };

    // The index must outlive the object.
    StemKeys(const search::LookupIndex& index, std::span<const std::string> stems);

    [[nodiscard]] const std::vector<Stem>& stems() const noexcept { return m_stems; }
    // The stems that must be found, by their bits: the others are weak, unless all are.
    [[nodiscard]] std::uint64_t required() const noexcept { return m_required; }

    // The names that have the stem in the field, in order. Throws DamagedImage for a name that
    // there is not.
    [[nodiscard]] const Keys& keysWith(std::size_t stem, Field field);
    [[nodiscard]] Places placesOf(std::uint32_t key);

    // The names that have all required stems themselves, in order: in the purpose, or in the name
    // or the purpose.
    [[nodiscard]] Keys keysWithAll(bool isPurposeWanted);

    // What each stem counts in a product: a rare word says more than a frequent one. How rare it is
    // is counted in each product by itself, so that the order of a product's hits does not depend
    // on what else is installed. Valid as long as the object.
    [[nodiscard]] std::span<const float> weightsIn(std::uint32_t product);

    struct Scored {
        std::uint32_t key;
        float score;  // the share of the stems, by their weight
    };
    // The names that have most of the stems, the best first; not those that `isLeftOut` names.
    [[nodiscard]] std::vector<Scored> likeliest(
        std::size_t count, const FieldShares& shares,
        const std::function<bool(std::uint32_t key)>& isLeftOut);

  private:
    void addMeanings(std::span<const std::string> stems);
    // The parts of names that have the stem.
    [[nodiscard]] std::vector<std::string_view> partsOf(std::string_view stem) const;
    // A part of names, and what it has besides a part with the stem, at either end.
    struct Compound {
        std::string_view text;
        std::string_view rest;
    };
    [[nodiscard]] std::vector<Compound> compoundsOf(std::string_view stem) const;
    [[nodiscard]] Keys keysOfCompound(const Compound& compound);
    template <typename IsKept>
    [[nodiscard]] Keys ofProducts(Keys keys, IsKept isKept) const;
    [[nodiscard]] Keys withoutCommon(Keys keys) const;
    [[nodiscard]] Keys find(const Stem& stem, Field field);
    void weigh();

    const search::LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    docimage::Stemmer m_stemmer;
    std::vector<Stem> m_stems;
    std::uint64_t m_required = 0;
    std::vector<std::array<std::optional<Keys>, std::size(fields)>> m_keys;  // by stem
    std::vector<float> m_weights;  // by product and stem; empty until they are needed
};

}  // namespace reference::ask
