#include "property/HeaderInfo.hpp"

#include <utility>

#include "foundation/core/NeverDestroyed.hpp"

namespace reference::property {

HeaderInfo::Texts::Texts(std::u16string newReferenceFileName, std::u16string newHelpFolder,
                         std::u16string newShortName, std::u16string newDisplayName,
                         std::u16string newVersion)
    : referenceFileName(std::move(newReferenceFileName)),
      helpFolder(std::move(newHelpFolder)),
      shortName(std::move(newShortName)),
      displayName(std::move(newDisplayName)),
      version(std::move(newVersion)) {}

HeaderInfo::HeaderInfo(std::u16string referenceFileName, std::u16string helpFolder,
                       std::u16string shortName, std::u16string displayName, std::u16string version)
    : m_texts(new Texts(std::move(referenceFileName), std::move(helpFolder), std::move(shortName),
                        std::move(displayName), std::move(version))) {}

const HeaderInfo::Texts& HeaderInfo::texts() const noexcept {
    static const foundation::core::NeverDestroyed<Texts> empty;
    return m_texts ? *m_texts : *empty;
}

}  // namespace reference::property
