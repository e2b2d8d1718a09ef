#include "files/openBeneath.hpp"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <linux/openat2.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include <climits>

namespace reference::files {
namespace {

// As many as the system follows in one path.
constexpr int maxLinks = 40;

// How often a path is tried again whose last part became a link after it was looked at.
constexpr int maxAttempts = 100;

// Without waiting for the other end of a pipe, and without making a terminal the process's own.
constexpr int readFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

std::error_code codeOf(int number) {
    return {number, std::generic_category()};
}

const std::error_code leadsOut = std::make_error_code(std::errc::cross_device_link);

Descriptor openBySystem(int folder, const std::string& path, std::error_code& error) {
    ::open_how how = {};
    how.flags = static_cast<unsigned>(readFlags);
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    Descriptor file(
        static_cast<int>(::syscall(SYS_openat2, folder, path.c_str(), &how, sizeof how)));
    error = file.isOpen() ? std::error_code() : codeOf(errno);
    return file;
}

// Whether the system's answer says nothing of the file. It lacks the call or a filter forbids it
// (ENOSYS, EPERM), it gave up because something was renamed meanwhile (EAGAIN), or it declined a
// link that may yet lead below the folder, such as an absolute one (EXDEV, ELOOP).
bool isUndecided(const std::error_code& error) {
    for (const int number : {ENOSYS, EPERM, EAGAIN, EXDEV, ELOOP})
        if (error == codeOf(number))
            return true;
    return false;
}

// The parts of `path` in reverse, so that the next one is the last; an absolute path begins with
// an empty part.
std::vector<std::string> partsReversed(std::string_view path) {
    std::vector<std::string> parts;
    for (std::size_t end = path.size();;) {
        const auto slash = path.substr(0, end).rfind('/');
        const std::size_t start = slash == std::string_view::npos ? 0 : slash + 1;
        parts.emplace_back(path.substr(start, end - start));
        if (slash == std::string_view::npos)
            return parts;
        end = slash;
    }
}

// One walk along a path, part by part. Where it stands is an open descriptor, so that a rename
// cannot move it elsewhere. Outside the folder it goes through folders and links without opening
// them for reading, because the way of a link may lead back in.
class Walk {
  public:
    explicit Walk(int folder) : m_folder(folder) {}

    // Gives nothing without an error when the last part became a link meanwhile.
    Descriptor open(const std::string& path, std::error_code& error) {
        error = {};
        if (::fstat(m_folder, &m_root) != 0)
            return fail(errno, error);
        m_left = partsReversed(path);
        while (!m_left.empty()) {
            const std::string part = std::exchange(m_left.back(), {});
            m_left.pop_back();
            if (part.empty() || part == ".")
                continue;
            if (part == "..") {
                error = goUp();
                if (error)
                    return {};
                continue;
            }
            Descriptor next(::openat(here(), part.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
            struct ::stat status = {};
            if (!next.isOpen() || ::fstat(next.number(), &status) != 0)
                return fail(errno, error);
            if (S_ISLNK(status.st_mode)) {
                error = follow(next);
                if (error)
                    return {};
                continue;
            }
            if (!isLast() && !S_ISDIR(status.st_mode))
                return fail(ENOTDIR, error);
            if (isLast() && !isOutside(status))
                return openLast(part, error);
            goInto(std::move(next), status);
        }
        // The path ends in "..", or in a link to the folder itself.
        if (m_isOutside)
            return fail(EXDEV, error);
        Descriptor file(::openat(here(), ".", readFlags));
        return file.isOpen() ? std::move(file) : fail(errno, error);
    }

  private:
    [[nodiscard]] int here() const {
        if (m_isOutside)
            return m_outside.number();
        return m_inside.empty() ? m_folder : m_inside.back().number();
    }

    // Outside the folder every error is the same: the path leads out.
    Descriptor fail(int number, std::error_code& error) const {
        error = m_isOutside ? leadsOut : codeOf(number);
        return {};
    }

    [[nodiscard]] bool isLast() const { return m_left.empty(); }

    [[nodiscard]] bool isRoot(const struct ::stat& status) const {
        return status.st_dev == m_root.st_dev && status.st_ino == m_root.st_ino;
    }

    // Whether what was reached from here, with this status, lies outside.
    [[nodiscard]] bool isOutside(const struct ::stat& status) const {
        return m_isOutside || isRoot(status);
    }

    Descriptor openLast(const std::string& part, std::error_code& error) const {
        // Opened by name, because a descriptor that only marks a place (O_PATH) cannot be read.
        Descriptor file(::openat(here(), part.c_str(), readFlags | O_NOFOLLOW));
        if (!file.isOpen() && errno != ELOOP)
            error = codeOf(errno);
        return file;
    }

    std::error_code follow(const Descriptor& link) {
        if (++m_links > maxLinks)
            return m_isOutside ? leadsOut : codeOf(ELOOP);
        std::string target(PATH_MAX, '\0');
        const ::ssize_t size = ::readlinkat(link.number(), "", target.data(), target.size());
        if (size <= 0)
            return codeOf(size < 0 ? errno : ENOENT);
        target.resize(static_cast<std::size_t>(size));
        for (auto& part : partsReversed(target))
            m_left.push_back(std::move(part));
        return target.front() == '/' ? goOutside(AT_FDCWD, "/") : std::error_code();
    }

    std::error_code goUp() {
        if (m_isOutside)
            return goOutside(m_outside.number(), "..");
        if (m_inside.empty())
            return goOutside(m_folder, "..");
        m_inside.pop_back();
        return {};
    }

    std::error_code goOutside(int from, const char* part) {
        Descriptor next(::openat(from, part, O_PATH | O_DIRECTORY | O_CLOEXEC));
        struct ::stat status = {};
        if (!next.isOpen() || ::fstat(next.number(), &status) != 0)
            return leadsOut;
        m_isOutside = true;
        goInto(std::move(next), status);
        return {};
    }

    // Goes on from `next`, which may be the folder itself, reached by a way around it.
    void goInto(Descriptor next, const struct ::stat& status) {
        if (isRoot(status)) {
            m_isOutside = false;
            m_inside.clear();
            m_outside = Descriptor();
        } else if (m_isOutside) {
            m_outside = std::move(next);
        } else {
            m_inside.push_back(std::move(next));
        }
    }

    const int m_folder;
    struct ::stat m_root = {};
    std::vector<std::string> m_left;   // of the path, in reverse
    std::vector<Descriptor> m_inside;  // the folders on the way from the root's child to here
    Descriptor m_outside;
    bool m_isOutside = false;
    int m_links = 0;
};

Descriptor openByHand(int folder, const std::string& path, std::error_code& error) {
    for (int attempt = 0; attempt < maxAttempts; ++attempt) {
        Descriptor file = Walk(folder).open(path, error);
        if (file.isOpen() || error)
            return file;
    }
    error = codeOf(ELOOP);
    return {};
}

}  // namespace

Descriptor openBeneath(int folder, std::string_view relativePath, Resolver resolver,
                       std::error_code& error) {
    if (relativePath.empty() || relativePath.find('\0') != std::string_view::npos) {
        error = codeOf(relativePath.empty() ? ENOENT : EINVAL);
        return {};
    }
    if (relativePath.front() == '/') {
        error = leadsOut;
        return {};
    }
    const std::string path(relativePath);
    if (resolver == Resolver::System) {
        Descriptor file = openBySystem(folder, path, error);
        if (file.isOpen() || !isUndecided(error))
            return file;
    }
    return openByHand(folder, path, error);
}

}  // namespace reference::files
