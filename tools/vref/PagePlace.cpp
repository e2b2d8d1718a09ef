#include "vref/PagePlace.hpp"

#include <algorithm>
#include <system_error>
#include <utility>

#include <boost/algorithm/hex.hpp>
#include <boost/algorithm/string/case_conv.hpp>

namespace reference::tools {
namespace {

namespace fs = std::filesystem;

bool isLetterOrDigit(char unit) {
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') ||
           (unit >= '0' && unit <= '9');
}

// Whether the text begins as an address does: letters, digits and a few signs before a colon, which
// comes before the first slash (RFC 3986, 3.1 and 4.2).
bool hasScheme(std::string_view text) {
    const auto isOfScheme = [](char unit) {
        return isLetterOrDigit(unit) || unit == '+' || unit == '-' || unit == '.';
    };
    const auto end = std::ranges::find_if_not(text, isOfScheme);
    return end != text.begin() && end != text.end() && *end == ':';
}

// Decodes "%20" and the like; returns the text itself if one of them is malformed.
std::string decoded(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            result += text[at];
            continue;
        }
        const std::string digits(text.substr(at + 1, 2));
        if (digits.size() != 2)
            return std::string(text);
        try {
            result += boost::algorithm::unhex(digits);
        } catch (const boost::algorithm::hex_decode_error&) {
            return std::string(text);
        }
        at += 2;
    }
    return result;
}

// Encodes as "%20" and the like everything that may not stand for itself in an address.
std::string encoded(std::string_view text, std::string_view alsoPlain) {
    std::string result;
    for (const char unit : text) {
        if (isLetterOrDigit(unit) || alsoPlain.find(unit) != std::string_view::npos) {
            result += unit;
            continue;
        }
        result += '%' + boost::algorithm::hex(std::string(1, unit));
    }
    return result;
}

bool isWithin(const fs::path& folder, const fs::path& file) {
    return std::mismatch(folder.begin(), folder.end(), file.begin(), file.end()).first ==
           folder.end();
}

// Nothing else counts as a page: opening a program or a desktop starter might run it.
bool isPage(const fs::path& file) {
    const std::string ending = boost::to_lower_copy(file.extension().string());
    return ending == ".html" || ending == ".htm" || ending == ".xhtml";
}

std::optional<fs::path> pageWithin(const fs::path& folder, const std::string& path) {
    if (path.empty() || path.front() == '/' || path.find('\0') != std::string::npos)
        return std::nullopt;
    std::error_code error;
    const fs::path realFolder = fs::canonical(folder, error);
    if (error)
        return std::nullopt;
    const fs::path file = fs::canonical(realFolder / path, error);
    if (error || !isWithin(realFolder, file) || !isPage(file) || !fs::is_regular_file(file, error))
        return std::nullopt;
    return file;
}

}  // namespace

std::string PagePlace::address() const {
    std::string text = "file://" + encoded(file.string(), "/-._~");
    if (!fragment.empty())
        text += "#" + encoded(fragment, "/-._~!$&'()*+,;=:@?%");
    return text;
}

std::optional<PagePlace> placeOf(const fs::path& folder, std::string_view href) {
    if (hasScheme(href))
        return std::nullopt;
    const auto end = std::min(href.find('#'), href.size());
    const std::string path(href.substr(0, end));
    // A file may be called as the href is written, or as an address would encode it.
    auto file = pageWithin(folder, path);
    if (!file)
        file = pageWithin(folder, decoded(path));
    if (!file)
        return std::nullopt;
    return PagePlace{.file = std::move(*file),
                     .fragment = std::string(href.substr(std::min(end + 1, href.size())))};
}

}  // namespace reference::tools
