#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "foundation/core/export.hpp"

namespace reference::docset {

// One thing that is wrong with a documentation set: where it is and what would be right. All texts
// are UTF-8. A plain value.
struct VELTRA_HOST_API Fault {
    // The file, as a path that the reader of the message can open.
    std::string file;
    // Where in the file, counted from 1, columns in bytes; 0 where the fault has no single place.
    std::size_t line = 0;
    std::size_t column = 0;
    // The field, from the top of the document: products[0].files.en_US; empty for the whole file.
    std::string field;
    // What is wrong and what would be right: a sentence.
    std::string problem;
    // Whether the next try may go well: the system failed to read the file, or had no memory for
    // it, and nothing is known to be wrong with it.
    bool mayPass = false;

    // That there was no memory to read the file.
    [[nodiscard]] static Fault outOfMemory(std::string file);

    // "file:line:column: field: problem", without the parts that are not known. One line: control
    // characters are written as "\u001b".
    [[nodiscard]] std::string toString() const;

    friend bool operator==(const Fault&, const Fault&) = default;
};

// Called for every fault, in the order in which they are found. A handler that throws ends the
// reading; after one that returns, the reading goes on past the faulty field.
using FaultHandler = std::function<void(const Fault&)>;

}  // namespace reference::docset
