#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/RefRequestComparator.hpp"
#include "reference/api/ReferenceData.hpp"

namespace reference::tools {

// One thing that results are ordered by, and how to tell a person of it.
struct OrderKey {
    // As the command line has it ("depth", "product=qix").
    std::string label;
    api::RefRequestComparator comparator;
    // What the key sees of a result ("2", "matches"); empty where there is nothing to say.
    std::function<std::string(const api::ReferenceData&)> valueOf;
    // The keys that this one goes through in precedence, when it is a chain; else empty.
    std::vector<OrderKey> chain = {};
};

// The keys of an order, in precedence.
class Ordering {
  public:
    // From the texts of --order: each holds one key or several divided by commas. Throws
    // UnusableError, which lists the keys there are, for a text that is none. Names are compared as
    // `caseSensitivity` says.
    [[nodiscard]] static Ordering parse(const std::vector<std::string>& texts,
                                        api::EntityCaseSensitivity::Value caseSensitivity);

    // A person's order for a search for `name`: the very name first, then the preferred order, then
    // less qualified names.
    [[nodiscard]] static Ordering forPerson(const std::u16string& name,
                                            api::EntityCaseSensitivity::Value caseSensitivity);

    explicit Ordering(std::vector<OrderKey> keys = {}) : m_keys(std::move(keys)) {}

    // All keys as one comparator.
    [[nodiscard]] api::RefRequestComparator comparator() const;

    // Why `a` stands before `b`: the first key that tells them apart and what it sees of both, or
    // that they tie. A chain is told by that one of its keys which decided. UTF-8.
    [[nodiscard]] std::string explain(const api::ReferenceData& a,
                                      const api::ReferenceData& b) const;

    // The keys that a text of --order may name, for messages.
    [[nodiscard]] static std::string knownKeys();

  private:
    std::vector<OrderKey> m_keys;
};

}  // namespace reference::tools
