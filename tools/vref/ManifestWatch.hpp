#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace reference::tools {

// Notices when the manifest of a documentation set is replaced. By one thread.
class ManifestWatch {
  public:
    // Whether one of the manifests of the sets in these folders is another file, of another size or
    // written at another time, than when this was last asked, or the folders are others. The first
    // answer is yes. A manifest that is not there is like one that never changes.
    [[nodiscard]] bool hasChanged(const std::vector<std::filesystem::path>& roots);

  private:
    std::map<std::filesystem::path, std::string> m_stamps;
};

// Why the manifest of the set at `root` cannot be read, or an empty text when it can. A faulty
// product in it is no reason. UTF-8.
[[nodiscard]] std::string whyUnreadable(const std::filesystem::path& root);

}  // namespace reference::tools
