#include "files/Folder.hpp"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "files/openBeneath.hpp"

namespace reference::files {
namespace {

namespace fs = std::filesystem;

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

std::error_code toErrorCode(int number) {
    return {number, std::generic_category()};
}

// openat(2), repeated where a signal interrupts it. A negative number: not opened, for the reason
// in errno.
int openAt(int folder, const char* name, int flags, ::mode_t mode = 0) {
    int number = -1;
    do
        number = ::openat(folder, name, flags, mode);
    while (number < 0 && errno == EINTR);
    return number;
}

// fsync(2), likewise. 0, or the number of the error.
int flushFile(int descriptor) {
    while (::fsync(descriptor) != 0)
        if (errno != EINTR)
            return errno;
    return 0;
}

// 0, or the number of the error for what is no regular file.
int whyNotRegular(const struct ::stat& status) {
    if (S_ISREG(status.st_mode))
        return 0;
    return S_ISDIR(status.st_mode) ? EISDIR : ENXIO;
}

// Fills `bytes` from the file. 0, or the number of the error; EIO when there are fewer.
int readWhole(int descriptor, std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ::ssize_t count = ::read(descriptor, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count < 0 ? errno : EIO;
        done += static_cast<std::size_t>(count);
    }
    return 0;
}

// What is written at once is kept together in the system's memory, and a process that maps the file
// and looks at one page of it has all of that counted as its own.
constexpr std::size_t writtenAtOnce = std::size_t{64} * 1024;

// 0, or the number of the error.
int writeWhole(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ::ssize_t count =
            ::write(descriptor, bytes.data(), std::min(bytes.size(), writtenAtOnce));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
}

}  // namespace

Descriptor::~Descriptor() {
    if (m_number >= 0)
        ::close(m_number);
}

Folder::Folder(const fs::path& path)
    : m_path(path), m_descriptor(openAt(AT_FDCWD, path.c_str(), folderFlags)) {
    if (!m_descriptor.isOpen())
        fail({}, errno, "the folder cannot be opened");
}

Folder::Folder(fs::path path, Descriptor descriptor)
    : m_path(std::move(path)), m_descriptor(std::move(descriptor)) {}

void Folder::fail(const std::string& name, int number, const char* what) const {
    struct ::stat status = {};
    const bool isLink =
        !name.empty() &&
        ::fstatat(m_descriptor.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISLNK(status.st_mode);
    std::string text = (name.empty() ? m_path : m_path / name).string() + ": " + what;
    if (isLink)
        text += " because it is a link, and links are not followed here";
    throw std::system_error(toErrorCode(number), text);
}

void Folder::requireName(const std::string& name) const {
    const bool isName = !name.empty() && name != "." && name != ".." &&
                        name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
    if (!isName)
        throw std::system_error(toErrorCode(EINVAL), m_path.string() + ": \"" + name +
                                                         "\" is not the name of something in it");
}

Descriptor Folder::openFile(std::string_view relativePath, std::error_code& error) const {
    Descriptor file;
    do
        file = openBeneath(m_descriptor.number(), relativePath, Resolver::System, error);
    while (error == std::errc::interrupted);
    if (!file.isOpen())
        return {};
    struct ::stat status = {};
    const int problem = ::fstat(file.number(), &status) != 0 ? errno : whyNotRegular(status);
    error = problem == 0 ? std::error_code() : toErrorCode(problem);
    return problem == 0 ? std::move(file) : Descriptor();
}

std::optional<std::string> Folder::readFile(std::string_view relativePath, std::size_t maxFileSize,
                                            std::error_code& error) const {
    const Descriptor file = openFile(relativePath, error);
    if (!file.isOpen())
        return std::nullopt;
    struct ::stat status = {};
    int problem = ::fstat(file.number(), &status) == 0 ? 0 : errno;
    const auto size = static_cast<std::size_t>(status.st_size);
    if (problem == 0 && size > maxFileSize)
        problem = EFBIG;
    std::string bytes(problem == 0 ? size : 0, '\0');
    if (problem == 0)
        problem = readWhole(file.number(), bytes);
    if (problem == 0)
        return bytes;
    error = toErrorCode(problem);
    return std::nullopt;
}

std::optional<FileStamp> Folder::stampOf(const std::string& relativePath) const {
    struct ::stat status = {};
    if (::fstatat(m_descriptor.number(), relativePath.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        whyNotRegular(status) != 0)
        return std::nullopt;
    return FileStamp::of(status);
}

std::vector<std::string> Folder::names() const {
    // A descriptor of its own, because closing the stream closes it.
    const int number = openAt(m_descriptor.number(), ".", folderFlags);
    const auto close = [](::DIR* stream) { ::closedir(stream); };
    const std::unique_ptr<::DIR, decltype(close)> stream(number < 0 ? nullptr : ::fdopendir(number),
                                                         close);
    if (!stream) {
        const int problem = errno;
        const Descriptor unused(number);
        fail({}, problem, "the folder cannot be listed");
    }
    std::vector<std::string> all;
    for (errno = 0; const ::dirent* entry = ::readdir(stream.get()); errno = 0) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            all.emplace_back(name);
    }
    if (errno != 0)
        fail({}, errno, "the folder cannot be listed");
    return all;
}

Folder Folder::openFolder(const std::string& name) const {
    requireName(name);
    Descriptor folder(openAt(m_descriptor.number(), name.c_str(), folderFlags | O_NOFOLLOW));
    if (!folder.isOpen())
        fail(name, errno, "the folder cannot be opened");
    return {m_path / name, std::move(folder)};
}

Folder Folder::makeFolder(const std::string& name) const {
    requireName(name);
    if (::mkdirat(m_descriptor.number(), name.c_str(), 0777) != 0 && errno != EEXIST)
        fail(name, errno, "the folder cannot be created");
    return openFolder(name);
}

Descriptor Folder::openOrMakeFile(const std::string& name) const {
    requireName(name);
    Descriptor file(openAt(m_descriptor.number(), name.c_str(),
                           O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                           0644));
    if (!file.isOpen())
        fail(name, errno, "the file cannot be opened");
    struct ::stat status = {};
    const int problem = ::fstat(file.number(), &status) != 0 ? errno : whyNotRegular(status);
    if (problem != 0)
        fail(name, problem, "this is not a regular file");
    return file;
}

void Folder::writeFile(const std::string& name, std::string_view content) const {
    requireName(name);
    if (::unlinkat(m_descriptor.number(), name.c_str(), 0) != 0 && errno != ENOENT)
        fail(name, errno, "the file cannot be replaced");
    Descriptor file(openAt(m_descriptor.number(), name.c_str(),
                           O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file.isOpen())
        fail(name, errno, "the file cannot be created");
    // Half a file is of no use, and keeps a full disk full.
    const auto giveUp = [&](int problem, const char* what) {
        ::unlinkat(m_descriptor.number(), name.c_str(), 0);
        fail(name, problem, what);
    };
    if (const int problem = writeWhole(file.number(), content); problem != 0)
        giveUp(problem, "the file could not be written");
    if (const int problem = flushFile(file.number()); problem != 0)
        giveUp(problem, "the file could not be written to the disk");
}

void Folder::replaceFile(const std::string& name, std::string_view content) const {
    const std::string newName = name + std::string(newFileEnding);
    writeFile(newName, content);
    try {
        rename(newName, name);
    } catch (...) {
        ::unlinkat(m_descriptor.number(), newName.c_str(), 0);
        throw;
    }
}

void Folder::rename(const std::string& name, const std::string& newName) const {
    requireName(name);
    requireName(newName);
    const int folder = m_descriptor.number();
    if (::renameat(folder, name.c_str(), folder, newName.c_str()) != 0) {
        const int problem = errno;
        throw std::system_error(
            toErrorCode(problem),
            (m_path / name).string() + ": the file cannot be renamed to " + newName);
    }
}

void Folder::remove(const std::string& name) const {
    requireName(name);
    if (::unlinkat(m_descriptor.number(), name.c_str(), 0) != 0)
        fail(name, errno, "the file cannot be removed");
}

void Folder::flush() const {
    if (const int problem = flushFile(m_descriptor.number()); problem != 0)
        fail({}, problem, "the folder could not be written to the disk");
}

}  // namespace reference::files
