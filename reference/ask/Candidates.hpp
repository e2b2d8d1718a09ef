// The names that a question has found so far. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "docimage/QuestionIndex.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/Rung.hpp"
#include "reference/ask/ask.hpp"
#include "reference/search/LookupIndex.hpp"

namespace reference::ask {

// A name, by its number among all, and how it was found.
struct Candidate {
    std::uint32_t key = 0;
    // Which of the names that code calls, the likeliest first.
    std::uint8_t call = 0;
    Rung rung = Rung::Name;
    bool isOtherCase = false;
    // Within the rung: what is nearer to the question has a smaller number.
    std::uint32_t distance = 0;
    // The number of the change, see Candidates::addChange().
    std::uint32_t change = 0;
};

// Which names may be in the answer, by the filters of the question. One thread.
class KeyFilter {
  public:
    // Throws QuestionError for a product that is not installed.
    // `question`: null for a text that is none. `confirm`: asked last, about names that all else
    // admits; may be empty.
    KeyFilter(const search::LookupIndex& index, const Question* question, const AskOptions& options,
              std::function<bool(std::uint32_t key)> confirm);

    [[nodiscard]] bool admits(std::uint32_t key) const;
    // The pages that document the key, as an entity of a wanted type.
    [[nodiscard]] std::size_t entriesOf(std::uint32_t key) const;
    // Empty: any.
    [[nodiscard]] const std::vector<property::RefEntityType::Value>& types() const noexcept {
        return m_wantedTypes;
    }

  private:
    const search::LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    std::vector<property::RefEntityType::Value> m_wantedTypes;  // empty: any
    std::uint32_t m_types = 0;
    std::vector<bool> m_products;  // empty: any
    std::vector<bool> m_excluded;  // by key; empty: none
    std::function<bool(std::uint32_t)> m_confirm;
};

// Collects names, each once: the rung that finds a name first keeps it. One thread.
class Candidates {
  public:
    // `products`: a rank for each product, smaller for what goes first. All must outlive the
    // object.
    Candidates(const search::LookupIndex& index, const KeyFilter& filter,
               std::vector<std::uint32_t> products);

    // Returns whether the name is new and admitted.
    bool add(const Candidate& candidate);
    // Throws DamagedImage for a key that there is not.
    [[nodiscard]] bool has(std::uint32_t key) const {
        if (key >= m_seen.size())
            throw docimage::DamagedImage("An image refers to a name that it does not have.");
        return m_seen[key];
    }

    // A number for a change in the question, for the candidates that it led to.
    [[nodiscard]] std::uint32_t addChange(std::u16string change);
    [[nodiscard]] const std::u16string& change(std::uint32_t number) const {
        return m_changes[number];
    }

    // Names admitted, and their entries; entries that the filter has turned away.
    [[nodiscard]] std::size_t size() const noexcept { return m_candidates.size(); }
    // Whether any name was found, admitted or not.
    [[nodiscard]] bool isFound() const noexcept {
        return !m_candidates.empty() || !m_turnedAway.empty();
    }
    [[nodiscard]] std::size_t entries() const noexcept { return m_entries; }
    [[nodiscard]] std::size_t filteredAway() const noexcept { return m_filteredAway; }

    // The first `count` names in their order, and the first that the filter has turned away.
    [[nodiscard]] std::vector<Candidate> first(std::size_t count) const;
    [[nodiscard]] std::vector<Candidate> firstTurnedAway(std::size_t count) const;
    // Whether the question and the user see no difference between the two.
    [[nodiscard]] bool isTie(const Candidate& a, const Candidate& b) const;

    // The product of a name, and its number there.
    [[nodiscard]] std::uint32_t productOf(std::uint32_t key) const;
    [[nodiscard]] std::uint32_t numberInProduct(std::uint32_t key) const;
    // The bytes of the name; see docimage/unitBytes.hpp.
    [[nodiscard]] std::string_view textOf(std::uint32_t key) const;

  private:
    struct Order {
        std::uint64_t byQuestion;
        std::uint64_t byDocumentation;

        friend bool operator<(const Order& a, const Order& b) {
            return a.byQuestion != b.byQuestion ? a.byQuestion < b.byQuestion
                                                : a.byDocumentation < b.byDocumentation;
        }
    };
    [[nodiscard]] Order orderOf(const Candidate& candidate) const;
    [[nodiscard]] std::vector<Candidate> firstOf(const std::vector<Candidate>& candidates,
                                                 std::size_t count) const;

    const search::LookupIndex& m_index;
    const docimage::QuestionIndex& m_questions;
    const KeyFilter& m_filter;
    const std::vector<std::uint32_t> m_productRanks;
    std::vector<bool> m_seen;
    std::vector<Candidate> m_candidates;
    std::vector<std::u16string> m_changes{std::u16string()};
    std::vector<Candidate> m_turnedAway;
    std::size_t m_entries = 0;
    std::size_t m_filteredAway = 0;
};

}  // namespace reference::ask
