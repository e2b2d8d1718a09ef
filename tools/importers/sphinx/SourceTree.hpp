#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace reference::importers::sphinx {

// Why a page cannot be had; the text is a sentence without the page's name.
class PageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Read-only access to the files of one built tree. No name that is asked for leads to a file
// outside the tree, be it by "..", by an absolute name or by a symbolic link.
//
// Immutable after construction; any thread may call it.
class SourceTree {
  public:
    // `root` must name a folder; throws PageError where it does not.
    explicit SourceTree(const std::filesystem::path& root);

    // The whole content of the file `page`, a name relative to the root with "/" between its parts
    // as an inventory gives it. A name that is empty or ends in "/" means the index.html of that
    // folder; a name that no file has is tried a second time with its percent escapes decoded.
    // Throws PageError where there is no such file within the tree, where it cannot be read or has
    // more than 64 MiB.
    [[nodiscard]] std::string read(std::string_view page) const;

  private:
    [[nodiscard]] std::filesystem::path locate(std::string_view page) const;

    std::filesystem::path m_root;
};

}  // namespace reference::importers::sphinx
