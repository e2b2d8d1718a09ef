// What a fuzz target is: a function of one input, and what it takes for a finding.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace reference::fuzz {

// What a target found to be wrong. No std::exception, so that nothing that is tested catches it.
struct Finding {
    std::string what;
};

inline void require(bool holds, std::string_view claim, std::string_view detail = {}) {
    if (!holds)
        throw Finding{"This does not hold: " + std::string(claim) +
                      (detail.empty() ? "" : ": " + std::string(detail))};
}

// A target registers itself: a source has one object of this type, named like the source.
class FuzzTarget {
  public:
    // The function gets one input. A Finding, and every other exception that it lets out, is a
    // finding.
    FuzzTarget(const char* target, void (*function)(std::string_view input))
        : m_name(target), m_run(function) {
        all().push_back(this);
    }
    FuzzTarget(const FuzzTarget&) = delete;  // known by its address
    FuzzTarget& operator=(const FuzzTarget&) = delete;

    [[nodiscard]] const char* name() const noexcept { return m_name; }
    void run(std::string_view input) const { m_run(input); }

    // The targets of this program.
    [[nodiscard]] static std::vector<const FuzzTarget*>& all() {
        static std::vector<const FuzzTarget*> targets;
        return targets;
    }

  private:
    const char* m_name;
    void (*m_run)(std::string_view);
};

// The lines of an input, without their ends; no line after the last end.
[[nodiscard]] inline std::vector<std::string_view> linesOf(std::string_view input) {
    std::vector<std::string_view> lines;
    while (!input.empty()) {
        const auto end = input.find('\n');
        lines.push_back(input.substr(0, end));
        input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
    }
    return lines;
}

// Takes the first part of an input, and the line "---" after it, off the input.
inline std::string_view takePart(std::string_view& input) {
    constexpr std::string_view divider = "\n---\n";
    const auto end = input.find(divider);
    const auto part = input.substr(0, end);
    input.remove_prefix(end == std::string_view::npos ? input.size() : end + divider.size());
    return part;
}

// Takes the first word of a line, and the space after it, off the line.
inline std::string_view takeWord(std::string_view& line) {
    const auto end = line.find(' ');
    const auto word = line.substr(0, end);
    line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
    return word;
}

}  // namespace reference::fuzz
