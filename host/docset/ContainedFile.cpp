#include "docset/ContainedFile.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace reference::docset {
namespace {

namespace fs = std::filesystem;

bool isWithin(const fs::path& root, const fs::path& file) {
    return std::mismatch(root.begin(), root.end(), file.begin(), file.end()).first == root.end();
}

// A file descriptor that closes itself; negative, with errno set, when the file cannot be opened.
class Descriptor {
  public:
    Descriptor(const fs::path& file, int flags)
        : m_number(::open(file.c_str(), flags | O_CLOEXEC)) {}
    Descriptor(const Descriptor&) = delete;  // one owner closes
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (m_number >= 0)
            ::close(m_number);
    }

    [[nodiscard]] int number() const noexcept { return m_number; }

  private:
    int m_number;
};

// Fills `bytes` from the file; false when there are fewer or the reading fails.
bool readWhole(int descriptor, std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ::ssize_t count = ::read(descriptor, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

}  // namespace

std::optional<std::string> whyNotContained(std::string_view relativePath) {
    if (relativePath.empty())
        return "The file name is empty; it must be a path relative to the documentation root.";
    if (relativePath.find('\0') != std::string_view::npos)
        return "The file name holds a zero byte.";
    if (relativePath.front() == '/')
        return "The file name is absolute; it must be relative to the documentation root.";
    // By hand: a path of the file system library has no empty part between two slashes.
    for (std::size_t start = 0; start <= relativePath.size();) {
        const auto end = std::min(relativePath.find('/', start), relativePath.size());
        const auto part = relativePath.substr(start, end - start);
        start = end + 1;
        if (part == "..")
            return "The file name leads out of its folder (\"..\"); it must stay below the "
                   "documentation root.";
        if (part.empty() || part == ".")
            return "The file name has an empty part; divide folders and file by single slashes.";
    }
    return std::nullopt;
}

std::optional<std::string> readContainedFile(const fs::path& root, std::string_view relativePath,
                                             const FaultHandler& onFault) {
    const fs::path file = root / fs::path(relativePath);
    const auto fail = [&](std::string problem) {
        onFault({.file = file.string(), .problem = std::move(problem)});
        return std::nullopt;
    };

    if (auto reason = whyNotContained(relativePath))
        return fail(std::move(*reason));

    // Links are followed before the comparison, so that a link may point anywhere below the root
    // and nowhere else.
    std::error_code error;
    const fs::path realRoot = fs::canonical(root, error);
    if (error)
        return fail("The documentation root cannot be opened: " + error.message() + ".");
    const fs::path realFile = fs::canonical(file, error);
    if (error == std::errc::no_such_file_or_directory)
        return fail("The file does not exist.");
    if (error)
        return fail("The file cannot be opened: " + error.message() + ".");
    if (!isWithin(realRoot, realFile))
        return fail("The file is a link that leads out of the documentation root.");

    // Without waiting for the other end of a pipe.
    const Descriptor descriptor(realFile, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (descriptor.number() < 0 && errno == ENOENT)
        return fail("The file does not exist.");
    if (descriptor.number() < 0)
        return fail(std::string("The file cannot be opened: ") + std::strerror(errno) + ".");

    // Asked of what was opened: the name may lead to a later edition by now.
    struct ::stat status = {};
    if (::fstat(descriptor.number(), &status) != 0)
        return fail(std::string("The file cannot be read: ") + std::strerror(errno) + ".");
    if (!S_ISREG(status.st_mode))
        return fail("This is not a regular file.");
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > largestFile)
        return fail("The file has " + std::to_string(size) + " bytes; at most " +
                    std::to_string(largestFile) + " are read.");

    std::string bytes(size, '\0');
    if (!readWhole(descriptor.number(), bytes))
        return fail("The file could not be read to its end.");
    return bytes;
}

}  // namespace reference::docset
