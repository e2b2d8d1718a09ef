// A request as the search sees it: read once, with all that follows from it. Internal: no public
// header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "docimage/searchForm.hpp"
#include "property/FunctionType.hpp"
#include "property/RefEntityType.hpp"

namespace reference::search {

// Types whose entities have members: classes, enumerations and interfaces.
[[nodiscard]] bool isClassLikeType(std::uint32_t type) noexcept;

// Whether the text occurs in a name as it stands, or in a purpose, which is lower-cased first
// unless case counts. An empty text occurs nowhere.
[[nodiscard]] bool isNameAndPurposeContentMatch(std::u16string_view searchText,
                                                std::u16string_view name,
                                                std::u16string_view purpose, bool caseSensitive);

// Every fact that is derived from a request, and the questions about single names, types and texts
// that decide what matches. An index proposes what may match; these questions confirm it.
// Immutable; any thread.
class ReferenceRequestExt {
  public:
    // What is asked for, as ReferenceRequest has it.
    struct Request {
        const std::u16string& text;
        std::span<const property::RefEntityType::Value> types;
        std::span<const std::u16string> products;
        bool isAllTextMatch = false;
        bool isCaseSensitive = true;
        bool isExactMatch = true;
    };

    // What the request refers to must outlive the object.
    explicit ReferenceRequestExt(const Request& request);
    ReferenceRequestExt(const ReferenceRequestExt&) = delete;  // made once, where it is used
    ReferenceRequestExt& operator=(const ReferenceRequestExt&) = delete;

    // The text, in lower case unless case counts, and the number of its dot-separated components.
    [[nodiscard]] const std::u16string& searchText() const noexcept {
        return m_isCaseSensitive ? m_text : m_folded;
    }
    [[nodiscard]] std::size_t componentCount() const noexcept { return m_componentCount; }
    [[nodiscard]] bool isAllTextMatch() const noexcept { return m_isAllTextMatch; }
    [[nodiscard]] bool isCaseSensitive() const noexcept { return m_isCaseSensitive; }
    [[nodiscard]] bool isExactMatch() const noexcept { return m_isExactMatch; }

    // The search form of the text, which that of a matching name ends with, and the form that every
    // text that holds it holds (see docimage/searchForm.hpp).
    [[nodiscard]] std::string_view nameForm() const noexcept { return toView(m_nameForm); }
    [[nodiscard]] std::string_view partForm() const noexcept {
        return m_hasHalves ? toView(m_partForm) : nameForm();
    }

    // The products that are asked for, by short name, with repetitions; none for all of them.
    [[nodiscard]] std::span<const std::u16string> products() const noexcept { return m_products; }

    // Whether any type is admitted.
    [[nodiscard]] bool admitsAllTypes() const noexcept { return m_types.empty(); }
    // Whether entities of this type are asked for.
    [[nodiscard]] bool isTypeMatch(std::uint32_t type) const noexcept;
    // Whether a record of these types is: some products file methods as functions that are called
    // like methods, and these count as methods.
    [[nodiscard]] bool isTypeAccepted(std::uint32_t type,
                                      std::uint32_t functionType) const noexcept;

    // Whether the candidate, folded unless case counts, is the name that a record of this type is
    // asked for by.
    [[nodiscard]] bool isEntityNameMatch(std::u16string_view candidate, std::uint32_t type) const;
    // The same for a name whose type does not matter.
    [[nodiscard]] bool isNameMatch(std::u16string_view candidate) const;

    // Whether the text occurs in the name, which is folded unless case counts, or in the purpose.
    [[nodiscard]] bool isNameAndPurposeMatch(std::u16string_view name,
                                             std::u16string_view purpose) const;

    // Whether the text occurs in this one; an empty text occurs in all.
    [[nodiscard]] bool isTextMatch(std::u16string_view text) const;

  private:
    static std::string_view toView(const docimage::FormBuffer& form) noexcept {
        return {form.data(), form.size()};
    }

    const bool m_isAllTextMatch;
    const bool m_isCaseSensitive;
    const bool m_isExactMatch;
    const bool m_hasType3;
    const std::u16string& m_text;
    const std::span<const property::RefEntityType::Value> m_types;
    const std::span<const std::u16string> m_products;
    std::u16string m_folded;  // empty where case counts
    std::size_t m_componentCount;
    docimage::FormBuffer m_nameForm;
    // Of the text without what may be half of a surrogate pair at its ends, where there is any.
    docimage::FormBuffer m_partForm;
    bool m_hasHalves = false;
};

}  // namespace reference::search
