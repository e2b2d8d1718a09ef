// A JSON file of a documentation set, read so that every fault can name file, position and field.
// Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/monotonic_resource.hpp>
#include <boost/json/value.hpp>

#include "docset/Fault.hpp"
#include "docset/JsonPosition.hpp"
#include "docset/LimitedMemory.hpp"
#include "files/Folder.hpp"

namespace reference::docset {

// How deeply a documentation file may be nested: twice what its format needs.
inline constexpr std::size_t maxNesting = 32;

// How much memory, in bytes, the values of one file may take, besides its text: some forty times
// what the files of a product with 10,000 entities take.
inline constexpr std::size_t maxDocumentMemory = std::size_t{1} << 30U;

class JsonDocument;

// One value of a document and the way to it. A node borrows from its parent and its document, both
// of which must outlive it; nodes are made on the way down and dropped on the way up.
class JsonNode {
  public:
    // Reports `problem` at this node.
    void fault(std::string problem) const;

    // Whether the value is an object whose members are all among `members`; reports what is not.
    [[nodiscard]] bool isObjectOf(std::initializer_list<std::string_view> members) const;

    // The member `name`, when the object has it.
    [[nodiscard]] std::optional<JsonNode> find(std::string_view name) const;

    // The member `name`; reports its absence.
    [[nodiscard]] std::optional<JsonNode> require(std::string_view name) const;

    // This value as text, boolean or whole number; reports anything else and gives nothing.
    [[nodiscard]] std::optional<std::string_view> text() const;
    [[nodiscard]] std::optional<bool> boolean() const;
    [[nodiscard]] std::optional<std::uint64_t> wholeNumber() const;

    [[nodiscard]] bool isText() const;
    [[nodiscard]] bool isNumber() const;

    // The optional member `name` as text, empty when it is left out.
    [[nodiscard]] std::u16string textOf(std::string_view name) const;

    // The required member `name` as text; reports its absence, and empty text where
    // `mayBeEmpty` is false.
    [[nodiscard]] std::u16string requiredTextOf(std::string_view name, bool mayBeEmpty) const;

    // How many elements the array has; 0 when this is not one.
    [[nodiscard]] std::size_t elementCount() const;

    // Reports a list that has no elements, and nothing else.
    void requireElements() const;

    // Calls `visit(node)` for each element of the array, or reports that this is not one.
    template <typename Visit>
    void forEachElement(Visit visit) const;

    // Calls `visit(key, node)` for each member of the object, in file order, or reports that this
    // is not one.
    template <typename Visit>
    void forEachMember(Visit visit) const;

  private:
    friend class JsonDocument;

    JsonNode(const boost::json::value& value, const JsonDocument& document)
        : m_value(&value), m_document(&document) {}
    JsonNode(const boost::json::value& value, const JsonNode& parent, std::string_view key)
        : m_value(&value), m_document(parent.m_document), m_parent(&parent), m_key(key) {}
    JsonNode(const boost::json::value& value, const JsonNode& parent, std::size_t index)
        : m_value(&value), m_document(parent.m_document), m_parent(&parent), m_index(index) {}

    const boost::json::value* m_value;
    const JsonDocument* m_document;
    const JsonNode* m_parent = nullptr;
    std::string_view m_key;
    std::size_t m_index = 0;
    mutable std::size_t m_next = 0;  // the place after the member that was found last
};

// A parsed file. One thread at a time.
//
// A fault needs a place, and finding places means reading the text again; so faults wait until the
// first hundred of them are there, or the file has been read, and get their places all at once.
class JsonDocument {
  public:
    // What `read(document)`, which returns an optional, makes of the file; nothing where the file
    // itself cannot be read, as below. Reports all faults before it returns.
    template <typename Read>
    [[nodiscard]] static auto readAs(const files::Folder& root, std::string_view relativePath,
                                     FaultHandler onFault, Read read)
        -> decltype(read(std::declval<const JsonDocument&>()));

    // Reads and parses the file `relativePath` below `root`. Nothing, after one call of `onFault`,
    // when it cannot be read, is not well-formed UTF-8 or JSON, is nested too deeply, or takes more
    // than `maxDocumentMemory` or more memory than there is.
    [[nodiscard]] static std::unique_ptr<JsonDocument> read(const files::Folder& root,
                                                            std::string_view relativePath,
                                                            FaultHandler onFault);

    JsonDocument(const JsonDocument&) = delete;  // nodes point into a document: it stays in place
    JsonDocument& operator=(const JsonDocument&) = delete;

    // The top of the document, when its members "format" and "formatVersion" are those given;
    // reports what they are otherwise.
    [[nodiscard]] std::optional<JsonNode> top(std::string_view format,
                                              unsigned formatVersion) const;

    [[nodiscard]] const std::string& file() const noexcept { return m_file; }

    // How many faults were found so far, those included that are still to be reported.
    [[nodiscard]] std::size_t faultCount() const noexcept { return m_faults; }

    // Reports the faults that have not been reported yet.
    void reportFaults() const;

    // Reports each object member whose name occurs twice: of such members only the last is seen.
    void reportRepeatedMembersTo(const FaultHandler& onFault) const;

  private:
    friend class JsonNode;

    JsonDocument(std::string file, std::string text);

    [[nodiscard]] bool parse();
    void fault(const JsonNode& at, std::string problem) const;

    std::string m_file;
    mutable std::size_t m_faults = 0;
    // Those that are still to be reported.
    mutable std::vector<JsonPath> m_pendingPaths;
    mutable std::vector<std::string> m_pendingProblems;
    std::string m_text;
    FaultHandler m_onFault;
    LimitedMemory m_limited{maxDocumentMemory};
    boost::json::monotonic_resource m_memory{1024, boost::json::storage_ptr(&m_limited)};
    // Uses that memory from the start, so that the parser's value is taken over, not copied.
    boost::json::value m_top = boost::json::value(boost::json::storage_ptr(&m_memory));
};

template <typename Read>
auto JsonDocument::readAs(const files::Folder& root, std::string_view relativePath,
                          FaultHandler onFault, Read read)
    -> decltype(read(std::declval<const JsonDocument&>())) {
    const auto document = JsonDocument::read(root, relativePath, std::move(onFault));
    if (!document)
        return std::nullopt;
    auto result = read(*document);
    document->reportFaults();
    return result;
}

template <typename Visit>
void JsonNode::forEachElement(Visit visit) const {
    const auto* array = m_value->if_array();
    if (array == nullptr) {
        fault("A list was expected here.");
        return;
    }
    for (std::size_t index = 0; index < array->size(); ++index)
        visit(JsonNode((*array)[index], *this, index));
}

template <typename Visit>
void JsonNode::forEachMember(Visit visit) const {
    const auto* object = m_value->if_object();
    if (object == nullptr) {
        fault("An object was expected here.");
        return;
    }
    for (const auto& member : *object) {
        const std::string_view key(member.key().data(), member.key().size());
        visit(key, JsonNode(member.value(), *this, key));
    }
}

}  // namespace reference::docset
