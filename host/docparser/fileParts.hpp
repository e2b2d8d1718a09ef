// What reading lookup files and reading reference files have in common. Internal: no public header
// includes it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "docimage/Image.hpp"
#include "docset/Fault.hpp"
#include "docset/ProductDocumentation.hpp"
#include "files/Folder.hpp"
#include "property/HeaderInfo.hpp"

namespace reference::docparser {

// Ends a reading at its first fault.
[[noreturn]] void throwFault(const docset::Fault& fault);

// Logs a fault that need not fail a whole request.
void logFault(const docset::Fault& fault);

// Logs why an image is not used. The file that it was made from is read, so nothing is lost.
void logPassedOver(const std::string& why);

// Logs that an image that is in use is damaged, and that its file is read in its place.
void logReadAnew(const docimage::DamagedImage& damage);

// The folder of images. Nothing where it cannot be opened: that is reported when a file in it is
// read.
[[nodiscard]] std::optional<files::Folder> openForImages(const std::filesystem::path& root);

[[nodiscard]] property::HeaderInfo toHeaderInfo(const docset::ProductHeader& header,
                                                std::u16string referenceFileName);

}  // namespace reference::docparser
