// Reads a question as a name. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reference/ask/Candidates.hpp"
#include "reference/ask/Question.hpp"
#include "reference/search/LookupIndex.hpp"

namespace reference::ask {

// One name as it was typed, and the rungs of the ladder that take it for one. One thread.
class NameReading {
  public:
    // The arguments must outlive the object. `call` counts the names that code calls.
    NameReading(const search::LookupIndex& index, const Term& name, std::size_t call,
                Candidates& candidates);

    // The very name, in any case, and without its package.
    void findName();
    // The last component, where the ones before it are not those of the name.
    void findInOtherPackage();
    // Names whose last component, or a part of it, begins like that of this name.
    void findBeginning();
    // Names whose last component has a slip or two.
    void findSpelling();

  private:
    // A name that is looked for: what was typed, or what it stands for where it begins with an
    // alias.
    struct Wording {
        std::vector<std::u16string> components;
        std::string bytes;
        std::string form;                // its search form
        std::vector<std::string> forms;  // those of the components
        std::uint32_t change;
    };
    // How the components before the last one fit those of a name.
    struct Fit {
        std::size_t missing = 0;  // typed, and not in the name
        std::u16string missingText;
        std::size_t missingHints = 0;
        std::size_t wording = 0;  // which one fits
    };
    enum class Part { Whole, End, Any };

    [[nodiscard]] static Wording wordingOf(std::vector<std::u16string> components,
                                           std::uint32_t change);
    void addAliases();
    void findName(std::size_t wording, Part part);
    [[nodiscard]] std::optional<Rung> rungOfAlias(std::uint32_t key) const;
    [[nodiscard]] Fit fitPackage(std::uint32_t key, std::uint32_t slips) const;
    [[nodiscard]] Fit fitWording(std::size_t number, std::uint32_t key,
                                 const std::vector<std::string_view>& components,
                                 std::uint32_t slips) const;
    [[nodiscard]] std::u16string withoutPackage(const std::u16string& missing) const;
    [[nodiscard]] bool isInstalled(std::string_view package) const;
    void propose(docimage::NameKind kind, std::string_view form,
                 search::LookupIndex::Proposals& proposals) const;
    [[nodiscard]] std::uint32_t keyOf(const search::LookupIndex::Proposal& proposal) const;

    const search::LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    const std::vector<std::u16string>& m_components;
    const std::size_t m_hints;
    Candidates& m_candidates;
    std::uint8_t m_call;
    std::vector<Wording> m_wordings;  // what was typed is the first
    std::string m_lastParts;          // the parts of the last component in a row
    bool m_hasCapitals = false;
};

// The components of a name in search form; a dot at the end belongs to the last of them.
[[nodiscard]] std::vector<std::string_view> componentsOf(std::string_view form);

}  // namespace reference::ask
