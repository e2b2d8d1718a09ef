#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/core/export.hpp"

namespace foundation::core::except {

// The texts behind message identifiers. Static functions only; any thread.
class VELTRA_HOST_API MessageCatalog {
  public:
    // The English text of `identifier` with `arguments` in the places {0}, {1}, … of it; a place
    // without an argument stays as it is. An identifier that is not in the catalogue is its own
    // text, with the arguments behind it.
    [[nodiscard]] static std::string getText(std::string_view identifier,
                                             std::span<const std::string> arguments);

    // All identifiers that there are texts for, in alphabetical order.
    [[nodiscard]] static std::vector<std::string> getIdentifiers();
};

}  // namespace foundation::core::except
