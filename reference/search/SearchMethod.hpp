// What the text of a request is compared with. Internal: no public header includes it.
#pragma once

#include <cstdint>

namespace reference::search {

// The numbers of ReferenceCacheManager::SearchMethod, which says what each means.
enum SearchMethod : std::uint32_t {
    ReferenceSearch = 0,
    ClassEntitySearch = 1,
    NameAndPurposeSearch = 2,
    AllTextSearch = 3,
    PageNameSearch = 4,
};

}  // namespace reference::search
