#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace reference::bench {

// A new folder that goes with this object.
class TemporaryFolder {
  public:
    // Throws std::system_error where it cannot be made.
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "veltra-bench-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::system_error(errno, std::generic_category(), "Cannot make " + pattern);
        m_path = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;  // one object removes the folder
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

  private:
    std::filesystem::path m_path;
};

}  // namespace reference::bench
