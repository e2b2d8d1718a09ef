#include "docset/SetLock.hpp"

#include <cerrno>
#include <sys/file.h>
#include <system_error>

#include "docset/SetNames.hpp"

namespace reference::docset {

SetLock::SetLock(const files::Folder& root, const OnWait& onWait)
    : m_file(root.openOrMakeFile(lockFileName)) {
    int operation = LOCK_EX | LOCK_NB;
    while (::flock(m_file.number(), operation) != 0) {
        if (errno == EWOULDBLOCK && operation != LOCK_EX) {
            operation = LOCK_EX;
            if (onWait)
                onWait();
        } else if (errno != EINTR) {
            throw std::system_error(
                errno, std::generic_category(),
                (root.path() / lockFileName).string() + ": the documentation set cannot be locked");
        }
    }
}

}  // namespace reference::docset
