#include "reference/ask/Ladder.hpp"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "docimage/Stemmer.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/searchedTexts.hpp"
#include "docimage/unitBytes.hpp"
#include "property/DeprecationStatus.hpp"
#include "reference/ask/Candidates.hpp"
#include "reference/ask/MeaningReading.hpp"
#include "reference/ask/NameReading.hpp"
#include "reference/ask/WordReading.hpp"
#include "reference/ask/hitData.hpp"
#include "reference/ask/keyLists.hpp"
#include "reference/ask/productRank.hpp"

namespace reference::ask {

using docimage::NameKind;
using property::DeprecationStatus;
using property::RefEntityType;
using search::LookupIndex;
using search::Snapshot;

namespace {

// Once so many names are found, looser rungs are not asked: nobody reads that far.
constexpr std::size_t enough = 10;
// As long as there are so few, guesses are added.
constexpr std::size_t few = 5;
// In words, a single letter is no alias.
constexpr std::size_t shortestAlias = 2;
// What the filters turned away is shown by so many examples.
constexpr std::size_t mostTurnedAway = 5;

// The search form with each run of white space as one space.
std::string inOneLine(std::u16string_view text) {
    std::string line;
    for (const char byte : docimage::searchForm(text)) {
        const bool isSpace = byte == ' ' || (byte >= '\t' && byte <= '\r');
        if (!isSpace)
            line += byte;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    return line;
}

// The question as the ladder takes it: without what names a product and what says nothing.
class Climb {
    using Types = std::vector<property::RefEntityType::Value>;

  public:
    Climb(const Snapshot& snapshot, std::u16string_view text, const Question* question,
          const AskOptions& options)
        : m_snapshot(snapshot),
          m_index(*snapshot.index()),
          m_text(text),
          m_question(question),
          m_options(options) {}

    // The ladder:
    //
    //  1. The whole text is a name: as it stands, then in any case. Nothing that is documented is
    //     hidden by the grammar of questions.
    //  2. The names that the question may mean: what code calls, the likeliest first, or the one
    //     term that is left of the question without products' names and words that say nothing.
    //     a. The very name; any case; without its package. Where it begins with an alias ("pd"),
    //        then with what the alias stands for in examples ("pandas").
    //     b. With a package that is wrong or not installed.
    //  3. All words are parts of one name.
    //  4. The name begins like it.
    //  5. One or two slips of spelling, where nothing was found so far: in the name, or in words
    //     that occur nowhere, which are then replaced.
    //  6. All words in name and purpose, in any order and any form.
    //  7. All words in name, purpose and one passage of the text, and
    //  8. most of them, where little was found so far. What has all words but is far from the best
    //     of these is a guess like them.
    //
    // Each rung adds what those before it did not find, and the ladder ends when there is enough.
    // A place that the question asks for ("in:text") leaves the rungs of that place.
    Answer climb();

  private:
    void findWholeText(Candidates& candidates) const;
    void takeTerms();
    [[nodiscard]] bool namesProduct(const Term& term);
    [[nodiscard]] bool namesProductByAlias(const std::u16string& word);
    [[nodiscard]] std::set<std::uint32_t> productsOfModule(std::string_view name) const;
    [[nodiscard]] std::vector<Candidate> chooseFirst(const Candidates& candidates) const;
    [[nodiscard]] bool isConfirmed(std::uint32_t key) const;
    [[nodiscard]] bool isDeprecated(const Candidates& candidates, const Candidate& candidate) const;
    [[nodiscard]] std::vector<Hit> hitsOf(const Candidates& candidates,
                                          const std::vector<Candidate>& chosen, std::size_t count,
                                          const Types& types) const;
    [[nodiscard]] Answer answer(const Candidates& candidates) const;

    const Snapshot& m_snapshot;
    const LookupIndex& m_index;
    const std::u16string_view m_text;
    const Question* const m_question;
    const AskOptions& m_options;
    Types m_types;              // those that are wanted; empty: any
    std::vector<bool> m_named;  // products
    std::vector<Term> m_words;  // without products' names
    std::vector<Term> m_names;  // and without those that say nothing
};

bool Climb::namesProduct(const Term& term) {
    std::u16string name;
    for (const auto& component : term.components)
        name += (name.empty() ? u"" : u".") + component;
    const std::string form = docimage::searchForm(name);
    bool isAny = false;
    for (std::size_t at = 0; at < m_index.products().size(); ++at)
        if (docimage::searchForm(m_index.products()[at].name) == form) {
            m_named[at] = true;
            isAny = true;
        }
    return isAny || (term.components.size() == 1 && namesProductByAlias(term.components.front()));
}

// The products that document a module of this name (as bytes), or something in it; none for the
// name of a class.
std::set<std::uint32_t> Climb::productsOfModule(std::string_view name) const {
    const docimage::QuestionIndex& questions = m_index.questions();
    const std::string form = docimage::searchForm(docimage::fromUnitBytes(name));
    LookupIndex::Proposals proposals;
    m_index.proposeOfAll(NameKind::KeyWhole, docimage::nameHash(form), proposals);
    m_index.proposeOfAll(NameKind::ClassWhole, docimage::nameHash(form), proposals);
    std::set<std::uint32_t> products;
    for (const auto& proposal : proposals) {
        const std::string_view key = m_index.lookup(proposal.product).key(proposal.number);
        if (!key.starts_with(name) || (key.size() > name.size() && key[name.size()] != '.'))
            continue;
        const std::uint32_t number = questions.firstKeys()[proposal.product] + proposal.number;
        if (key.size() == name.size() &&
            (questions.facts(number).types & docimage::typeBit(RefEntityType::Class)) != 0)
            return {};
        products.insert(proposal.product);
    }
    return products;
}

// An alias stands for the likeliest of its modules that is documented. A word that is a part of
// names of that product, too, is not taken for an alias, nor is a variable of some class.
bool Climb::namesProductByAlias(const std::u16string& word) {
    const docimage::QuestionIndex& questions = m_index.questions();
    const std::string form = docimage::searchForm(word);
    if (word.size() < shortestAlias || docimage::isStopWord(form))
        return false;
    for (const std::string_view name : questions.namesOfAlias(docimage::toUnitBytes(word))) {
        auto products = productsOfModule(name);
        if (products.empty())
            continue;
        for (const auto* lexicon : {&questions.lastParts(), &questions.outerParts()})
            for (const std::uint32_t key : keysOf(*lexicon, form))
                products.erase(questions.productOf(key));
        for (const std::uint32_t product : products)
            m_named[product] = true;
        return !products.empty();
    }
    return false;
}

bool isStopWord(const Term& term) {
    return term.components.size() == 1 &&
           docimage::isStopWord(docimage::searchForm(term.components.front()));
}

Term withoutHints(Term term) {
    term.components.erase(term.components.begin(),
                          term.components.begin() + static_cast<std::ptrdiff_t>(term.hints));
    return term;
}

// A question of nothing but a product's name, or but words that say nothing, keeps them.
void Climb::takeTerms() {
    m_named.resize(m_index.products().size());
    std::vector<Term> without;
    for (const Term& term : m_question->terms())
        if (m_question->terms().size() == 1 || !namesProduct(term))
            without.push_back(term);
    if (without.empty())
        without = m_question->terms();
    // The words of a phrase find what may have it.
    for (const auto& phrase : m_question->phrases())
        for (const auto& word : docimage::wordsOf(phrase))
            without.push_back({.components = {docimage::fromUnitBytes(word)}});
    for (const Term& term : without)
        if (!isStopWord(term))
            m_names.push_back(term);
    if (m_names.empty())
        m_names = without;
    m_words = std::move(without);
    // Beside other words, "np.linspace" is the word after the alias.
    if (m_words.size() > 1)
        for (Term& term : m_words)
            if (term.components.size() > 1 && namesProductByAlias(term.components.front()))
                term.components.erase(term.components.begin());
}

void Climb::findWholeText(Candidates& candidates) const {
    const std::string bytes = docimage::toUnitBytes(m_text);
    const std::string form = docimage::searchForm(m_text);
    LookupIndex::Proposals proposals;
    m_index.proposeOfAll(NameKind::KeyWhole, docimage::nameHash(form), proposals);
    for (const auto& proposal : proposals) {
        const std::string_view name = m_index.lookup(proposal.product).key(proposal.number);
        const bool isSame = name == bytes;
        if (isSame || docimage::searchForm(docimage::fromUnitBytes(name)) == form)
            candidates.add(
                {.key = m_index.questions().firstKeys()[proposal.product] + proposal.number,
                 .rung = isSame ? Rung::Name : Rung::AnyCase,
                 .isOtherCase = !isSame});
    }
}

Answer Climb::climb() {
    std::function<bool(std::uint32_t)> confirm;
    if (m_question != nullptr && (!m_question->phrases().empty() || m_question->wantsDeprecated()))
        confirm = [this](std::uint32_t key) { return isConfirmed(key); };
    const KeyFilter filter(m_index, m_question, m_options, std::move(confirm));
    m_types = filter.types();
    if (m_question != nullptr)
        takeTerms();
    std::vector<std::uint32_t> ranks;
    for (std::size_t at = 0; at < m_index.products().size(); ++at)
        ranks.push_back(productRank(m_index.products()[at], !m_named.empty() && m_named[at],
                                    m_options.preferredProducts));
    Candidates candidates(m_index, filter, std::move(ranks));
    findWholeText(candidates);
    if (m_question == nullptr)
        return answer(candidates);

    std::vector<Term> names = m_question->calls();
    if (names.empty() && m_names.size() == 1)
        names.push_back(m_names.front());
    std::vector<Term> words = m_words;
    if (words.empty() && !m_question->calls().empty())
        words.push_back(withoutHints(m_question->calls().front()));
    const auto isEnough = [&] { return candidates.entries() >= enough; };
    const Place place = m_question->place();
    const bool namesCount = place == Place::Anywhere || place == Place::Names;

    std::vector<NameReading> readings;
    readings.reserve(names.size());
    for (std::size_t call = 0; call < names.size(); ++call)
        readings.emplace_back(m_index, names[call], call, candidates);
    WordReading reading(m_index.questions(), words, candidates);
    if (namesCount) {
        for (auto& name : readings)
            name.findName();
        for (auto& name : readings)
            name.findInOtherPackage();
        if (!isEnough())
            reading.findParts();
        if (!isEnough())
            for (auto& name : readings)
                name.findBeginning();
        if (!candidates.isFound()) {
            for (auto& name : readings)
                name.findSpelling();
            if (!candidates.isFound() && reading.correctSpelling())
                reading.findParts();
        }
    }
    if (isEnough() || place == Place::Names)
        return answer(candidates);
    const bool isFound = candidates.isFound();
    // A name that is found is not described by itself.
    if (isFound && m_names.size() <= 1 && place != Place::Texts)
        return answer(candidates);
    MeaningReading meaning(m_snapshot, reading.stems(), reading.change(), candidates);
    if (place != Place::Texts && (!isFound || m_names.size() > 1))
        meaning.findWords(place == Place::Purposes);
    if (place == Place::Texts)
        meaning.findInTexts();
    else if (place == Place::Anywhere && !isFound && candidates.entries() < few)
        meaning.findMostWords();
    return answer(candidates);
}

// What only the pages of a name tell.
bool Climb::isConfirmed(std::uint32_t key) const {
    const docimage::QuestionIndex& questions = m_index.questions();
    const std::uint32_t product = questions.productOf(key);
    const auto data = dataOf(m_snapshot, product, key - questions.firstKeys()[product], m_types);
    return std::ranges::any_of(data, [this](const api::ReferenceData& one) {
        const property::RefItem& item = one.getRefItem();
        if (const auto wanted = m_question->wantsDeprecated();
            wanted && *wanted != (item.getDeprecationStatus() != DeprecationStatus::Current))
            return false;
        return std::ranges::all_of(m_question->phrases(), [&](const std::u16string& phrase) {
            const std::string form = inOneLine(phrase);
            return docimage::anySearchedText(item, [&form](const std::u16string& text) {
                return inOneLine(text).find(form) != std::string::npos;
            });
        });
    });
}

// Of those that the question does not tell apart, what is deprecated comes last, as everywhere in
// the library's preferred order. Only pages say what is, so that no more are read than those from
// which the first are chosen.
std::vector<Candidate> Climb::chooseFirst(const Candidates& candidates) const {
    constexpr std::size_t mostCompared = 64;
    // Some names share their entry with others.
    constexpr std::size_t namesOfEntry = 2;
    const std::size_t wanted = std::min(m_options.limit, candidates.size()) * namesOfEntry;
    auto chosen = candidates.first(std::max(wanted, mostCompared));
    const std::size_t compared = std::min(chosen.size(), mostCompared);
    for (std::size_t begin = 0; begin < compared && begin < m_options.limit;) {
        std::size_t end = begin + 1;
        while (end < compared && candidates.isTie(chosen[begin], chosen[end]))
            ++end;
        if (end - begin > 1)
            std::ranges::stable_sort(
                chosen.begin() + static_cast<std::ptrdiff_t>(begin),
                chosen.begin() + static_cast<std::ptrdiff_t>(end), {},
                [&](const Candidate& candidate) { return isDeprecated(candidates, candidate); });
        begin = end;
    }
    return chosen;
}

bool Climb::isDeprecated(const Candidates& candidates, const Candidate& candidate) const {
    const auto data = dataOf(m_snapshot, candidates.productOf(candidate.key),
                             candidates.numberInProduct(candidate.key), m_types);
    return !data.empty() && std::ranges::all_of(data, [](const api::ReferenceData& one) {
        return one.getRefItem().getDeprecationStatus() != DeprecationStatus::Current;
    });
}

std::vector<Hit> Climb::hitsOf(const Candidates& candidates, const std::vector<Candidate>& chosen,
                               std::size_t count, const Types& types) const {
    std::vector<Hit> hits;
    // An entry that is documented under two names is one hit.
    std::set<std::tuple<std::u16string, std::u16string, std::u16string>> seen;
    const auto isNew = [&seen](const api::ReferenceData& data) {
        const property::RefItem& item = data.getRefItem();
        const auto& entities = item.getRefEntities();
        return seen
            .emplace(data.getHeaderInfo().getShortName(), item.getHref(),
                     entities.empty() ? std::u16string() : entities.front().getName())
            .second;
    };
    for (const Candidate& candidate : chosen)
        for (auto& data : dataOf(m_snapshot, candidates.productOf(candidate.key),
                                 candidates.numberInProduct(candidate.key), types))
            if (hits.size() < count && isNew(data))
                hits.push_back({.name = docimage::fromUnitBytes(candidates.textOf(candidate.key)),
                                .data = std::move(data),
                                .rung = candidate.rung,
                                .change = candidates.change(candidate.change)});
    return hits;
}

Answer Climb::answer(const Candidates& candidates) const {
    const auto chosen = chooseFirst(candidates);
    Answer answer{.hits = hitsOf(candidates, chosen, m_options.limit, m_types),
                  .total = candidates.entries(),
                  .filteredAway = candidates.filteredAway()};
    // Names that share an entry are counted one by one, unless all of them have been looked at.
    if (answer.hits.size() < m_options.limit && chosen.size() == candidates.size())
        answer.total = answer.hits.size();
    if (answer.total == 0)
        answer.turnedAway =
            hitsOf(candidates, candidates.firstTurnedAway(mostTurnedAway), mostTurnedAway, {});
    return answer;
}

}  // namespace

Answer climb(const Snapshot& snapshot, std::u16string_view text, const Question* question,
             const AskOptions& options) {
    return Climb(snapshot, text, question, options).climb();
}

}  // namespace reference::ask
