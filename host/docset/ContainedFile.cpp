#include "docset/ContainedFile.hpp"

#include <algorithm>
#include <system_error>
#include <utility>

namespace reference::docset {
namespace {

bool isControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

// What is wrong with a file, as a sentence.
std::string sentenceFor(const std::error_code& error) {
    if (error == std::errc::no_such_file_or_directory)
        return "The file does not exist.";
    if (error == std::errc::cross_device_link)
        return "The file is a link that leads out of the documentation root.";
    if (error == std::errc::is_a_directory || error == std::errc::no_such_device_or_address)
        return "This is not a regular file.";
    if (error == std::errc::file_too_large)
        return "The file is too large; at most " + std::to_string(maxFileSize) + " bytes are read.";
    return "The file cannot be opened or read: " + error.message() + ".";
}

// Whether the error tells of the system and not of the file.
bool isOfTheSystem(const std::error_code& error) {
    return error != std::errc::no_such_file_or_directory && error != std::errc::cross_device_link &&
           error != std::errc::is_a_directory && error != std::errc::no_such_device_or_address &&
           error != std::errc::file_too_large;
}

}  // namespace

std::optional<std::string> whyNotContained(std::string_view relativePath) {
    if (relativePath.empty())
        return "The file name is empty; it must be a path relative to the documentation root.";
    if (relativePath.find('\0') != std::string_view::npos)
        return "The file name holds a zero byte.";
    if (relativePath.find('\\') != std::string_view::npos)
        return "The file name holds a backslash; divide folders and file by slashes.";
    if (std::ranges::any_of(relativePath, isControl))
        return "The file name holds a control character.";
    if (relativePath.front() == '/')
        return "The file name is absolute; it must be relative to the documentation root.";
    // Split by hand: the file system library drops the empty part between two slashes.
    for (std::size_t start = 0; start <= relativePath.size();) {
        const auto end = std::min(relativePath.find('/', start), relativePath.size());
        const auto part = relativePath.substr(start, end - start);
        start = end + 1;
        if (part == "..")
            return "The file name leads out of its folder (\"..\"); it must stay below the "
                   "documentation root.";
        if (part.empty() || part == ".")
            return "The file name has an empty part; divide folders and file by single slashes.";
    }
    return std::nullopt;
}

std::optional<files::Folder> openRoot(const std::filesystem::path& root,
                                      std::string_view relativePath, const FaultHandler& onFault) {
    std::error_code error;
    try {
        return files::Folder(root);
    } catch (const std::system_error& problem) {
        error = problem.code();
    }
    onFault({.file = (root / std::filesystem::path(relativePath)).string(),
             .problem = "The documentation root cannot be opened: " + error.message() + ".",
             .mayPass = isOfTheSystem(error)});
    return std::nullopt;
}

Fault faultOf(const files::Folder& root, std::string_view relativePath,
              const std::error_code& error) {
    return {.file = (root.path() / std::filesystem::path(relativePath)).string(),
            .problem = sentenceFor(error),
            .mayPass = isOfTheSystem(error)};
}

std::optional<std::string> readContainedFile(const files::Folder& root,
                                             std::string_view relativePath,
                                             const FaultHandler& onFault) {
    if (auto reason = whyNotContained(relativePath)) {
        onFault({.file = (root.path() / std::filesystem::path(relativePath)).string(),
                 .problem = std::move(*reason)});
        return std::nullopt;
    }
    std::error_code error;
    auto bytes = root.readFile(relativePath, maxFileSize, error);
    if (!bytes)
        onFault(faultOf(root, relativePath, error));
    return bytes;
}

}  // namespace reference::docset
