#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace reference::tools {

// Notices when the manifest of a documentation set is replaced. Used by one thread.
class ManifestWatch {
  public:
    // Whether anything has changed since the last call: the folders, or in one of them the
    // manifest, which is then another file or has another size or modification time. The first call
    // returns true. A missing manifest counts as unchanged.
    [[nodiscard]] bool hasChanged(const std::vector<std::filesystem::path>& roots);

  private:
    std::map<std::filesystem::path, std::string> m_stamps;
};

// Why the manifest of the set at `root` cannot be read, or an empty text when it can. A faulty
// product in it does not count. UTF-8.
[[nodiscard]] std::string whyUnreadable(const std::filesystem::path& root);

}  // namespace reference::tools
