#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/object.hpp>

#include "reference/api/ReferenceData.hpp"
#include "reference/ask/Answer.hpp"
#include "vref/Documentation.hpp"
#include "vref/RpcParameters.hpp"

namespace reference::tools {

// Which members of a hit a client of version 2 wants. A plain value.
class HitFields {
  public:
    // What a list of hits shows: name, type, product, purpose, href, address, rung, change and
    // whether it is deprecated.
    [[nodiscard]] static HitFields brief();
    // These, the help folder, the note, and all members of the item.
    [[nodiscard]] static HitFields all();
    // The parameter "fields": a list of names, "all", or, where it is absent, `otherwise`. Throws
    // RpcError for a name that there is not.
    [[nodiscard]] static HitFields parse(RpcParameters& parameters, HitFields otherwise);

    [[nodiscard]] bool has(std::string_view field) const;
    [[nodiscard]] const std::vector<std::string>& names() const noexcept { return m_names; }
    void add(std::string_view field) { m_names.emplace_back(field); }

  private:
    explicit HitFields(std::vector<std::string> names) : m_names(std::move(names)) {}

    std::vector<std::string> m_names;
};

// A hit, and how it was found.
struct FoundHit {
    // The name by which it was found.
    std::u16string name;
    const api::ReferenceData& data;
    // By a question only. UTF-8.
    std::optional<std::string> rung = std::nullopt;
    std::optional<std::string> change = std::nullopt;
    // Why it stands before the next. UTF-8.
    std::optional<std::string> note = std::nullopt;
};

[[nodiscard]] FoundHit foundHit(const ask::Hit& hit);
// By a request: the name is that of the entity that was asked for or, where the text was no name,
// of the first.
[[nodiscard]] FoundHit foundHit(const api::ReferenceData& data, const std::u16string& asked);

// The members that are wanted and known, in the order of HitFields::all(). Throws what reading an
// item throws.
[[nodiscard]] boost::json::object toJson(const FoundHit& hit, const HitFields& fields,
                                         const Documentation& documentation);

}  // namespace reference::tools
