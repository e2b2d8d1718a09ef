// Files that a test reads, replaces and damages as wholes.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace reference::tests {

[[nodiscard]] inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// By a new file, as a writer does: the old one may be mapped.
inline void replaceFile(const std::filesystem::path& file, const std::string& content) {
    std::filesystem::remove(file);
    std::ofstream(file, std::ios::binary) << content;
}

// So that nothing but the content tells.
inline void replaceFileUnseen(const std::filesystem::path& file, const std::string& content) {
    const auto time = std::filesystem::last_write_time(file);
    replaceFile(file, content);
    std::filesystem::last_write_time(file, time);
}

// Damages each block of an image from this place on, unseen.
inline void damageFrom(std::size_t place, const std::filesystem::path& image) {
    std::string content = contentOf(image);
    for (std::size_t at = place; at < content.size(); at += 512)
        content[at] = static_cast<char>(~content[at]);
    replaceFileUnseen(image, content);
}

}  // namespace reference::tests
