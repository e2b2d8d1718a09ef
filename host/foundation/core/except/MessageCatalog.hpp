#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/core/export.hpp"

namespace foundation::core::except {

// The texts behind message identifiers. The host's own are there from the start; a library adds
// those of the errors that it raises itself. Static functions only; any thread.
class VELTRA_HOST_API MessageCatalog {
  public:
    // The English text of `identifier` with `arguments` in the places {0}, {1}, … of it; a place
    // without an argument stays as it is. An identifier that is not in the catalogue is its own
    // text, with the arguments behind it.
    [[nodiscard]] static std::string getText(std::string_view identifier,
                                             std::span<const std::string> arguments);

    // Adds the English text of `identifier` (a catalogue, ":" and a key), with the places {0}, {1},
    // … for its arguments. It stays to the end of the process. May be called while libraries are
    // being loaded. Throws std::logic_error where the identifier has a text already, and
    // std::invalid_argument for an identifier without ":" or an empty text.
    static void addText(std::string identifier, std::string text);

    // All identifiers that there are texts for, in alphabetical order.
    [[nodiscard]] static std::vector<std::string> getIdentifiers();
};

}  // namespace foundation::core::except
