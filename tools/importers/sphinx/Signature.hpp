#pragma once

#include <string>

#include "sphinx/Facts.hpp"
#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// Operations on the signature lines of descriptions. All may be called from any thread.

// Whether the node is a <dl> that describes objects, not a list of fields or of definitions.
[[nodiscard]] bool isObjectDescription(Node node);

// Reads one signature line, a <dt> of an object description. `objects` stays empty.
[[nodiscard]] SignatureFacts readSignature(Node dt);

}  // namespace reference::importers::sphinx
