#pragma once

#include <utility>

#include "property/HeaderInfo.hpp"
#include "property/RefItem.hpp"
#include "reference/api/export.hpp"

namespace reference::api {

// One result of a search: an item of the documentation, with the header of the product that it was
// found in. One thread at a time may change an object, many may read it.
class VELTRA_REFERENCE_API ReferenceData {
  public:
    // A default header and a default item.
    ReferenceData() = default;
    ReferenceData(property::HeaderInfo header, property::RefItem item)
        : m_header(std::move(header)), m_item(std::move(item)) {}

    ReferenceData(ReferenceData&& other) noexcept = default;
    ReferenceData& operator=(ReferenceData&& other) noexcept = default;
    ~ReferenceData() = default;

    // Copies are made on purpose: call copy().
    ReferenceData(const ReferenceData&) = delete;
    ReferenceData& operator=(const ReferenceData&) = delete;

    // A result that is independent of this one: nothing that happens to either is seen in the
    // other. Texts, which never change, are shared.
    [[nodiscard]] ReferenceData copy() const;

    // References are valid until this object is changed or destroyed.
    [[nodiscard]] const property::HeaderInfo& getHeaderInfo() const noexcept { return m_header; }
    [[nodiscard]] const property::RefItem& getRefItem() const noexcept { return m_item; }

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;

  private:
    property::HeaderInfo m_header;
    property::RefItem m_item;
};

}  // namespace reference::api
