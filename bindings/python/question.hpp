// Questions of scripts.
#pragma once

#include <cstddef>
#include <pybind11/pybind11.h>
#include <string>
#include <vector>

namespace veltra::python {

// What the question finds: a list of hits, each (name, rung, change, result), how many there are
// altogether, how many the filters turned away, and the first of these as hits. Other Python
// threads run meanwhile. Throws QuestionError of the package, and ValueError for a type that there
// is not.
[[nodiscard]] pybind11::tuple ask(const std::u16string& question, std::size_t limit,
                                  const std::vector<std::u16string>& prefer,
                                  const std::vector<std::u16string>& products,
                                  const std::vector<std::string>& types);

}  // namespace veltra::python
