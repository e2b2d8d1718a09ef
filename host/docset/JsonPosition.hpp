// Where things stand in the text of a JSON document. Internal: no public header includes it.
//
// A parsed value no longer knows its place, and keeping places for all of them would make the
// reading of sound files pay for the faulty ones. So a place is found by reading the text again,
// when a fault is reported.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace reference::docset {

// From an object to a member, by its name; from an array to an element, by its index.
struct JsonStep {
    JsonStep(std::string member) : name(std::move(member)) {}
    JsonStep(std::size_t element) : index(element) {}

    std::string name;
    std::optional<std::size_t> index;  // nothing: the step is to the member

    friend bool operator==(const JsonStep&, const JsonStep&) = default;
    friend bool operator<(const JsonStep& a, const JsonStep& b) {
        return std::tie(a.index, a.name) < std::tie(b.index, b.name);
    }
};

using JsonPath = std::vector<JsonStep>;

// For each path, the offset, in bytes, of the value that it leads to from the top of `text`;
// nothing where the text has no such value. Where a member name is repeated, its last occurrence
// counts. The text is read once, however many paths there are.
[[nodiscard]] std::vector<std::optional<std::size_t>> findJsonValues(
    std::string_view text, const std::vector<JsonPath>& paths);

// Calls `onRepeated(path, offset)` for every object member that repeats an earlier name of the same
// object, in text order, with the path and the offset of its value.
void forEachRepeatedMember(
    std::string_view text,
    const std::function<void(const JsonPath& path, std::size_t offset)>& onRepeated);

// The path as a person reads it: products[0].pages["ref/plot.html"]. Of long names the beginning.
[[nodiscard]] std::string toFieldName(const JsonPath& path);

// A text in a message: the beginning of a long one, and "…".
[[nodiscard]] std::string shortened(std::string_view text);

struct TextPosition {
    std::size_t line = 0;
    std::size_t column = 0;
};

// Tells lines and columns of bytes of a text. Offsets that come in ascending order cost one pass
// over the text, all together.
class LineCounter {
  public:
    explicit LineCounter(std::string_view text) : m_text(text) {}

    // Line and column of a byte, both counted from 1, the column in bytes. Past the end, of the
    // end.
    [[nodiscard]] TextPosition positionOf(std::size_t offset);

  private:
    std::string_view m_text;
    std::size_t m_offset = 0;
    std::size_t m_line = 1;
    std::size_t m_lineStart = 0;
};

}  // namespace reference::docset
