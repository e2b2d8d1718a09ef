#include "vref/ManifestWatch.hpp"

#include <sys/stat.h>
#include <utility>

#include "docset/Manifest.hpp"

namespace reference::tools {
namespace {

// A manifest is replaced by a rename, so that the new one is another file, even if the clock is too
// coarse to tell the two apart.
std::string stampOf(const std::filesystem::path& root) {
    struct stat status {};
    if (::stat((root / docset::manifestFileName).c_str(), &status) != 0)
        return "none";
    return std::to_string(status.st_dev) + " " + std::to_string(status.st_ino) + " " +
           std::to_string(status.st_size) + " " + std::to_string(status.st_mtim.tv_sec) + "." +
           std::to_string(status.st_mtim.tv_nsec);
}

}  // namespace

bool ManifestWatch::hasChanged(const std::vector<std::filesystem::path>& roots) {
    std::map<std::filesystem::path, std::string> stamps;
    for (const auto& root : roots)
        stamps.emplace(root, stampOf(root));
    return std::exchange(m_stamps, stamps) != stamps;
}

std::string whyUnreadable(const std::filesystem::path& root) {
    std::string reason;
    const auto manifest =
        docset::readManifest(root, [&](const docset::Fault& fault) { reason = fault.toString(); });
    return manifest ? std::string() : reason;
}

}  // namespace reference::tools
