#pragma once

#include <string>

#include "foundation/core/export.hpp"

namespace reference::property {

// The head of a product's parsed documentation: which product it is and where its pages live. A
// plain value; references from the getters stay valid until the object is changed or destroyed.
class VELTRA_HOST_API HeaderInfo {
  public:
    HeaderInfo() = default;

    // `referenceFileName` names the file that holds the product's items, as
    // DocResourceParser::getResourceFile takes it; `helpFolder` is the folder of the product's
    // pages below the help root; `shortName` the product's key; `displayName` what a reader sees;
    // `version` as the product writes it.
    HeaderInfo(std::u16string referenceFileName, std::u16string helpFolder,
               std::u16string shortName, std::u16string displayName, std::u16string version);

    [[nodiscard]] const std::u16string& getReferenceFileName() const noexcept {
        return m_referenceFileName;
    }
    [[nodiscard]] const std::u16string& getHelpFolder() const noexcept { return m_helpFolder; }
    [[nodiscard]] const std::u16string& getShortName() const noexcept { return m_shortName; }
    [[nodiscard]] const std::u16string& getDisplayName() const noexcept { return m_displayName; }
    [[nodiscard]] const std::u16string& getVersion() const noexcept { return m_version; }

    // A deep copy, sharing no storage with this object.
    [[nodiscard]] HeaderInfo copy() const { return *this; }

    friend bool operator==(const HeaderInfo&, const HeaderInfo&) = default;

  private:
    std::u16string m_referenceFileName;
    std::u16string m_helpFolder;
    std::u16string m_shortName;
    std::u16string m_displayName;
    std::u16string m_version;
};

}  // namespace reference::property
