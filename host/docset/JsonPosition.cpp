#include "docset/JsonPosition.hpp"

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

#include <boost/json/basic_parser_impl.hpp>

#include "docset/JsonDocument.hpp"

namespace reference::docset {
namespace {

namespace json = boost::json;

// Follows a parser through a text and knows, before each value, the path to it.
class PathHandler {
  public:
    static constexpr std::size_t max_object_size = json::string::max_size();
    static constexpr std::size_t max_array_size = json::string::max_size();
    static constexpr std::size_t max_key_size = json::string::max_size();
    static constexpr std::size_t max_string_size = json::string::max_size();

    [[nodiscard]] const std::vector<JsonStep>& path() const noexcept { return m_path; }

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
        if (auto* index = std::get_if<std::size_t>(&m_path.back())) {
            ++*index;
            valueIsNext = true;
        }
        return true;
    }

    std::vector<JsonStep> m_path;
    std::vector<std::set<std::string>> m_names;  // of the open objects, outermost first
    std::string m_key;
};

json::parse_options options() {
    json::parse_options chosen;
    chosen.max_depth = maxNesting;
    return chosen;
}

// Feeds the text byte by byte, so that the offset of every event is known, and calls
// `onValue(offset, handler)` at the first byte of each value.
template <typename OnValue>
void walk(std::string_view text, OnValue onValue) {
    json::basic_parser<PathHandler> parser(options());
    PathHandler& handler = parser.handler();
    for (std::size_t offset = 0; offset < text.size(); ++offset) {
        const char byte = text[offset];
        const bool between = std::string_view(" \t\r\n:,]}").find(byte) != std::string_view::npos;
        if (handler.valueIsNext && !between) {
            handler.valueIsNext = false;
            onValue(offset, handler);
        }
        json::error_code error;
        parser.write_some(true, &text[offset], 1, error);
        if (error)
            return;
    }
}

bool isPlainName(const std::string& name) {
    return !name.empty() && std::ranges::all_of(name, [](unsigned char unit) {
        return std::isalnum(unit) != 0 || unit == '_' || unit == '-';
    });
}

}  // namespace

std::optional<std::size_t> findJsonValue(std::string_view text, const std::vector<JsonStep>& path) {
    std::optional<std::size_t> found;
    walk(text, [&](std::size_t offset, const PathHandler& handler) {
        const auto& at = handler.path();
        if (at.size() > path.size() || !std::equal(at.begin(), at.end(), path.begin()))
            return;
        // If a value on the path occurs again, what was found within the earlier one no longer
        // counts.
        found = at.size() == path.size() ? std::optional(offset) : std::nullopt;
    });
    return found;
}

std::vector<RepeatedMember> findRepeatedMembers(std::string_view text) {
    std::vector<RepeatedMember> repeated;
    walk(text, [&](std::size_t offset, PathHandler& handler) {
        if (std::exchange(handler.memberIsRepeated, false))
            repeated.push_back({.path = handler.path(), .offset = offset});
    });
    return repeated;
}

std::string toFieldName(const std::vector<JsonStep>& path) {
    std::string name;
    for (const auto& step : path) {
        if (const auto* index = std::get_if<std::size_t>(&step)) {
            name += "[" + std::to_string(*index) + "]";
            continue;
        }
        const auto& member = std::get<std::string>(step);
        if (isPlainName(member))
            name += (name.empty() ? "" : ".") + member;
        else
            name += "[\"" + member + "\"]";
    }
    return name;
}

TextPosition positionOf(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    const auto lineStart = before.rfind('\n');
    return {
        .line = static_cast<std::size_t>(std::ranges::count(before, '\n')) + 1,
        .column = before.size() - (lineStart == std::string_view::npos ? 0 : lineStart + 1) + 1};
}

}  // namespace reference::docset
