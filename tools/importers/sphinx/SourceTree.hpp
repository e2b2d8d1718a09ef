#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "files/Folder.hpp"

namespace reference::importers::sphinx {

// What is wrong with a page: it is missing, leads out of the tree, is no file or too large. The
// text is a sentence without the page's name.
class PageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The system could not read a file that may be fine: no descriptor or memory is free, the disk
// fails, access is denied. The text is a sentence without the page's name. This is deliberately not
// a PageError: code that passes over faulty pages must not pass over this one.
class SystemFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Read-only access to the files of one built tree. No name leads to a file outside the tree,
// whether by "..", as an absolute name or through a symbolic link, and whatever is renamed or
// linked meanwhile.
//
// Constant after construction; any thread may call it.
class SourceTree {
  public:
    // `root` must name a folder; throws PageError where it does not.
    explicit SourceTree(const std::filesystem::path& root);

    // The whole content of the file `page`, a name relative to the root with "/" between its parts
    // as an inventory gives it. A name that is empty or ends in "/" means the index.html of that
    // folder; a name that no file has is tried a second time with its percent escapes decoded.
    // Throws PageError where there is no such regular file within the tree or it has more than
    // 64 MiB, and SystemFailure for every other error of the system and for a file that gets
    // shorter while it is read.
    [[nodiscard]] std::string read(std::string_view page) const;

  private:
    // Nothing, with `error` set, where the file cannot be read.
    [[nodiscard]] std::optional<std::string> find(std::string_view page,
                                                  std::error_code& error) const;

    files::Folder m_folder;
};

}  // namespace reference::importers::sphinx
