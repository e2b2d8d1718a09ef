#include "vref/ConfigurationFile.hpp"

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>
#include <system_error>
#include <toml++/toml.h>
#include <utility>

#include <boost/algorithm/string/join.hpp>

#include "vref/DisplayText.hpp"
#include "vref/Environment.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/Nearest.hpp"
#include "vref/OptionTexts.hpp"

namespace reference::tools {
namespace {

namespace fs = std::filesystem;

// A configuration has a few lines. The parser nests a table for each part of a dotted key, and
// needs stack for each, so that a long key in a larger file would use it up.
constexpr std::size_t largestFile = std::size_t{16} << 10U;

fs::path placeOfFile() {
    fs::path folder = environmentText("XDG_CONFIG_HOME");
    if (!folder.is_absolute()) {
        folder = environmentText("HOME");
        if (!folder.is_absolute())
            return {};
        folder /= ".config";
    }
    return folder / "vref" / "config.toml";
}

// The bytes of the file; nothing where there is none.
std::optional<std::string> bytesOf(const fs::path& path) {
    const auto fail = [&](const std::string& problem) {
        throw UnusableError(printableLine(path.string()) + ": " + problem);
    };
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        return std::nullopt;
    if (error)
        fail("The file cannot be read: " + error.message() + ".");
    if (!fs::is_regular_file(status))
        fail("This is not a file; the configuration was expected here.");
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    std::string bytes(largestFile + 1, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!in.is_open() || in.bad())
        fail(std::string("The file cannot be read: ") + std::strerror(errno != 0 ? errno : EIO) +
             ".");
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    if (bytes.size() > largestFile)
        fail("The file is larger than " + std::to_string(largestFile) +
             " bytes; a configuration has a few lines.");
    return bytes;
}

// Takes the values out of the parsed file.
class Reader {
  public:
    explicit Reader(ConfigurationFile& file) : m_file(file) {}

    void read(const std::string& bytes) {
        try {
            const toml::table table = toml::parse(bytes);
            for (auto&& [key, node] : table)
                readKey(key, node);
        } catch (const toml::parse_error& error) {
            fail(error.source().begin, "This is not TOML (" +
                                           printableLine(std::string(error.description())) +
                                           "). A line has a key and a value, such as language = "
                                           "\"ja_JP\"; texts stand in quotation marks.");
        }
    }

  private:
    struct Key {
        const char* name;
        void (Reader::*read)(const toml::node&);
    };
    static constexpr std::array<Key, 5> keys();

    [[noreturn]] void fail(const toml::source_position& position,
                           const std::string& problem) const {
        throw UnusableError(printableLine(m_file.path.string()) + ":" +
                            std::to_string(position.line) + ":" + std::to_string(position.column) +
                            ": " + problem);
    }
    [[noreturn]] void failWanting(const toml::node& node, const std::string& wanted) const {
        fail(node.source().begin, wanted + " was expected here.");
    }

    void readKey(const toml::key& key, const toml::node& node);

    // The text of a node; nothing for any other value, and for a text that is empty or not one
    // line.
    static std::optional<Configured<std::string>> textOf(const toml::node& node) {
        const auto* const text = node.as_string();
        if (text == nullptr || text->get().empty() || !checkClean(text->get()).empty())
            return std::nullopt;
        return Configured<std::string>{text->get(), node.source().begin.line};
    }

    void readDocumentationSet(const toml::node& node) {
        auto text = textOf(node);
        const std::string home = environmentText("HOME");
        if (!text ||
            (text->value.starts_with('~') && text->value != "~" && !text->value.starts_with("~/")))
            failWanting(node,
                        "documentation-set: A folder in quotation marks, such as \"~/docs\" or "
                        "\"/srv/docs\",");
        fs::path folder = text->value;
        if (text->value.starts_with('~')) {
            // What is joined to HOME must be relative: "~//docs" is the same as "~/docs".
            const auto rest = text->value.find_first_not_of('/', 1);
            if (home.empty())
                fail(node.source().begin,
                     "documentation-set: HOME is not set, so that \"~\" means nothing here; an "
                     "absolute path does.");
            folder = rest == std::string::npos ? fs::path(home)
                                               : fs::path(home) / text->value.substr(rest);
        }
        text->value = (m_file.path.parent_path() / folder).lexically_normal().string();
        m_file.documentationSet = std::move(text);
    }

    void readPreferredProducts(const toml::node& node) {
        constexpr auto wanted =
            "preferred-products: A list of short names in quotation marks, such as "
            "[\"scipy\", \"pandas\"],";
        const auto* const list = node.as_array();
        if (list == nullptr)
            failWanting(node, wanted);
        Configured<std::vector<std::string>> products{{}, node.source().begin.line};
        for (const toml::node& element : *list) {
            auto product = textOf(element);
            if (!product)
                failWanting(element,
                            "preferred-products: A product's short name in quotation marks, such "
                            "as \"scipy\",");
            products.value.push_back(std::move(product->value));
        }
        m_file.preferredProducts = std::move(products);
    }

    void readLanguage(const toml::node& node) {
        m_file.language = textOf(node);
        if (!m_file.language)
            failWanting(node,
                        "language: A locale in quotation marks, such as \"ja_JP\" or \"ja\",");
    }

    void readPager(const toml::node& node) {
        m_file.pager = textOf(node);
        if (const auto* const isWanted = node.as_boolean(); isWanted != nullptr && !isWanted->get())
            m_file.pager = Configured<std::string>{{}, node.source().begin.line};
        if (!m_file.pager)
            failWanting(node,
                        "pager: A command in quotation marks, such as \"less\", or false, for no "
                        "pager,");
    }

    void readColours(const toml::node& node) {
        const auto text = textOf(node);
        const auto colours = text ? coloursNamed(text->value) : std::nullopt;
        if (!colours)
            failWanting(node, "colours: One of \"auto\", \"always\" and \"never\"");
        m_file.colours = Configured<Colours>{*colours, text->line};
    }

    ConfigurationFile& m_file;
};

constexpr std::array<Reader::Key, 5> Reader::keys() {
    return {{{"documentation-set", &Reader::readDocumentationSet},
             {"preferred-products", &Reader::readPreferredProducts},
             {"language", &Reader::readLanguage},
             {"pager", &Reader::readPager},
             {"colours", &Reader::readColours}}};
}

void Reader::readKey(const toml::key& key, const toml::node& node) {
    std::vector<std::string> names;
    for (const Key& known : keys()) {
        if (key.str() == known.name)
            return (this->*known.read)(node);
        names.emplace_back(known.name);
    }
    const auto meant = nearest(key.str(), names);
    fail(key.source().begin,
         "There is no key \"" + printableLine(std::string(key.str())) + "\"" +
             (meant ? "; did you mean \"" + *meant + "\"? There is: " : "; there is: ") +
             boost::join(names, ", ") + ".");
}

}  // namespace

ConfigurationFile ConfigurationFile::ofThisPerson() {
    ConfigurationFile file;
    file.path = placeOfFile();
    if (file.path.empty())
        return file;
    if (const auto bytes = bytesOf(file.path)) {
        file.isThere = true;
        Reader(file).read(*bytes);
    }
    return file;
}

}  // namespace reference::tools
