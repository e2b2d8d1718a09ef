#include "docparser/fileParts.hpp"

#include <utility>

#include "docparser/DocParserException.hpp"
#include "docset/ContainedFile.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"

namespace reference::docparser {

namespace fs = std::filesystem;
using docset::Fault;
using property::HeaderInfo;

void throwFault(const Fault& fault) {
    throw DocParserException(fault);
}

void logFault(const Fault& fault) {
    const foundation::log::diagnostic_logger logger("docparser");
    logger.log(foundation::log::Warning, "left out: " + fault.toString());
}

void logPassedOver(const std::string& why) {
    const foundation::log::diagnostic_logger logger("docparser");
    logger.log(foundation::log::Information, "passed over: " + why);
}

std::optional<files::Folder> openForImages(const fs::path& root) {
    return docset::openRoot(root, {}, [](const Fault&) {});
}

void logReadAnew(const docimage::DamagedImage& damage) {
    const foundation::log::diagnostic_logger logger("docparser");
    logger.log(foundation::log::Warning, damage.what() + std::string(" Its file is read."));
}

HeaderInfo toHeaderInfo(const docset::ProductHeader& header, std::u16string referenceFileName) {
    return {std::move(referenceFileName), header.helpFolder, header.shortName, header.displayName,
            header.version};
}

}  // namespace reference::docparser
