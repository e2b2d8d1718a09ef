#include "docset/Fault.hpp"

namespace reference::docset {

std::string Fault::toString() const {
    std::string text = file;
    if (line != 0)
        text += ":" + std::to_string(line) + ":" + std::to_string(column);
    text += ": ";
    if (!field.empty())
        text += field + ": ";
    return text + problem;
}

}  // namespace reference::docset
