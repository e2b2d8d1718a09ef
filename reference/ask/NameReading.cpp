#include "reference/ask/NameReading.hpp"

#include <algorithm>
#include <utility>

#include "docimage/componentForms.hpp"
#include "docimage/nameParts.hpp"
#include "docimage/searchForm.hpp"
#include "docimage/unitBytes.hpp"
#include "reference/ask/nearWords.hpp"

namespace reference::ask {

using docimage::NameKind;
using search::LookupIndex;

namespace {

// What begins with a single letter is not worth a list.
constexpr std::size_t shortestBeginning = 2;
constexpr std::size_t shortestPartBeginning = 3;
constexpr std::uint32_t admittedInPackage = 2;

std::u16string joinedByDots(const std::vector<std::u16string>& components) {
    std::u16string text;
    for (const auto& component : components)
        text += (text.empty() ? u"" : u".") + component;
    return text;
}

// A capital letter asks for its case; without one, any case is as good, but the same one goes
// first.
bool isInOtherCase(std::string_view name, std::string_view typed) {
    return !name.ends_with(typed);
}

}  // namespace

std::vector<std::string_view> componentsOf(std::string_view form) {
    std::vector<std::string_view> components;
    for (std::size_t begin = 0;;) {
        const std::size_t end = form.find('.', begin);
        if (end == std::string_view::npos || end + 1 == form.size()) {
            components.push_back(form.substr(begin));
            return components;
        }
        components.push_back(form.substr(begin, end - begin));
        begin = end + 1;
    }
}

NameReading::NameReading(const LookupIndex& index, const Term& name, std::size_t call,
                         Candidates& candidates)
    : m_index(index),
      m_questions(index.questions()),
      m_components(name.components),
      m_hints(name.hints),
      m_candidates(candidates),
      m_call(static_cast<std::uint8_t>(std::min<std::size_t>(call, UINT8_MAX))),
      m_wordings{wordingOf(m_components, 0)},
      m_lastParts(docimage::joinedParts(m_components.back())),
      m_hasCapitals(m_wordings.front().form != m_wordings.front().bytes) {
    addAliases();
}

NameReading::Wording NameReading::wordingOf(std::vector<std::u16string> components,
                                            std::uint32_t change) {
    const std::u16string text = joinedByDots(components);
    Wording wording{.components = std::move(components),
                    .bytes = docimage::toUnitBytes(text),
                    .form = docimage::searchForm(text),
                    .forms = {},
                    .change = change};
    wording.forms.reserve(wording.components.size());
    for (const auto& component : wording.components)
        wording.forms.push_back(docimage::searchForm(component));
    return wording;
}

// What code calls on a result does not begin with an alias.
void NameReading::addAliases() {
    if (m_hints > 0)
        return;
    const std::string alias = docimage::toUnitBytes(m_components.front());
    for (const std::string_view name : m_questions.namesOfAlias(alias)) {
        std::vector<std::u16string> components;
        for (const std::string_view component : componentsOf(name))
            components.push_back(docimage::fromUnitBytes(component));
        components.insert(components.end(), m_components.begin() + 1, m_components.end());
        m_wordings.push_back(
            wordingOf(std::move(components),
                      m_candidates.addChange(u"alias: " + docimage::fromUnitBytes(name))));
    }
}

std::uint32_t NameReading::keyOf(const LookupIndex::Proposal& proposal) const {
    return m_questions.firstKeys()[proposal.product] + proposal.number;
}

void NameReading::propose(NameKind kind, std::string_view form,
                          LookupIndex::Proposals& proposals) const {
    m_index.proposeOfAll(kind, docimage::nameHash(form), proposals);
}

// A name that is documented as it was typed goes before one that an alias leads to, and a whole
// name before the end of one, by which wording ever.
void NameReading::findName() {
    if (m_wordings.size() == 1)
        return findName(0, Part::Any);
    for (const Part part : {Part::Whole, Part::End})
        for (std::size_t wording = 0; wording < m_wordings.size(); ++wording)
            findName(wording, part);
}

// An alias alone means a module. A variable may mean its class, but a word that something else is
// really named by means that; and what a function is called somewhere says nothing.
std::optional<Rung> NameReading::rungOfAlias(std::uint32_t key) const {
    using property::RefEntityType;
    const std::uint32_t types = m_questions.facts(key).types;
    if ((types & docimage::typeBit(RefEntityType::Package)) != 0)
        return Rung::Name;
    if ((types & docimage::typeBit(RefEntityType::Class)) != 0)
        return Rung::WithoutPackage;
    return std::nullopt;
}

void NameReading::findName(std::size_t wording, Part part) {
    const auto& [components, bytes, wanted, forms, change] = m_wordings[wording];
    LookupIndex::Proposals proposals;
    const bool isQualified = docimage::hasTwoComponents(wanted);
    propose(isQualified ? NameKind::KeyLastTwo : NameKind::KeyLast,
            isQualified ? docimage::lastTwoComponents(wanted) : std::string_view(wanted),
            proposals);
    for (const auto& proposal : proposals) {
        const std::string_view name = m_index.lookup(proposal.product).key(proposal.number);
        const std::string form = docimage::searchForm(docimage::fromUnitBytes(name));
        const bool isWhole = form.size() == wanted.size();
        if (!form.ends_with(wanted) || (part != Part::Any && isWhole != (part == Part::Whole)))
            continue;
        Rung rung = Rung::WithoutPackage;
        if (isWhole)
            rung = name == bytes ? Rung::Name : Rung::AnyCase;
        else if (docimage::componentBoundaries.find(form[form.size() - wanted.size() - 1]) ==
                 std::string_view::npos)
            continue;
        if (wording > 0 && m_components.size() == 1) {
            const auto aliasRung = rungOfAlias(keyOf(proposal));
            if (!isWhole || !aliasRung)
                continue;
            rung = std::max(rung, *aliasRung);
        }
        m_candidates.add({.key = keyOf(proposal),
                          .call = m_call,
                          .rung = rung,
                          .isOtherCase = isInOtherCase(name, bytes),
                          // What is named like the whole text goes before it: ".a" before "a".
                          .distance = static_cast<std::uint32_t>(wording + (isWhole ? 1 : 0)),
                          .change = change});
    }
}

// Typed components are looked for from the last to the first, each before the one that was found:
// others may stand between them.
NameReading::Fit NameReading::fitWording(std::size_t number, std::uint32_t key,
                                         const std::vector<std::string_view>& components,
                                         std::uint32_t slips) const {
    const Wording& wording = m_wordings[number];
    const auto& forms = wording.forms;
    std::size_t left = components.size() - 1;
    Fit fit{.wording = number};
    for (std::size_t typed = forms.size() - 1; typed-- > 0;) {
        const std::uint32_t allowed = std::min(slips, admittedSlips(forms[typed].size()));
        std::size_t at = left;
        while (at > 0 && components[at - 1] != forms[typed] &&
               slipsBetween(components[at - 1], forms[typed], allowed) > allowed)
            --at;
        if (at > 0) {
            left = at - 1;
            continue;
        }
        // A product may be named by its own name instead of that of its package.
        const auto& product = m_index.products()[m_candidates.productOf(key)].name;
        if (typed == 0 && docimage::searchForm(product) == forms[0])
            continue;
        if (typed < m_hints) {
            ++fit.missingHints;
            continue;
        }
        ++fit.missing;
        fit.missingText =
            wording.components[typed] + (fit.missingText.empty() ? u"" : u".") + fit.missingText;
    }
    return fit;
}

// By the first wording that fits; how far a name is from the question is counted in what was typed.
NameReading::Fit NameReading::fitPackage(std::uint32_t key, std::uint32_t slips) const {
    const std::string form =
        docimage::searchForm(docimage::fromUnitBytes(m_candidates.textOf(key)));
    const auto components = componentsOf(form);
    Fit typed = fitWording(0, key, components, slips);
    if (typed.missing == 0)
        return typed;
    for (std::size_t number = 1; number < m_wordings.size(); ++number) {
        Fit fit = fitWording(number, key, components, slips);
        if (fit.missing == 0)
            return fit;
    }
    return typed;
}

bool NameReading::isInstalled(std::string_view package) const {
    LookupIndex::Proposals proposals;
    propose(NameKind::KeyWhole, package, proposals);
    propose(NameKind::ClassWhole, package, proposals);
    return !proposals.empty() ||
           std::ranges::any_of(m_index.products(), [&](const LookupIndex::Product& product) {
               return docimage::searchForm(product.name) == package;
           });
}

std::u16string NameReading::withoutPackage(const std::u16string& missing) const {
    const bool isFirst = m_hints == 0 && missing.starts_with(m_components.front());
    if (!isFirst || isInstalled(m_wordings.front().forms.front()))
        return u"without " + missing;
    if (m_wordings.size() == 1)
        return u"without " + missing + u", which is not installed";
    // The likeliest name of an alias says more than the alias.
    const Wording& meant = m_wordings[1];
    const std::size_t count = meant.components.size() + 1 - m_components.size();
    const std::u16string name =
        joinedByDots({meant.components.begin(),
                      meant.components.begin() + static_cast<std::ptrdiff_t>(count)}) +
        missing.substr(m_components.front().size());
    return u"without " + name +
           (isInstalled(meant.forms.front()) ? u"" : u", which is not installed");
}

void NameReading::findInOtherPackage() {
    if (m_components.size() < 2)
        return;
    LookupIndex::Proposals proposals;
    const std::string& last = m_wordings.front().forms.back();
    propose(NameKind::KeyLast, last, proposals);
    std::vector<std::pair<std::u16string, std::uint32_t>> changes;
    const auto changeFor = [&](const std::u16string& missing) {
        const auto known =
            std::ranges::find(changes, missing, &decltype(changes)::value_type::first);
        if (known != changes.end())
            return known->second;
        return changes.emplace_back(missing, m_candidates.addChange(withoutPackage(missing)))
            .second;
    };
    for (const auto& proposal : proposals) {
        const std::uint32_t key = keyOf(proposal);
        if (m_candidates.has(key))
            continue;
        const std::string_view name = m_candidates.textOf(key);
        const std::string form = docimage::searchForm(docimage::fromUnitBytes(name));
        if (docimage::lastComponent(form) != last)
            continue;
        const Fit fit = fitPackage(key, 0);
        const bool isMisspelt = fit.missing > 0 && fitPackage(key, admittedInPackage).missing == 0;
        const bool isOther = !name.ends_with(docimage::toUnitBytes(m_components.back()));
        if (isMisspelt)
            m_candidates.add(
                {.key = key,
                 .call = m_call,
                 .rung = Rung::OtherPackage,
                 .isOtherCase = isOther,
                 .change = m_candidates.addChange(u"spelling: " + docimage::fromUnitBytes(name))});
        else if (fit.missing == 0)
            m_candidates.add(
                {.key = key,
                 .call = m_call,
                 .rung = Rung::WithoutPackage,
                 .isOtherCase = isOther,
                 .distance = static_cast<std::uint32_t>(fit.missingHints + fit.wording),
                 .change = m_wordings[fit.wording].change});
        else
            m_candidates.add({.key = key,
                              .call = m_call,
                              .rung = Rung::OtherPackage,
                              .isOtherCase = isOther,
                              .distance = static_cast<std::uint32_t>(fit.missing),
                              .change = changeFor(fit.missingText)});
    }
}

void NameReading::findBeginning() {
    if (m_lastParts.size() < shortestBeginning)
        return;
    const auto addAll = [&](const docimage::Lexicon& lexicon, std::uint32_t distance) {
        lexicon.forEachWordWith({.letters = m_lastParts, .isStart = true}, [&](std::uint32_t word) {
            if (lexicon.word(word).size() == m_lastParts.size())
                return;
            lexicon.forEachTextWith(word, [&](std::uint32_t key) {
                if (m_candidates.has(key))
                    return;
                const Fit fit = m_components.size() > 1 ? fitPackage(key, 0) : Fit();
                if (fit.missing > 0)
                    return;
                const bool isOther =
                    m_hasCapitals &&
                    m_candidates.textOf(key).find(docimage::toUnitBytes(m_components.back())) ==
                        std::string_view::npos;
                m_candidates.add({.key = key,
                                  .call = m_call,
                                  .rung = Rung::Beginning,
                                  .isOtherCase = isOther,
                                  .distance = distance,
                                  .change = m_wordings[fit.wording].change});
            });
        });
    };
    addAll(m_questions.lastNames(), 0);
    if (m_lastParts.size() >= shortestPartBeginning)
        addAll(m_questions.lastParts(), 1);
}

void NameReading::findSpelling() {
    const std::uint32_t admitted = admittedSlips(m_lastParts.size());
    const docimage::Lexicon& names = m_questions.lastNames();
    const auto addAll = [&](std::uint32_t word, std::uint32_t slips) {
        names.forEachTextWith(word, [&](std::uint32_t key) {
            if (m_candidates.has(key))
                return;
            const Fit fit = fitPackage(key, admitted);
            // In another package than the one that was typed, two slips are a guess upon a guess.
            if (fit.missing > 0 && slips > 1)
                return;
            const std::string_view name = m_candidates.textOf(key);
            const std::u16string last = docimage::fromUnitBytes(docimage::lastComponent(name));
            const std::u16string change =
                u"spelling: " + (last.empty() ? docimage::fromUnitBytes(name) : last);
            const bool isOther =
                m_hasCapitals && docimage::searchForm(last) != docimage::toUnitBytes(last);
            m_candidates.add({.key = key,
                              .call = m_call,
                              .rung = Rung::Spelling,
                              .isOtherCase = m_hasCapitals && !isOther,
                              .distance = slips + 4 * static_cast<std::uint32_t>(fit.missing),
                              .change = m_candidates.addChange(change)});
        });
    };
    // The last component may be right, and a slip be in one before it.
    if (m_components.size() > 1)
        names.forEachWordWith({.letters = m_lastParts, .isStart = true, .isEnd = true},
                              [&](std::uint32_t word) { addAll(word, 0); });
    for (const NearWord& near : nearWords(names, m_lastParts, admitted))
        addAll(near.word, near.slips);
}

}  // namespace reference::ask
