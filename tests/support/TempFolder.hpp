#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace reference::tests {

// A folder of its own for one test, removed with all it holds when the test ends.
class TempFolder {
  public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;  // there is one folder to remove
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return m_path; }

    // Writes a file, given by its path below this folder; makes the folders on the way.
    void write(std::string_view relativePath, std::string_view content) const;

    // The content of a file below this folder.
    [[nodiscard]] std::string read(std::string_view relativePath) const;

  private:
    std::filesystem::path m_path;
};

}  // namespace reference::tests
