#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/RefRequestComparator.hpp"
#include "reference/api/ReferenceData.hpp"

namespace reference::tools {

// One key that results are ordered by, and how to explain it to a person.
struct OrderKey {
    // As written on the command line ("depth", "product=qix").
    std::string label;
    api::RefRequestComparator comparator;
    // What the key sees of a result ("2", "matches"); empty where there is nothing to say.
    std::function<std::string(const api::ReferenceData&)> valueOf;
    // If this key is a chain, its keys in order of precedence; else empty.
    std::vector<OrderKey> chain = {};
};

// The keys of an order, in order of precedence.
class Ordering {
  public:
    // From the texts of --order: each holds one key or several separated by commas. Throws
    // UnusableError, which lists the valid keys, if a text holds anything else. Names are compared
    // as `caseSensitivity` says.
    [[nodiscard]] static Ordering parse(const std::vector<std::string>& texts,
                                        api::EntityCaseSensitivity::Value caseSensitivity);

    // The order that suits a person who searches for `name`: the exact name first, then the
    // preferred order, then less qualified names, then these products, the most preferred first.
    [[nodiscard]] static Ordering forPerson(
        const std::u16string& name, api::EntityCaseSensitivity::Value caseSensitivity,
        const std::vector<std::u16string>& preferredProducts = {});

    explicit Ordering(std::vector<OrderKey> keys = {}) : m_keys(std::move(keys)) {}

    // All keys as one comparator.
    [[nodiscard]] api::RefRequestComparator comparator() const;

    // Why `a` stands before `b`: the first key that tells them apart and what it sees of both, or
    // that they tie. If that key is a chain, it names the key of the chain that decided. UTF-8.
    [[nodiscard]] std::string explain(const api::ReferenceData& a,
                                      const api::ReferenceData& b) const;

    // The keys that a text of --order may name, for messages.
    [[nodiscard]] static std::string knownKeys();

  private:
    std::vector<OrderKey> m_keys;
};

}  // namespace reference::tools
