#include "property/HeaderInfo.hpp"

#include <utility>

namespace reference::property {

HeaderInfo::HeaderInfo(std::u16string referenceFileName, std::u16string helpFolder,
                       std::u16string shortName, std::u16string displayName, std::u16string version)
    : m_referenceFileName(std::move(referenceFileName)),
      m_helpFolder(std::move(helpFolder)),
      m_shortName(std::move(shortName)),
      m_displayName(std::move(displayName)),
      m_version(std::move(version)) {}

}  // namespace reference::property
