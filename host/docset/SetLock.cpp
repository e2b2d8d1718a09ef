#include "docset/SetLock.hpp"

#include <cerrno>
#include <sys/file.h>
#include <system_error>

#include "docset/SetNames.hpp"

namespace reference::docset {

SetLock::SetLock(const files::Folder& root) : m_file(root.openOrMakeFile(lockFileName)) {
    while (::flock(m_file.number(), LOCK_EX) != 0)
        if (errno != EINTR)
            throw std::system_error(
                errno, std::generic_category(),
                (root.path() / lockFileName).string() + ": the documentation set cannot be locked");
}

}  // namespace reference::docset
