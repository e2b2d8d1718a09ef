#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "files/Descriptor.hpp"
#include "files/FileStamp.hpp"
#include "foundation/core/export.hpp"

namespace reference::files {

// A folder that is held open, and everything below it: whatever is renamed or linked meanwhile,
// nothing outside it is read, written or removed. Reading follows links as long as they lead to
// something below the folder; changing follows none.
//
// Errors are std::error_code of the generic category, so that "does not exist" (std::errc::
// no_such_file_or_directory) can be told from what may pass (EIO, EMFILE, ENOMEM). What leads out
// of the folder is std::errc::cross_device_link.
//
// Any thread may call the const operations. Each object is used by one thread while it is moved.
// What ends the name of a file that is still being written. A process that is stopped may leave it
// behind.
inline constexpr std::string_view newFileEnding = ".new";

class VELTRA_HOST_API Folder {
  public:
    // Opens `path`; links on the way to it, and it itself as a link, are followed. Throws
    // std::system_error.
    explicit Folder(const std::filesystem::path& path);

    // The path by which the folder was opened, for messages.
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return m_path; }

    // Opens a regular file for reading. `relativePath` has its parts divided by '/'. A link may
    // lead anywhere below the folder: its target may be relative or absolute. Nothing, with
    // `error` set, where there is no such file; a folder gives std::errc::is_a_directory, a pipe,
    // socket or device std::errc::no_such_device_or_address. Never waits for a pipe. A call that a
    // signal interrupts is made again.
    [[nodiscard]] Descriptor openFile(std::string_view relativePath, std::error_code& error) const;

    // The whole content of such a file. A file of more than `maxFileSize` bytes gives
    // std::errc::file_too_large, and one that gets shorter meanwhile std::errc::io_error.
    [[nodiscard]] std::optional<std::string> readFile(std::string_view relativePath,
                                                      std::size_t maxFileSize,
                                                      std::error_code& error) const;

    // The state of such a file that is not reached by a link itself. Nothing where there is none.
    [[nodiscard]] std::optional<FileStamp> stampOf(const std::string& relativePath) const;

    // The operations below take the name of something that lies in the folder itself, without '/',
    // and throw std::system_error, whose text says which file it is.

    // The names of all that the folder holds, in no order.
    [[nodiscard]] std::vector<std::string> names() const;

    // The folder of that name; makeFolder makes it where it does not exist. A link is refused.
    [[nodiscard]] Folder openFolder(const std::string& name) const;
    [[nodiscard]] Folder makeFolder(const std::string& name) const;

    // A regular file, open for reading and writing, and made if it does not exist; what it holds is
    // kept. Meant for locks. A link is refused.
    [[nodiscard]] Descriptor openOrMakeFile(const std::string& name) const;

    // Makes a new file with this content and waits until the disk has it. A file or link that has
    // the name is removed first, not written into. Where the content cannot be written whole,
    // nothing of it is left.
    void writeFile(const std::string& name, std::string_view content) const;

    // The same, but whoever opens the file meanwhile finds the old one, none, or the new one,
    // whole: it is written under its name with `newFileEnding` and renamed.
    void replaceFile(const std::string& name, std::string_view content) const;

    // Renames a file of the folder, replacing one that has the new name.
    void rename(const std::string& name, const std::string& newName) const;

    // Removes a file or a link (not what it leads to).
    void remove(const std::string& name) const;

    // Waits until the disk has the folder's names as they are now.
    void flush() const;

  private:
    Folder(std::filesystem::path path, Descriptor descriptor);

    [[noreturn]] void fail(const std::string& name, int number, const char* what) const;
    void requireName(const std::string& name) const;

    std::filesystem::path m_path;
    Descriptor m_descriptor;
};

}  // namespace reference::files
