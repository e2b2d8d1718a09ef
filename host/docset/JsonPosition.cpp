#include "docset/JsonPosition.hpp"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <utility>

#include <boost/json/basic_parser_impl.hpp>

#include "docset/JsonDocument.hpp"

namespace reference::docset {
namespace {

namespace json = boost::json;

// How many bytes of a text a message shows.
constexpr std::size_t maxShown = 200;

// Follows a parser through a text and knows, before each value, the path to it.
class PathHandler {
  public:
    static constexpr std::size_t max_object_size = json::string::max_size();
    static constexpr std::size_t max_array_size = json::string::max_size();
    static constexpr std::size_t max_key_size = json::string::max_size();
    static constexpr std::size_t max_string_size = json::string::max_size();

    [[nodiscard]] const JsonPath& path() const noexcept { return m_path; }

    // Set between the event before a value and that value's first byte.
    bool valueIsNext = true;
    // Set when a member name that the object already had has just been read.
    bool memberIsRepeated = false;

    bool on_document_begin(json::error_code&) { return true; }
    bool on_document_end(json::error_code&) { return true; }

    bool on_object_begin(json::error_code&) {
        m_names.emplace_back();
        m_path.emplace_back(std::string());
        valueIsNext = false;
        return true;
    }
    bool on_object_end(std::size_t, json::error_code&) {
        m_names.pop_back();
        m_path.pop_back();
        return endValue();
    }
    bool on_array_begin(json::error_code&) {
        m_path.emplace_back(std::size_t{0});
        valueIsNext = true;
        return true;
    }
    bool on_array_end(std::size_t, json::error_code&) {
        m_path.pop_back();
        return endValue();
    }
    bool on_key_part(json::string_view part, std::size_t, json::error_code&) {
        m_key.append(part.data(), part.size());
        return true;
    }
    bool on_key(json::string_view part, std::size_t, json::error_code&) {
        m_key.append(part.data(), part.size());
        memberIsRepeated = !m_names.back().insert(m_key).second;
        m_path.back() = std::exchange(m_key, {});
        valueIsNext = true;
        return true;
    }
    bool on_string_part(json::string_view, std::size_t, json::error_code&) { return true; }
    bool on_string(json::string_view, std::size_t, json::error_code&) { return endValue(); }
    bool on_number_part(json::string_view, json::error_code&) { return true; }
    bool on_int64(std::int64_t, json::string_view, json::error_code&) { return endValue(); }
    bool on_uint64(std::uint64_t, json::string_view, json::error_code&) { return endValue(); }
    bool on_double(double, json::string_view, json::error_code&) { return endValue(); }
    bool on_bool(bool, json::error_code&) { return endValue(); }
    bool on_null(json::error_code&) { return endValue(); }
    bool on_comment_part(json::string_view, json::error_code&) { return true; }
    bool on_comment(json::string_view, json::error_code&) { return true; }

  private:
    bool endValue() {
        valueIsNext = false;
        if (m_path.empty())
            return true;
        if (auto& index = m_path.back().index) {
            ++*index;
            valueIsNext = true;
        }
        return true;
    }

    JsonPath m_path;
    std::vector<std::set<std::string>> m_names;  // of the open objects, outermost first
    std::string m_key;
};

json::parse_options options() {
    json::parse_options chosen;
    chosen.max_depth = maxNesting;
    return chosen;
}

// Where the text that begins with a quote at `at` ends; the end of `json` when it does not.
std::size_t pastText(std::string_view json, std::size_t at) {
    for (++at; at < json.size(); ++at) {
        if (json[at] == '"')
            return at + 1;
        if (json[at] == '\\')
            ++at;
    }
    return json.size();
}

// Feeds the parser texts as a whole and the rest byte by byte, so that the offset of every event is
// known, and calls `onValue(offset, handler)` at the first byte of each value.
template <typename OnValue>
void walk(std::string_view text, OnValue onValue) {
    json::basic_parser<PathHandler> parser(options());
    PathHandler& handler = parser.handler();
    for (std::size_t offset = 0; offset < text.size();) {
        const char byte = text[offset];
        const bool between = std::string_view(" \t\r\n:,]}").find(byte) != std::string_view::npos;
        if (handler.valueIsNext && !between) {
            handler.valueIsNext = false;
            onValue(offset, handler);
        }
        const std::size_t end = byte == '"' ? pastText(text, offset) : offset + 1;
        json::error_code error;
        parser.write_some(true, &text[offset], end - offset, error);
        if (error)
            return;
        offset = end;
    }
}

// The paths that values are looked for by, as a tree.
class WantedPaths {
  public:
    explicit WantedPaths(const std::vector<JsonPath>& paths) : m_found(paths.size()) {
        for (std::size_t number = 0; number < paths.size(); ++number) {
            Branch* branch = &m_top;
            for (const JsonStep& step : paths[number])
                branch = &branch->branches.try_emplace(step).first->second;
            branch->numbers.push_back(number);
        }
    }

    // To be called for each value in text order.
    void note(const JsonPath& path, std::size_t offset) {
        m_way.resize(path.size());
        Branch* branch = nullptr;
        if (path.empty()) {
            branch = &m_top;
        } else if (Branch* const parent = m_way.back()) {
            const auto found = parent->branches.find(path.back());
            branch = found == parent->branches.end() ? nullptr : &found->second;
        }
        m_way.push_back(branch);
        if (branch == nullptr)
            return;
        // If a value on the path occurs again, what was found within the earlier one no longer
        // counts.
        if (std::exchange(branch->isSeen, true))
            forget(*branch);
        for (const std::size_t number : branch->numbers)
            m_found[number] = offset;
    }

    [[nodiscard]] std::vector<std::optional<std::size_t>> take() { return std::move(m_found); }

  private:
    struct Branch {
        std::map<JsonStep, Branch> branches;
        std::vector<std::size_t> numbers;  // of the paths that end here
        bool isSeen = false;
    };

    void forget(const Branch& branch) {
        for (const auto& [step, next] : branch.branches) {
            for (const std::size_t number : next.numbers)
                m_found[number].reset();
            forget(next);
        }
    }

    Branch m_top;
    std::vector<Branch*> m_way;  // from the top to the value that was noted last; null: not wanted
    std::vector<std::optional<std::size_t>> m_found;
};

bool isPlainName(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](unsigned char unit) {
        return std::isalnum(unit) != 0 || unit == '_' || unit == '-';
    });
}

}  // namespace

std::vector<std::optional<std::size_t>> findJsonValues(std::string_view text,
                                                       const std::vector<JsonPath>& paths) {
    WantedPaths wanted(paths);
    walk(text, [&](std::size_t offset, const PathHandler& handler) {
        wanted.note(handler.path(), offset);
    });
    return wanted.take();
}

void forEachRepeatedMember(
    std::string_view text,
    const std::function<void(const JsonPath& path, std::size_t offset)>& onRepeated) {
    walk(text, [&](std::size_t offset, PathHandler& handler) {
        if (std::exchange(handler.memberIsRepeated, false))
            onRepeated(handler.path(), offset);
    });
}

std::string shortened(std::string_view text) {
    if (text.size() <= maxShown)
        return std::string(text);
    std::size_t end = maxShown;
    while (end > 0 && (text[end] & '\xC0') == '\x80')  // within a character
        --end;
    return std::string(text.substr(0, end)) + "…";
}

std::string toFieldName(const JsonPath& path) {
    std::string name;
    for (const auto& step : path) {
        if (step.index) {
            name += "[" + std::to_string(*step.index) + "]";
            continue;
        }
        const std::string& member = step.name;
        if (isPlainName(std::string_view(member).substr(0, maxShown)))
            name += (name.empty() ? "" : ".") + shortened(member);
        else
            name += "[\"" + shortened(member) + "\"]";
    }
    return name;
}

TextPosition LineCounter::positionOf(std::size_t offset) {
    offset = std::min(offset, m_text.size());
    if (offset < m_offset)
        *this = LineCounter(m_text);
    for (std::size_t end = m_text.find('\n', m_offset); end < offset;
         end = m_text.find('\n', m_lineStart)) {
        ++m_line;
        m_lineStart = end + 1;
    }
    m_offset = offset;
    return {.line = m_line, .column = offset - m_lineStart + 1};
}

}  // namespace reference::docset
