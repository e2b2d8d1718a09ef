#include "docset/ContainedFile.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <ios>
#include <system_error>

namespace reference::docset {
namespace {

namespace fs = std::filesystem;

bool isWithin(const fs::path& root, const fs::path& file) {
    return std::mismatch(root.begin(), root.end(), file.begin(), file.end()).first == root.end();
}

}  // namespace

std::optional<std::string> whyNotContained(std::string_view relativePath) {
    if (relativePath.empty())
        return "The file name is empty; it must be a path relative to the documentation root.";
    if (relativePath.find('\0') != std::string_view::npos)
        return "The file name holds a zero byte.";
    if (relativePath.front() == '/')
        return "The file name is absolute; it must be relative to the documentation root.";
    // By hand: a path of the file system library has no empty part between two slashes.
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

std::optional<std::string> readContainedFile(const fs::path& root, std::string_view relativePath,
                                             const FaultHandler& onFault) {
    const fs::path file = root / fs::path(relativePath);
    const auto fail = [&](std::string problem) {
        onFault({.file = file.string(), .problem = std::move(problem)});
        return std::nullopt;
    };

    if (auto reason = whyNotContained(relativePath))
        return fail(std::move(*reason));

    // Links are followed before the comparison, so that a link may point anywhere below the root
    // and nowhere else.
    std::error_code error;
    const fs::path realRoot = fs::canonical(root, error);
    if (error)
        return fail("The documentation root cannot be opened: " + error.message() + ".");
    const fs::path realFile = fs::canonical(file, error);
    if (error == std::errc::no_such_file_or_directory)
        return fail("The file does not exist.");
    if (error)
        return fail("The file cannot be opened: " + error.message() + ".");
    if (!isWithin(realRoot, realFile))
        return fail("The file is a link that leads out of the documentation root.");

    if (!fs::is_regular_file(realFile, error))
        return fail("This is not a regular file.");
    const auto size = fs::file_size(realFile, error);
    if (error)
        return fail("The file cannot be read: " + error.message() + ".");
    if (size > largestFile)
        return fail("The file has " + std::to_string(size) + " bytes; at most " +
                    std::to_string(largestFile) + " are read.");

    std::ifstream stream(realFile, std::ios::binary);
    if (!stream)
        return fail(std::string("The file cannot be opened: ") + std::strerror(errno) + ".");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (stream.gcount() != static_cast<std::streamsize>(bytes.size()))
        return fail("The file could not be read to its end.");
    return bytes;
}

}  // namespace reference::docset
