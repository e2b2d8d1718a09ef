#include "sphinx/SourceTree.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t maxFileSize = std::uintmax_t{64} << 20U;

[[noreturn]] void failWith(const std::error_code& error) {
    throw SystemFailure("The file cannot be read: " + error.message() + ".");
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

// Whether the error says that no file has the name. Every other one may be over at the next try.
bool meansAbsent(const std::error_code& error) {
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory ||
           error == std::errc::filename_too_long ||
           error == std::errc::too_many_symbolic_link_levels;
}

// A file that is open for reading. Opening does not wait for the other end of a pipe.
class OpenFile {
  public:
    explicit OpenFile(const fs::path& file) {
        do
            m_descriptor = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        while (m_descriptor < 0 && errno == EINTR);
        if (m_descriptor < 0 && meansAbsent(lastError()))
            throw PageError("There is no such file in the tree.");
        if (m_descriptor < 0)
            failWith(lastError());
    }
    ~OpenFile() { ::close(m_descriptor); }
    OpenFile(const OpenFile&) = delete;  // one owner closes
    OpenFile& operator=(const OpenFile&) = delete;

    // Where the file lies, whatever its name leads to by now.
    [[nodiscard]] fs::path place() const {
        std::error_code error;
        fs::path place = fs::read_symlink("/proc/self/fd/" + std::to_string(m_descriptor), error);
        if (error)
            throw SystemFailure(
                "The system does not tell where the open file lies: " + error.message() + ".");
        return place;
    }

    [[nodiscard]] std::string content() const {
        struct ::stat status = {};
        if (::fstat(m_descriptor, &status) != 0)
            failWith(lastError());
        if (!S_ISREG(status.st_mode))
            throw PageError("The name is not that of a regular file.");
        const auto size = static_cast<std::uintmax_t>(status.st_size);
        if (size > maxFileSize)
            throw PageError("The file has " + std::to_string(size) + " bytes; at most " +
                            std::to_string(maxFileSize) + " are read.");
        std::string bytes(static_cast<std::size_t>(size), '\0');
        for (std::size_t done = 0; done < bytes.size();) {
            const ::ssize_t count = ::read(m_descriptor, bytes.data() + done, bytes.size() - done);
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                failWith(lastError());
            if (count == 0)
                throw SystemFailure("The file became shorter while it was read.");
            done += static_cast<std::size_t>(count);
        }
        return bytes;
    }

  private:
    int m_descriptor = -1;
};

void checkName(std::string_view page) {
    const fs::path path(page);
    if (path.is_absolute() || page.starts_with('/'))
        throw PageError("The name is absolute; it must be relative to the tree's root.");
    if (page.find('\0') != std::string_view::npos || page.find('\\') != std::string_view::npos)
        throw PageError("The name holds a character that no page name has.");
    if (std::ranges::find(path, fs::path("..")) != path.end())
        throw PageError("The name holds \"..\"; it must stay within the tree.");
}

bool isWithin(const fs::path& file, const fs::path& root) {
    return std::ranges::mismatch(root, file).in1 == root.end();
}

}  // namespace

SourceTree::SourceTree(const fs::path& root) {
    std::error_code error;
    m_root = fs::canonical(root, error);
    if (error || !fs::is_directory(m_root, error))
        throw PageError("\"" + root.string() + "\" is not a folder that can be read" +
                        (error ? ": " + error.message() + "." : "."));
}

fs::path SourceTree::locate(std::string_view page) const {
    checkName(page);
    std::string name(page);
    if (name.empty() || name.ends_with('/'))
        name += "index.html";
    std::error_code error;
    fs::path file = fs::canonical(m_root / name, error);
    if (error && !meansAbsent(error))
        failWith(error);
    if (error)
        return {};
    if (!isWithin(file, m_root))
        throw PageError("The name is a link that leads out of the tree.");
    return file;
}

std::string SourceTree::read(std::string_view page) const {
    fs::path file = locate(page);
    if (file.empty() && page.find('%') != std::string_view::npos)
        file = locate(percentDecoded(page));
    if (file.empty())
        throw PageError("There is no such file in the tree.");
    // A link may have been changed since its target was looked at, so what is open is looked at
    // too.
    const OpenFile open(file);
    if (!isWithin(open.place(), m_root))
        throw PageError("The name is a link that leads out of the tree.");
    return open.content();
}

}  // namespace reference::importers::sphinx
