#include "sphinx/SourceTree.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <system_error>
#include <utility>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t maxFileSize = std::size_t{64} << 20U;

// Whether the error says that no file has the name. Any other error may be gone at the next try.
bool meansAbsent(const std::error_code& error) {
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory ||
           error == std::errc::filename_too_long ||
           error == std::errc::too_many_symbolic_link_levels;
}

[[noreturn]] void failWith(const std::error_code& error) {
    if (meansAbsent(error))
        throw PageError("There is no such file in the tree.");
    if (error == std::errc::cross_device_link)
        throw PageError("The name is a link that leads out of the tree.");
    if (error == std::errc::is_a_directory || error == std::errc::no_such_device_or_address)
        throw PageError("The name is not that of a regular file.");
    if (error == std::errc::file_too_large)
        throw PageError("The file is too large; at most " + std::to_string(maxFileSize) +
                        " bytes are read.");
    throw SystemFailure("The file cannot be read: " + error.message() + ".");
}

files::Folder openFolder(const fs::path& root) {
    try {
        return files::Folder(root);
    } catch (const std::system_error& error) {
        throw PageError("\"" + root.string() +
                        "\" is not a folder that can be read: " + error.code().message() + ".");
    }
}

void checkName(std::string_view page) {
    const fs::path path(page);
    if (path.is_absolute() || page.starts_with('/'))
        throw PageError("The name is absolute; it must be relative to the tree's root.");
    if (page.find('\0') != std::string_view::npos || page.find('\\') != std::string_view::npos)
        throw PageError("The name holds a character that no page name has.");
    if (std::ranges::find(path, fs::path("..")) != path.end())
        throw PageError("The name holds \"..\"; it must stay within the tree.");
}

}  // namespace

SourceTree::SourceTree(const fs::path& root) : m_folder(openFolder(root)) {}

std::optional<std::string> SourceTree::find(std::string_view page, std::error_code& error) const {
    checkName(page);
    std::string name(page);
    if (name.empty() || name.ends_with('/'))
        name += "index.html";
    return m_folder.readFile(name, maxFileSize, error);
}

std::string SourceTree::read(std::string_view page) const {
    std::error_code error;
    auto content = find(page, error);
    if (!content && meansAbsent(error) && page.find('%') != std::string_view::npos)
        content = find(percentDecoded(page), error);
    if (!content)
        failWith(error);
    return std::move(*content);
}

}  // namespace reference::importers::sphinx
