#pragma once

#include <string>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include "foundation/core/export.hpp"

namespace reference::property {

// The head of a product's parsed documentation: which product it is and where its pages live. A
// value of the size of a pointer: copies share texts that never change. References from the getters
// stay valid until the object is changed or destroyed. Many threads may read one object.
class VELTRA_HOST_API HeaderInfo {
  public:
    // Empty texts.
    HeaderInfo() noexcept = default;

    // `referenceFileName` names the file that holds the product's items, as
    // DocResourceParser::getResourceFile takes it; `helpFolder` is the folder of the product's
    // pages below the help root; `shortName` the product's key; `displayName` what a reader sees;
    // `version` as the product writes it.
    HeaderInfo(std::u16string referenceFileName, std::u16string helpFolder,
               std::u16string shortName, std::u16string displayName, std::u16string version);

    [[nodiscard]] const std::u16string& getReferenceFileName() const noexcept {
        return texts().referenceFileName;
    }
    [[nodiscard]] const std::u16string& getHelpFolder() const noexcept {
        return texts().helpFolder;
    }
    [[nodiscard]] const std::u16string& getShortName() const noexcept { return texts().shortName; }
    [[nodiscard]] const std::u16string& getDisplayName() const noexcept {
        return texts().displayName;
    }
    [[nodiscard]] const std::u16string& getVersion() const noexcept { return texts().version; }

    // A header that is independent of this one.
    [[nodiscard]] HeaderInfo copy() const noexcept { return *this; }

    friend bool operator==(const HeaderInfo& a, const HeaderInfo& b) {
        return a.m_texts == b.m_texts || a.texts() == b.texts();
    }

  private:
    struct Texts : boost::intrusive_ref_counter<Texts, boost::thread_safe_counter> {
        Texts() = default;
        Texts(std::u16string newReferenceFileName, std::u16string newHelpFolder,
              std::u16string newShortName, std::u16string newDisplayName,
              std::u16string newVersion);

        friend bool operator==(const Texts& a, const Texts& b) {
            return a.referenceFileName == b.referenceFileName && a.helpFolder == b.helpFolder &&
                   a.shortName == b.shortName && a.displayName == b.displayName &&
                   a.version == b.version;
        }

        std::u16string referenceFileName;
        std::u16string helpFolder;
        std::u16string shortName;
        std::u16string displayName;
        std::u16string version;
    };

    [[nodiscard]] const Texts& texts() const noexcept;

    boost::intrusive_ptr<const Texts> m_texts;  // null: all of them are empty
};

}  // namespace reference::property
