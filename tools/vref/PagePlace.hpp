#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace reference::tools {

// A page on the disk.
struct PagePlace {
    std::filesystem::path file;  // absolute
    std::string fragment;        // what the href has behind "#"; mostly the place of one entity

    // The address that a browser takes: "file:///usr/share/doc/x/html/a.html#f". ASCII.
    [[nodiscard]] std::string address() const;
};

// The page in the folder that an href (UTF-8) of its documentation leads to. Documentation may come
// from anybody: nothing for an href that is an address of its own ("javascript:", "https:"), is
// absolute, or leads out of the folder by ".." or through a link, and for what is no HTML file or
// does not exist. `folder` is absolute. Any thread.
[[nodiscard]] std::optional<PagePlace> placeOf(const std::filesystem::path& folder,
                                               std::string_view href);

}  // namespace reference::tools
