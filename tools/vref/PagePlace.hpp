#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace reference::tools {

// A page on the disk.
struct PagePlace {
    std::filesystem::path file;  // absolute
    std::string fragment;        // the part of the href after "#"; usually one entity's place

    // The address for a browser: "file:///usr/share/doc/x/html/a.html#f". ASCII.
    [[nodiscard]] std::string address() const;
};

// The page in `folder` that an href (UTF-8) of the documentation leads to. Documentation may come
// from anybody, so there is no page for an href that is an address of its own ("javascript:",
// "https:"), is absolute, or leads out of the folder through ".." or a link, nor for anything that
// is not an HTML file or does not exist. `folder` is absolute. Any thread.
[[nodiscard]] std::optional<PagePlace> placeOf(const std::filesystem::path& folder,
                                               std::string_view href);

}  // namespace reference::tools
