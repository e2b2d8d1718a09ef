#pragma once

#include <string>

#include "reference/api/ReferenceData.hpp"
#include "reference/api/export.hpp"

namespace reference::api::comparator {

// Puts results whose help folder is the given one before all others. Letter case counts.
//
// Comparing changes nothing and may run on any number of threads at once; one thread at a time may
// set a property, and none while another compares.
class VELTRA_REFERENCE_API ProductMatchComparator {
  public:
    // An empty name, which matches results without a help folder.
    ProductMatchComparator();
    explicit ProductMatchComparator(std::u16string productName);

    // Whether a goes before b.
    [[nodiscard]] bool operator()(const ReferenceData& a, const ReferenceData& b) const;

    // The help folder to match. The getter never returns null; its pointer is valid as long as this
    // object lives. The setter ignores null.
    [[nodiscard]] const std::u16string* getProductNameProperty() const noexcept {
        return &m_productName;
    }
    void setProductNameProperty(const std::u16string* productName);

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;

  private:
    [[nodiscard]] bool isMatch(const ReferenceData& data) const;

    std::u16string m_productName;
};

}  // namespace reference::api::comparator
