// The documentation that ships with the library, as what is asked.
#pragma once

#include <memory>

#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"

namespace reference::fuzz {

// From the first call on, the library reads the shipped set.
inline void readShippedSet() {
    static const bool isRead = [] {
        docparser::DocResourceParser::setSource(std::make_shared<docparser::FileDocSource>(
            [] { return docparser::DocumentationLocation{.docRoot = VELTRA_SHIPPED_SET}; }));
        return true;
    }();
    static_cast<void>(isRead);
}

}  // namespace reference::fuzz
