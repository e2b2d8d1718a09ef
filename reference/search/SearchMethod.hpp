#pragma once

#include <cstdint>

namespace reference::search {

// What a request's text is compared with. Any other number searches like ReferenceSearch.
enum SearchMethod : std::uint32_t {
    ReferenceSearch = 0,       // the entity's name
    ClassEntitySearch = 1,     // the name of the class or of the member's class
    NameAndPurposeSearch = 2,  // a part of the name or of the purpose
    AllTextSearch = 3,         // nothing: every entity of the types is nominated
    PageNameSearch = 4,        // the whole href, with its fragment
};

}  // namespace reference::search
