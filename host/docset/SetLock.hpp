// Keeps other processes from changing a documentation set. Internal: no public header includes it.
#pragma once

#include "docset/OnWait.hpp"
#include "files/Folder.hpp"

namespace reference::docset {

// Held from construction to destruction; waits for the process that holds it. The lock file is made
// where there is none, and stays.
class SetLock {
  public:
    // Throws std::system_error, and what `onWait` throws.
    SetLock(const files::Folder& root, const OnWait& onWait);

  private:
    files::Descriptor m_file;
};

}  // namespace reference::docset
