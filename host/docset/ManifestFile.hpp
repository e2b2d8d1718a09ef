// A manifest as a file, read and written by the same names of members. Internal: no public header
// includes it.
#pragma once

#include <optional>
#include <string>

#include <boost/json/object.hpp>

#include "docset/Fault.hpp"
#include "docset/Manifest.hpp"
#include "files/Folder.hpp"

namespace reference::docset {

// As readManifest(), for the manifest in the file `fileName` of the folder.
[[nodiscard]] std::optional<Manifest> readManifestFile(const files::Folder& root,
                                                       const std::string& fileName,
                                                       const FaultHandler& onFault);

// The members of the file.
[[nodiscard]] boost::json::object toJson(const Manifest& manifest);

}  // namespace reference::docset
