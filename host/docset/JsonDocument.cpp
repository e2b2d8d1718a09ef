#include "docset/JsonDocument.hpp"

#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

#include <boost/json/parser.hpp>

#include "docset/ContainedFile.hpp"
#include "docset/JsonPosition.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::docset {
namespace {

namespace json = boost::json;

// Where there are more faults, the rest get no place.
constexpr std::size_t maxPlacedFaults = 100;

json::string_view keyView(std::string_view text) {
    return {text.data(), text.size()};
}

std::string_view nameOf(const json::key_value_pair& member) {
    return {member.key().data(), member.key().size()};
}

// Why the text is no JSON document: the parser's reason, unless the bytes are no text at all.
std::string whyNotJson(std::string_view text, const json::error_code& error) {
    if (text.substr(0, 3) == "\xEF\xBB\xBF")
        return "The file begins with a byte order mark; save it as UTF-8 without one.";
    try {
        static_cast<void>(fl::i18n::toUtf16(text));
    } catch (const std::invalid_argument& fault) {
        return std::string("The file is not UTF-8. ") + fault.what();
    }
    if (error == json::error::too_deep)
        return "The document is nested more than " + std::to_string(maxNesting) +
               " levels deep; a documentation file never is.";
    if (error == json::error::incomplete)
        return "The file ends in the middle of the JSON document.";
    if (error == json::error::extra_data)
        return "There is more text after the end of the JSON document.";
    return "This is not JSON (" + error.message() + ").";
}

}  // namespace

JsonDocument::JsonDocument(std::string file, std::string text)
    : m_file(std::move(file)), m_text(std::move(text)) {}

std::unique_ptr<JsonDocument> JsonDocument::read(const files::Folder& root,
                                                 std::string_view relativePath,
                                                 FaultHandler onFault) {
    const std::string file = (root.path() / std::filesystem::path(relativePath)).string();
    bool isLimit = false;
    try {
        auto text = readContainedFile(root, relativePath, onFault);
        if (!text)
            return nullptr;
        std::unique_ptr<JsonDocument> document(new JsonDocument(file, std::move(*text)));
        document->m_onFault.swap(onFault);
        try {
            return document->parse() ? std::move(document) : nullptr;
        } catch (const std::bad_alloc&) {
            isLimit = document->m_limited.isExceeded();
            document->m_onFault.swap(onFault);
        }
    } catch (const std::bad_alloc&) {
        // Told below, when what was taken has been given back.
    }
    onFault(isLimit ? Fault{.file = file,
                            .problem = "The file's values take more than " +
                                       std::to_string(maxDocumentMemory >> 20U) +
                                       " MiB of memory; a documentation file never does."}
                    : Fault::outOfMemory(file));
    return nullptr;
}

// Whether the text is a JSON document; reports why not.
bool JsonDocument::parse() {
    json::parse_options options;
    options.max_depth = maxNesting;
    json::parser parser(json::storage_ptr(&m_limited), options);
    parser.reset(&m_memory);
    json::error_code error;
    const std::size_t consumed = parser.write(m_text.data(), m_text.size(), error);
    if (error) {
        const TextPosition position = LineCounter(m_text).positionOf(consumed);
        m_onFault({.file = m_file,
                   .line = position.line,
                   .column = position.column,
                   .problem = whyNotJson(m_text, error)});
        return false;
    }
    m_top = parser.release();
    return true;
}

std::optional<JsonNode> JsonDocument::top(std::string_view format, unsigned formatVersion) const {
    const JsonNode node(m_top, *this);
    if (!m_top.is_object()) {
        node.fault("An object was expected here.");
        return std::nullopt;
    }
    const auto formatNode = node.require("format");
    if (!formatNode)
        return std::nullopt;
    const auto formatText = formatNode->text();
    if (!formatText)
        return std::nullopt;
    if (*formatText != format) {
        formatNode->fault("The format is \"" + shortened(*formatText) + "\"; \"" +
                          std::string(format) + "\" was expected here.");
        return std::nullopt;
    }
    const auto versionNode = node.require("formatVersion");
    if (!versionNode)
        return std::nullopt;
    const auto version = versionNode->wholeNumber();
    if (!version)
        return std::nullopt;
    if (*version != formatVersion) {
        versionNode->fault("Version " + std::to_string(*version) +
                           " of the format is not known; this program reads version " +
                           std::to_string(formatVersion) + ".");
        return std::nullopt;
    }
    return node;
}

void JsonDocument::reportRepeatedMembersTo(const FaultHandler& onFault) const {
    LineCounter lines(m_text);
    forEachRepeatedMember(m_text, [&](const JsonPath& path, std::size_t offset) {
        const TextPosition position = lines.positionOf(offset);
        onFault({.file = m_file,
                 .line = position.line,
                 .column = position.column,
                 .field = toFieldName(path),
                 .problem = "The member occurs twice; only the last one is seen."});
    });
}

void JsonDocument::fault(const JsonNode& at, std::string problem) const {
    JsonPath path;
    for (const JsonNode* node = &at; node->m_parent != nullptr; node = node->m_parent) {
        if (node->m_parent->m_value->is_object())
            path.emplace_back(std::string(node->m_key));
        else
            path.emplace_back(node->m_index);
    }
    std::ranges::reverse(path);
    if (++m_faults > maxPlacedFaults) {
        reportFaults();
        m_onFault({.file = m_file, .field = toFieldName(path), .problem = std::move(problem)});
        return;
    }
    m_pendingPaths.push_back(std::move(path));
    m_pendingProblems.push_back(std::move(problem));
}

void JsonDocument::reportFaults() const {
    if (m_pendingPaths.empty())
        return;
    const auto paths = std::exchange(m_pendingPaths, {});
    auto problems = std::exchange(m_pendingProblems, {});
    const auto offsets = findJsonValues(m_text, paths);
    LineCounter lines(m_text);
    for (std::size_t number = 0; number < paths.size(); ++number) {
        const auto& offset = offsets[number];
        const TextPosition position = offset ? lines.positionOf(*offset) : TextPosition{};
        m_onFault({.file = m_file,
                   .line = position.line,
                   .column = position.column,
                   .field = toFieldName(paths[number]),
                   .problem = std::move(problems[number])});
    }
}

void JsonNode::fault(std::string problem) const {
    m_document->fault(*this, std::move(problem));
}

bool JsonNode::isObjectOf(std::initializer_list<std::string_view> members) const {
    const auto* object = m_value->if_object();
    if (object == nullptr) {
        fault("An object was expected here.");
        return false;
    }
    bool sound = true;
    const auto* next = members.begin();
    for (const auto& member : *object) {
        // Mostly the file has them in this order, perhaps without some of them.
        next = std::find(next, members.end(), nameOf(member));
        if (next == members.end())
            next = std::find(members.begin(), members.end(), nameOf(member));
        if (next != members.end()) {
            ++next;
            continue;
        }
        std::string known;
        for (const auto name : members)
            known += (known.empty() ? "" : ", ") + std::string(name);
        JsonNode(member.value(), *this, nameOf(member))
            .fault("There is no such member; known here are: " + known + ".");
        sound = false;
    }
    return sound;
}

std::optional<JsonNode> JsonNode::find(std::string_view name) const {
    const auto* object = m_value->if_object();
    if (object == nullptr)
        return std::nullopt;
    // Mostly the file has the members in the order in which they are looked for.
    const auto* found = object->begin() + m_next;
    if (found == object->end() || nameOf(*found) != name)
        found = object->find(keyView(name));
    if (found == object->end())
        return std::nullopt;
    m_next = static_cast<std::size_t>(found - object->begin()) + 1;
    return JsonNode(found->value(), *this, nameOf(*found));
}

std::optional<JsonNode> JsonNode::require(std::string_view name) const {
    auto node = find(name);
    if (!node)
        fault("The member \"" + std::string(name) + "\" is missing.");
    return node;
}

std::optional<std::string_view> JsonNode::text() const {
    if (const auto* string = m_value->if_string())
        return std::string_view(string->data(), string->size());
    fault("A text was expected here.");
    return std::nullopt;
}

std::optional<bool> JsonNode::boolean() const {
    if (const auto* boolean = m_value->if_bool())
        return *boolean;
    fault("true or false was expected here.");
    return std::nullopt;
}

std::optional<std::uint64_t> JsonNode::wholeNumber() const {
    json::error_code error;
    const auto number = m_value->to_number<std::uint64_t>(error);
    if (!error)
        return number;
    fault("A whole number of 0 or more was expected here.");
    return std::nullopt;
}

std::size_t JsonNode::elementCount() const {
    const auto* array = m_value->if_array();
    return array == nullptr ? 0 : array->size();
}

void JsonNode::requireElements() const {
    if (const auto* array = m_value->if_array(); array != nullptr && array->empty())
        fault("The list is empty; it must have at least one element.");
}

bool JsonNode::isText() const {
    return m_value->is_string();
}

bool JsonNode::isNumber() const {
    return m_value->is_number();
}

std::u16string JsonNode::textOf(std::string_view name) const {
    const auto node = find(name);
    const auto utf8 = node ? node->text() : std::nullopt;
    return utf8 ? fl::i18n::toUtf16(*utf8) : std::u16string();
}

std::u16string JsonNode::requiredTextOf(std::string_view name, bool mayBeEmpty) const {
    const auto node = require(name);
    const auto utf8 = node ? node->text() : std::nullopt;
    if (!utf8)
        return {};
    if (utf8->empty() && !mayBeEmpty)
        node->fault("The text is empty; it may not be here.");
    return fl::i18n::toUtf16(*utf8);
}

}  // namespace reference::docset
