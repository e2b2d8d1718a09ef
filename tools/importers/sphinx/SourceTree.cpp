#include "sphinx/SourceTree.hpp"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <system_error>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t maximumFileSize = std::uintmax_t{64} << 20U;

void checkName(std::string_view page) {
    const fs::path path(page);
    if (path.is_absolute() || page.starts_with('/'))
        throw PageError("The name is absolute; it must be relative to the tree's root.");
    if (page.find('\0') != std::string_view::npos || page.find('\\') != std::string_view::npos)
        throw PageError("The name holds a character that no page name has.");
    if (std::ranges::find(path, fs::path("..")) != path.end())
        throw PageError("The name holds \"..\"; it must stay within the tree.");
}

bool isWithin(const fs::path& file, const fs::path& root) {
    return std::ranges::mismatch(root, file).in1 == root.end();
}

}  // namespace

SourceTree::SourceTree(const fs::path& root) {
    std::error_code error;
    m_root = fs::canonical(root, error);
    if (error || !fs::is_directory(m_root, error))
        throw PageError("\"" + root.string() + "\" is not a folder that can be read.");
}

fs::path SourceTree::locate(std::string_view page) const {
    checkName(page);
    std::string name(page);
    if (name.empty() || name.ends_with('/'))
        name += "index.html";
    std::error_code error;
    fs::path file = fs::canonical(m_root / name, error);
    if (error)
        return {};
    if (!isWithin(file, m_root))
        throw PageError("The name is a link that leads out of the tree.");
    return file;
}

std::string SourceTree::read(std::string_view page) const {
    fs::path file = locate(page);
    if (file.empty() && page.find('%') != std::string_view::npos)
        file = locate(percentDecoded(page));
    if (file.empty())
        throw PageError("There is no such file in the tree.");
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        throw PageError("The name is not that of a regular file.");
    const std::uintmax_t size = fs::file_size(file, error);
    if (error)
        throw PageError("The file cannot be read: " + error.message() + ".");
    if (size > maximumFileSize)
        throw PageError("The file has " + std::to_string(size) + " bytes; at most " +
                        std::to_string(maximumFileSize) + " are read.");
    std::ifstream stream(file, std::ios::binary);
    std::string content(static_cast<std::size_t>(size), '\0');
    if (!stream || !stream.read(content.data(), static_cast<std::streamsize>(size)))
        throw PageError("The file cannot be read.");
    return content;
}

}  // namespace reference::importers::sphinx
