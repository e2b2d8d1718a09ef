#include "reference/ask/complete.hpp"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <limits>
#include <utility>

#include "docimage/QuestionIndex.hpp"
#include "docimage/componentForms.hpp"
#include "docimage/nameParts.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"
#include "reference/api/cache_manager/referenceStore.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/asciiBytes.hpp"
#include "reference/ask/keyLists.hpp"
#include "reference/ask/productRank.hpp"
#include "reference/search/LookupIndex.hpp"

namespace reference::ask {

using docimage::KeyFacts;
using docimage::LookupImage;
using docimage::NameKind;
using search::LookupIndex;

namespace {

// Of the beginnings that thousands of names share, so many are looked at: a person reads the first
// few.
constexpr std::size_t mostFound = 4096;
// The keys under one last name that are looked at, unless one of a preferred product may come
// later: nearly all are written alike.
constexpr std::size_t mostAlike = 16;

// What was typed: "DataFrame.gr" is the package "DataFrame" and the beginning "gr" of the part
// after it.
struct Typed {
    // As it was typed, with the dot or what stands for it.
    std::u16string_view head;
    // With dots, as bytes and in the search form; empty for a part alone.
    std::string package;
    std::string packageForm;
    std::string part;
    std::string partForm;

    explicit Typed(std::u16string_view text);
};

Typed::Typed(std::u16string_view text) {
    std::u16string dotted;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::u16string_view rest = text.substr(at);
        const bool isPair = rest.starts_with(u"::") || rest.starts_with(u"->");
        if (isPair || text[at] == u'.' || text[at] == u'/' || text[at] == u'#') {
            at += isPair ? 1 : 0;
            begin = at + 1;
            dotted += u'.';
        } else {
            dotted += text[at];
        }
    }
    head = text.substr(0, begin);
    const std::u16string_view last = text.substr(begin);
    dotted.resize(dotted.size() - last.size());
    if (!dotted.empty())
        dotted.pop_back();
    package = docimage::toUnitBytes(dotted);
    packageForm = docimage::searchForm(dotted);
    part = docimage::toUnitBytes(last);
    partForm = docimage::searchForm(last);
}

// The number of the first key that does not go before `bytes`, from `from` on: near it, mostly.
std::size_t lowerBoundFrom(const LookupImage& lookup, std::size_t from, std::string_view bytes) {
    std::size_t step = 1;
    std::size_t low = from;
    while (low + step < lookup.keyCount() && lookup.key(low + step) < bytes) {
        low += step;
        step *= 2;
    }
    std::size_t high = std::min(low + step, lookup.keyCount());
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (lookup.key(middle) < bytes)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

class Completer {
  public:
    Completer(const LookupIndex& index, const Typed& typed, const CompleteOptions& options)
        : m_index(index),
          m_questions(index.questions()),
          m_typed(typed),
          m_limit(options.limit),
          m_prefersSome(!options.preferredProducts.empty()) {
        for (const auto& product : index.products()) {
            if (!options.products.empty())
                m_isWanted.push_back(std::ranges::find(options.products, product.name) !=
                                     options.products.end());
            m_ranks.push_back(productRank(product, false, options.preferredProducts));
            m_firstRank = std::min(m_firstRank, m_ranks.back());
        }
    }

    std::vector<Completion> complete();

  private:
    // A part that goes on from what was typed, in the order of the members. Views are those of the
    // images.
    struct Found {
        bool isOtherCase;
        bool isHidden;
        bool isLonger;
        bool isInOtherPackage;
        std::uint32_t rank;
        bool isPart;         // of names, and no name itself
        std::uint16_t kind;  // of a name
        std::size_t size;
        std::string_view part;
        std::uint32_t key;  // the name, or the first that goes on from the part

        // NOLINTNEXTLINE(modernize-use-nullptr): the compiler's own code compares with 0
        [[nodiscard]] auto operator<=>(const Found&) const = default;
    };
    // A package by one of its documented names.
    struct Package {
        std::uint32_t product = 0;
        std::string name;

        // What packages are ordered by.
        [[nodiscard]] std::pair<std::uint32_t, std::string_view> place() const {
            return {product, name};
        }
    };

    void addRoots();
    void addPackages();
    void addWhole(const std::string& package);
    template <typename IsWanted>
    void addPackagesOf(NameKind kind, std::string_view form, IsWanted isWanted);
    void addAllParts(bool isInOtherPackage);
    void addParts(const Package& package, bool isInOtherPackage);
    void addPartsFrom(std::uint32_t product, const std::string& bytes, std::size_t before,
                      bool isInOtherPackage);
    void addLastNames();
    void add(std::string_view part, std::uint32_t key, bool isName, bool isInOtherPackage);
    [[nodiscard]] bool canBeGood(std::string_view letters, std::uint32_t key, bool isLast) const;
    [[nodiscard]] bool isWanted(std::uint32_t product) const {
        return m_isWanted.empty() || m_isWanted[product];
    }
    [[nodiscard]] bool isWantedKey(std::uint32_t key) const {
        return m_isWanted.empty() || m_isWanted[m_questions.productOf(key)];
    }
    [[nodiscard]] bool isBegun(std::string_view part) const;
    [[nodiscard]] std::string_view keyText(std::uint32_t key) const;
    [[nodiscard]] Completion completionOf(const Found& found) const;

    const LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    const Typed& m_typed;
    const std::size_t m_limit;
    const bool m_prefersSome;            // products
    std::vector<bool> m_isWanted;        // by product; empty: all are
    std::vector<std::uint32_t> m_ranks;  // by product
    std::uint32_t m_firstRank = std::numeric_limits<std::uint32_t>::max();
    std::vector<Package> m_packages;
    std::size_t m_found = 0;
    std::vector<Found> m_best;  // the first of those that were found, in order, each part once
};

std::vector<Completion> Completer::complete() {
    if (m_typed.head.empty()) {
        addRoots();
        if (!m_typed.part.empty())
            addLastNames();
    } else if (!m_typed.package.empty()) {
        addPackages();
    }
    std::vector<Completion> completions;
    for (const Found& found : m_best)
        completions.push_back(completionOf(found));
    return completions;
}

void Completer::addRoots() {
    const docimage::Lexicon& names = m_questions.firstNames();
    names.forEachWordWith({.letters = m_typed.partForm, .isStart = true}, [&](std::uint32_t word) {
        names.forEachTextWith(word, [&](std::uint32_t key) {
            if (!isWantedKey(key))
                return;
            ++m_found;
            if (!canBeGood(names.word(word), key, false))
                return;
            const std::string_view name = keyText(key);
            const std::string_view part = docimage::firstComponent(name);
            if (!part.empty())
                add(part, key, part.size() == name.size(), false);
        });
        return m_found < mostFound;
    });
}

// The packages that were typed: by their whole names, by those that an alias stands for, and by the
// ends of them.
void Completer::addPackages() {
    addWhole(m_typed.package);
    const std::size_t dot = std::min(m_typed.package.find('.'), m_typed.package.size());
    for (const std::string_view name :
         m_questions.namesOfAlias(std::string_view(m_typed.package).substr(0, dot)))
        addWhole(std::string(name) + m_typed.package.substr(dot));
    addAllParts(false);

    const std::string& form = m_typed.packageForm;
    const bool isQualified = docimage::hasTwoComponents(form);
    addPackagesOf(isQualified ? NameKind::ClassLastTwo : NameKind::ClassLast,
                  isQualified ? docimage::lastTwoComponents(form) : std::string_view(form),
                  [&form](std::string_view name) {
                      return name.size() > form.size() && name.ends_with(form) &&
                             name[name.size() - form.size() - 1] == '.';
                  });
    addAllParts(true);
}

// A package that is no class of anything, and no name itself, is found in its own case alone.
void Completer::addWhole(const std::string& package) {
    const std::string form = docimage::searchForm(docimage::fromUnitBytes(package));
    const std::string_view first = std::string_view(form).substr(0, form.find('.'));
    for (const std::uint32_t key : keysOf(m_questions.firstNames(), first))
        m_packages.push_back({.product = m_questions.productOf(key), .name = package});
    for (std::uint32_t product = 0; first.empty() && product < m_ranks.size(); ++product)
        m_packages.push_back({.product = product, .name = package});
    const auto isSame = [&form](std::string_view name) { return name == form; };
    addPackagesOf(NameKind::ClassWhole, form, isSame);
    addPackagesOf(NameKind::KeyWhole, form, isSame);
}

// `isWanted` is asked about the search form of a package's name.
template <typename IsWanted>
void Completer::addPackagesOf(NameKind kind, std::string_view form, IsWanted isWanted) {
    LookupIndex::Proposals proposals;
    m_index.proposeOfAll(kind, docimage::nameHash(form), proposals);
    Package last;
    for (const auto& proposal : proposals) {
        std::string_view name = m_index.lookup(proposal.product).key(proposal.number);
        // Names of one class mostly stand side by side.
        if (!last.name.empty() && last.product == proposal.product &&
            name.size() > last.name.size() && name[last.name.size()] == '.' &&
            name.starts_with(last.name))
            continue;
        if (kind != NameKind::KeyWhole)
            name = name.substr(0, std::min(name.rfind('.'), name.size()));
        if (!isWanted(docimage::searchForm(docimage::fromUnitBytes(name))))
            continue;
        last = {.product = proposal.product, .name = std::string(name)};
        m_packages.push_back(last);
    }
}

void Completer::addAllParts(bool isInOtherPackage) {
    std::ranges::sort(m_packages, {}, &Package::place);
    m_packages.erase(
        std::unique(m_packages.begin(), m_packages.end(),
                    [](const Package& a, const Package& b) { return a.place() == b.place(); }),
        m_packages.end());
    for (const Package& package : m_packages)
        addParts(package, isInOtherPackage);
    m_packages.clear();
}

// Keys lie in the order of their bytes, so that those that go on alike lie side by side; a first
// letter in the other case lies elsewhere.
void Completer::addParts(const Package& package, bool isInOtherPackage) {
    if (!isWanted(package.product))
        return;
    std::string bytes = package.name;
    if (!bytes.empty())
        bytes += '.';
    const std::size_t before = bytes.size();
    if (m_typed.part.empty() || !isAscii(m_typed.part.substr(0, 1))) {
        addPartsFrom(package.product, bytes, before, isInOtherPackage);
        return;
    }
    const char lower = lowerByte(m_typed.part.front());
    const char upper = upperByte(m_typed.part.front());
    addPartsFrom(package.product, bytes + lower, before, isInOtherPackage);
    if (upper != lower)
        addPartsFrom(package.product, bytes + upper, before, isInOtherPackage);
}

void Completer::addPartsFrom(std::uint32_t product, const std::string& bytes, std::size_t before,
                             bool isInOtherPackage) {
    const LookupImage& lookup = m_index.lookup(product);
    std::string next;
    for (std::size_t at = lowerBoundFrom(lookup, 0, bytes);
         at < lookup.keyCount() && m_found < mostFound;) {
        const std::string_view key = lookup.key(at);
        if (!key.starts_with(bytes))
            return;
        const std::string_view part = docimage::firstComponent(key.substr(before));
        const std::size_t end = before + part.size();
        if (!part.empty() && isBegun(part)) {
            ++m_found;
            add(part, m_questions.firstKeys()[product] + static_cast<std::uint32_t>(at),
                end == key.size(), isInOtherPackage);
        }
        if (end == key.size()) {
            ++at;
            continue;
        }
        // All that go on from this part, too.
        constexpr char afterDot = '.' + 1;
        next.assign(key.substr(0, end));
        next += afterDot;
        at = lowerBoundFrom(lookup, at, next);
    }
}

void Completer::addLastNames() {
    const std::string letters = docimage::joinedParts(docimage::fromUnitBytes(m_typed.part));
    // If so, what begins with these letters begins with what was typed.
    const bool isPlain = letters == m_typed.partForm;
    const docimage::Lexicon& names = m_questions.lastNames();
    names.forEachWordWith({.letters = letters, .isStart = true}, [&](std::uint32_t word) {
        std::size_t seen = 0;
        names.forEachTextWith(word, [&](std::uint32_t key) {
            if (!isWantedKey(key))
                return true;
            m_found += isPlain ? 1 : 0;
            if (!canBeGood(names.word(word), key, true))
                return m_found < mostFound;
            const std::string_view name = docimage::lastComponent(keyText(key));
            if (!name.empty() && isBegun(name)) {
                m_found += isPlain ? 0 : 1;
                add(name, key, true, true);
            }
            return (++seen < mostAlike || m_prefersSome) && m_found < mostFound;
        });
        return m_found < mostFound;
    });
}

// Each text is completed once: as a name, or by what names go on from.
void Completer::add(std::string_view part, std::uint32_t key, bool isName, bool isInOtherPackage) {
    const Found found{
        .isOtherCase = !part.starts_with(m_typed.part),
        .isHidden = part.front() == '_' && !m_typed.part.starts_with('_'),
        .isLonger = part.size() != m_typed.part.size(),
        .isInOtherPackage = isInOtherPackage,
        .rank = m_ranks[m_questions.productOf(key)],
        .isPart = !isName,
        .kind = isName ? m_questions.facts(key).kind : std::uint16_t{0},
        .size = part.size(),
        .part = part,
        .key = key,
    };
    if (m_best.size() == m_limit && (m_best.empty() || m_best.back() < found))
        return;
    const auto same = std::ranges::find(m_best, part, &Found::part);
    if (same != m_best.end()) {
        if (*same < found)
            return;
        m_best.erase(same);
    } else if (m_best.size() == m_limit) {
        m_best.pop_back();
    }
    m_best.insert(std::ranges::upper_bound(m_best, found), found);
}

// Whether the first or last part of a name, with these letters in lower case, can go before the
// last of those that are known to be good, by what is known without a look at it: nearly all
// cannot.
bool Completer::canBeGood(std::string_view letters, std::uint32_t key, bool isLast) const {
    if (m_best.size() < m_limit)
        return true;
    const KeyFacts& facts = m_questions.facts(key);
    const bool isName = isLast || facts.depth == 1;
    // Only what is not ASCII can have fewer bytes than its letters in lower case.
    const std::size_t least = isAscii(letters) ? letters.size() : 0;
    const Found atBest{.isOtherCase = false,
                       .isHidden = false,
                       .isLonger = least > m_typed.part.size(),
                       .isInOtherPackage = isLast,
                       .rank = m_firstRank,
                       .isPart = !isName,
                       .kind = isName ? facts.kind : std::uint16_t{0},
                       .size = least,
                       .part = {},
                       .key = 0};
    return !m_best.empty() && atBest < m_best.back();
}

bool Completer::isBegun(std::string_view part) const {
    if (part.starts_with(m_typed.part))
        return true;
    if (!isAscii(part) || !isAscii(m_typed.part))
        return docimage::searchForm(docimage::fromUnitBytes(part)).starts_with(m_typed.partForm);
    return part.size() >= m_typed.part.size() &&
           std::ranges::equal(part.substr(0, m_typed.part.size()), m_typed.part, {}, lowerByte,
                              lowerByte);
}

std::string_view Completer::keyText(std::uint32_t key) const {
    const std::uint32_t product = m_questions.productOf(key);
    return m_index.lookup(product).key(key - m_questions.firstKeys()[product]);
}

Completion Completer::completionOf(const Found& found) const {
    Completion completion{
        .text = std::u16string(m_typed.head) + docimage::fromUnitBytes(found.part),
        .isName = !found.isPart};
    if (found.isPart) {
        completion.text += u'.';
        return completion;
    }
    const std::uint32_t product = m_questions.productOf(found.key);
    const LookupImage& lookup = m_index.lookup(product);
    const std::uint32_t number = found.key - m_questions.firstKeys()[product];
    completion.name = docimage::fromUnitBytes(lookup.key(number));
    const auto [begin, end] = lookup.recordsOfKey(number);
    std::uint32_t first = begin;
    for (std::uint32_t at = begin; at < end; ++at)
        if (lookup.record(at).type < lookup.record(first).type)
            first = at;
    if (begin < end) {
        completion.type = static_cast<property::RefEntityType::Value>(lookup.record(first).type);
        completion.purpose = docimage::fromUnitBytes(lookup.purpose(first));
    }
    return completion;
}

}  // namespace

std::vector<Completion> complete(std::u16string_view beginning, const CompleteOptions& options) {
    while (!beginning.empty() && (beginning.front() == u' ' || beginning.front() == u'\t'))
        beginning.remove_prefix(1);
    if (beginning.size() > Question::maxLength)
        return {};
    const Typed typed(beginning);
    return cache_manager::referenceStore().answer([&](const search::Snapshot& snapshot) {
        if (snapshot.index() == nullptr)
            return std::vector<Completion>();
        return Completer(*snapshot.index(), typed, options).complete();
    });
}

}  // namespace reference::ask
