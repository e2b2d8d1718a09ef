// Damage to the sections of an image, as lines that people can read.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "docimage/Image.hpp"

namespace reference::fuzz {

// The bytes of an image and its sections, to be damaged.
struct OpenImage {
    std::string bytes;
    docimage::Image::Sections sections;

    // Obeys a line: "SECTION byte AT VALUE", "SECTION word AT VALUE" (32 bits, AT counts words), or
    // "SECTION size SIZE", which only makes a section smaller. Sections are counted from 0 in the
    // order in which they lie there. What makes no sense is passed over.
    void damage(std::string_view line) {
        const std::size_t number = numberOf(takeWord(line));
        const auto what = takeWord(line);
        const std::size_t at = numberOf(takeWord(line));
        const std::uint32_t value = numberOf(takeWord(line));
        if (number >= sections.size())
            return;
        auto& section = sections[number].second;
        if (what == "size")
            section.size = std::min(section.size, at);
        else if (what == "byte" && at < section.size)
            bytes[section.offset + at] = static_cast<char>(value);
        else if (what == "word" && at < section.size / sizeof(value))
            std::copy_n(
                reinterpret_cast<const char*>(&value), sizeof(value),
                bytes.begin() + static_cast<std::ptrdiff_t>(section.offset + at * sizeof(value)));
    }
};

}  // namespace reference::fuzz
