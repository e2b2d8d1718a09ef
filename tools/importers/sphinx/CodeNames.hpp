#pragma once

#include <string_view>

#include "sphinx/Facts.hpp"
#include "sphinx/Node.hpp"

namespace reference::importers::sphinx {

// What all code on a page, examples and sessions of an interpreter, imports under another name and
// assigns to variables. May be called from any thread.
[[nodiscard]] CodeNames codeNamesOf(Node page);

// Adds what a piece of Python code says of names; code of other languages says nothing of that
// form.
//
// An import counts where the whole statement is one: `import numpy as np, pandas as pd`,
// `from matplotlib import pyplot as plt`, with or without brackets around the list. A name that is
// imported under its own last component is no alias. Prompts are passed over.
void addCodeNames(std::string_view code, CodeNames& names);

}  // namespace reference::importers::sphinx
