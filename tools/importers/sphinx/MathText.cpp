#include "sphinx/MathText.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <utility>
#include <vector>

#include "sphinx/MathSymbols.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

// Thrown for a formula that stays TeX.
struct NoTextForm : std::exception {};

// How deeply groups may be nested in a sound formula.
constexpr int maxDepth = 32;

// A part of a formula.
struct Part {
    std::string text;
    // How many letters, numbers, symbols and the like it consists of.
    int atoms = 0;
    // Whether a space must separate it from a letter or digit that comes next.
    bool endsWord = false;
};

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isWordCharacter(char c) {
    return isLetter(c) || isDigit(c) || static_cast<unsigned char>(c) >= 0x80;
}

template <std::size_t Count>
bool isAmong(std::string_view word, const std::array<std::string_view, Count>& words) {
    return std::ranges::find(words, word) != words.end();
}

constexpr std::array fonts =
    std::to_array<std::string_view>({"mathbf", "mathit", "mathrm", "mathcal", "mathscr", "mathfrak",
                                     "mathsf", "mathtt", "mathnormal", "boldsymbol", "bm", "pmb"});
constexpr std::array texts = std::to_array<std::string_view>(
    {"text", "textrm", "textbf", "textit", "textsf", "texttt", "textnormal", "mbox", "hbox"});
constexpr std::array sizes = std::to_array<std::string_view>(
    {"left", "right", "middle", "big", "Big", "bigg", "Bigg", "bigl", "bigr", "Bigl", "Bigr",
     "biggl", "biggr", "Biggl", "Biggr", "bigm", "Bigm"});

struct Matrix {
    std::string_view environment;
    std::string_view open;
    std::string_view close;
};
constexpr std::array matrices = std::to_array<Matrix>({
    {"matrix", "", ""},
    {"smallmatrix", "", ""},
    {"array", "", ""},
    {"pmatrix", "(", ")"},
    {"bmatrix", "[", "]"},
    {"Bmatrix", "{", "}"},
    {"vmatrix", "|", "|"},
    {"Vmatrix", "‖", "‖"},
});

bool isInBrackets(std::string_view text) {
    if (!text.starts_with('(') || !text.ends_with(')'))
        return false;
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        depth += text[at] == '(' ? 1 : text[at] == ')' ? -1 : 0;
        if (depth == 0 && at + 1 < text.size())
            return false;
    }
    return true;
}

std::string inBrackets(const std::string& text) {
    return isInBrackets(text) ? text : "(" + text + ")";
}

class MathReader {
  public:
    explicit MathReader(std::string_view tex) : m_rest(tex) {}

    std::string run() {
        Part whole;
        while (!m_rest.empty()) {
            if (m_rest.front() == '}')
                throw NoTextForm();
            readNext(whole);
        }
        return whole.text;
    }

  private:
    // --- reading ---

    void readNext(Part& part) {
        const char c = m_rest.front();
        if (c == '\\') {
            readCommand(part);
        } else if (c == '{') {
            const Part group = readGroup();
            append(part, group.text, group.atoms, group.endsWord);
        } else if (c == '^' || c == '_') {
            m_rest.remove_prefix(1);
            const std::string script(trimmed(readArgument().text));
            addScript(part, script, c == '^');
        } else if (c == '\'') {
            m_rest.remove_prefix(1);
            part.text += "′";
        } else if (c == '&') {
            m_rest.remove_prefix(1);  // marks where lines are aligned
        } else if (c == ' ' || c == '~' || c == '\n' || c == '\t') {
            m_rest.remove_prefix(1);
            part.text += ' ';
        } else if (c == '$' || c == '%' || c == '#') {
            throw NoTextForm();
        } else {
            readCharacters(part);
        }
    }

    // A number is one atom, and so is every other character.
    void readCharacters(Part& part) {
        std::size_t size = firstCharacter(m_rest).size();
        while (isDigit(m_rest.front()) && size < m_rest.size() && isDigit(m_rest[size]))
            ++size;
        append(part, m_rest.substr(0, size), 1, false);
        m_rest.remove_prefix(size);
    }

    Part readGroup() {
        if (++m_depth > maxDepth)
            throw NoTextForm();
        m_rest.remove_prefix(1);
        Part group;
        while (!m_rest.empty() && m_rest.front() != '}')
            readNext(group);
        if (m_rest.empty())
            throw NoTextForm();
        m_rest.remove_prefix(1);
        --m_depth;
        return group;
    }

    // What a command or a script applies to: a group, a command or a single character.
    Part readArgument() {
        skipSpaces();
        if (m_rest.empty() || m_rest.front() == '}' || m_rest.front() == '&')
            throw NoTextForm();
        if (m_rest.front() == '{')
            return readGroup();
        if (++m_depth > maxDepth)
            throw NoTextForm();
        Part argument;
        if (m_rest.front() == '\\') {
            readCommand(argument);
        } else {
            const std::string_view character = firstCharacter(m_rest);
            append(argument, character, 1, false);
            m_rest.remove_prefix(character.size());
        }
        --m_depth;
        return argument;
    }

    // A group as it is written.
    std::string_view readRaw() {
        skipSpaces();
        const std::size_t end = m_rest.find('}');
        if (!m_rest.starts_with('{') || end == std::string_view::npos)
            throw NoTextForm();
        const std::string_view raw = m_rest.substr(1, end - 1);
        if (raw.find_first_of("{\\$") != std::string_view::npos)
            throw NoTextForm();
        m_rest.remove_prefix(end + 1);
        return raw;
    }

    std::string_view readCommandName() {
        m_rest.remove_prefix(1);
        if (m_rest.empty())
            throw NoTextForm();
        const auto end = std::ranges::find_if_not(m_rest, isLetter);
        const auto letters = static_cast<std::size_t>(end - m_rest.begin());
        const std::string_view name = m_rest.substr(0, std::max<std::size_t>(letters, 1));
        m_rest.remove_prefix(name.size());
        return name;
    }

    void readCommand(Part& part) {
        const std::string_view name = readCommandName();
        if (name == "\\") {
            part.text += '\n';
        } else if (name == "\n" || name == "\t") {
            part.text += ' ';
        } else if (name == "choose" || name == "over") {
            readInfix(part, name);
        } else if (name == "frac" || name == "dfrac" || name == "tfrac" || name == "cfrac") {
            readFraction(part);
        } else if (name == "sqrt") {
            readRoot(part);
        } else if (name == "begin") {
            readEnvironment(part);
        } else if (name == "binom") {
            const Part upper = readArgument();
            appendWord(part, "(" + upper.text + " choose " + readArgument().text + ")");
        } else if (name == "underset" || name == "overset" || name == "stackrel") {
            const std::string script(trimmed(readArgument().text));
            const Part base = readArgument();
            append(part, base.text, base.atoms, base.endsWord);
            addScript(part, script, name != "underset");
        } else if (name == "mathbb") {
            readDoubleStruck(part);
        } else if (isAmong(name, fonts)) {
            const Part argument = readArgument();
            append(part, argument.text, argument.atoms, argument.endsWord);
        } else if (name == "operatorname") {
            if (m_rest.starts_with('*'))
                m_rest.remove_prefix(1);
            appendWord(part, trimmed(readArgument().text));
        } else if (isAmong(name, texts)) {
            append(part, readRaw(), 1, false);
        } else if (isAmong(name, sizes)) {
            skipSpaces();
            if (m_rest.starts_with('.'))
                m_rest.remove_prefix(1);  // a bracket that is not shown
        } else if (name == "pmod") {
            part.text += " (mod " + readArgument().text + ")";
        } else if (name == "tag") {
            part.text += " (" + std::string(readRaw()) + ")";
        } else if (name == "label") {
            readRaw();
        } else if (name == "not") {
            readNegated(part);
        } else if (const auto accent = combiningAccent(name); !accent.empty()) {
            const std::string base(trimmed(readArgument().text));
            if (base.empty() || firstCharacter(base).size() != base.size())
                throw NoTextForm();
            append(part, base + std::string(accent), 1, false);
        } else {
            readSymbol(part, name);
        }
    }

    // A command that takes all that stands before and after it within its group.
    void readInfix(Part& part, std::string_view name) {
        if (++m_depth > maxDepth)
            throw NoTextForm();
        const std::string before(trimmed(part.text));
        Part lower;
        while (!m_rest.empty() && m_rest.front() != '}')
            readNext(lower);
        --m_depth;
        const std::string after(trimmed(lower.text));
        if (before.empty() || after.empty())
            throw NoTextForm();
        const int atoms = part.atoms;
        part = {};
        if (name == "choose")
            appendWord(part, "(" + before + " choose " + after + ")");
        else
            appendWord(part, (atoms > 1 ? inBrackets(before) : before) + "/" +
                                 (lower.atoms > 1 ? inBrackets(after) : after));
    }

    void readSymbol(Part& part, std::string_view name) {
        const MathSymbol* const symbol = findSymbol(name);
        if (symbol == nullptr)
            throw NoTextForm();
        if (symbol->spacing == MathSpacing::Around)
            append(part, " " + std::string(symbol->text) + " ", 1, false);
        else if (symbol->spacing == MathSpacing::Word)
            appendWord(part, symbol->text);
        else
            append(part, symbol->text, symbol->text.empty() ? 0 : 1, false);
    }

    // A stroke through the sign that comes next.
    void readNegated(Part& part) {
        constexpr std::string_view stroke = "\u0338";
        const std::string sign(trimmed(readArgument().text));
        append(part, " " + sign + std::string(stroke) + " ", 1, false);
    }

    void readDoubleStruck(Part& part) {
        const std::string letters = readArgument().text;
        for (std::string_view rest = letters; !rest.empty();) {
            const std::string_view letter = firstCharacter(rest);
            append(part, doubleStruck(letter), 1, false);
            rest.remove_prefix(letter.size());
        }
    }

    // What stands below the line needs brackets unless it is a single thing: "1/2x" could be read
    // in two ways. Above the line only what holds an operator needs them.
    void readFraction(Part& part) {
        const Part upper = readArgument();
        const Part lower = readArgument();
        std::string above(trimmed(upper.text));
        std::string below(trimmed(lower.text));
        if (above.empty() || below.empty())
            throw NoTextForm();
        if (upper.atoms > 1 && above.find_first_of(" +-/=") != std::string::npos)
            above = inBrackets(above);
        if (lower.atoms > 1)
            below = inBrackets(below);
        appendWord(part, above + "/" + below);
    }

    void readRoot(Part& part) {
        std::string sign = "√";
        skipSpaces();
        if (m_rest.starts_with('[')) {
            const std::size_t end = m_rest.find(']');
            if (end == std::string_view::npos)
                throw NoTextForm();
            const auto degree = superscript(m_rest.substr(1, end - 1));
            if (!degree)
                throw NoTextForm();
            sign = *degree + sign;
            m_rest.remove_prefix(end + 1);
        }
        const Part argument = readArgument();
        const std::string text(trimmed(argument.text));
        append(part, sign + (argument.atoms > 1 ? inBrackets(text) : text), 1, true);
    }

    // Rows of a matrix are separated by ";", its cells by ","; other environments set lines.
    void readEnvironment(Part& part) {
        if (++m_depth > maxDepth)
            throw NoTextForm();
        std::string name(readRaw());
        if (name.ends_with('*'))
            name.pop_back();
        if (name == "array" || name == "alignat" || name == "alignedat")
            readRaw();
        const auto matrix =
            std::ranges::find(matrices, std::string_view(name), &Matrix::environment);
        const bool isMatrix = matrix != matrices.end();
        const bool isCases = name == "cases";
        std::string text(isMatrix ? matrix->open : isCases ? "{ " : "");
        for (std::string_view separator;;) {
            Part cell;
            while (!m_rest.empty() && !atCellEnd())
                readNext(cell);
            if (m_rest.empty())
                throw NoTextForm();
            const std::string_view content = trimmed(cell.text);
            if (!content.empty())
                text.append(separator).append(content);
            if (m_rest.front() == '&') {
                m_rest.remove_prefix(1);
                separator = isMatrix ? ", " : " ";
                continue;
            }
            const std::string_view command = readCommandName();
            if (command == "end")
                break;
            separator = isMatrix || isCases ? "; " : "\n";
        }
        readRaw();
        --m_depth;
        text += isMatrix ? matrix->close : "";
        append(part, text, 2, false);
    }

    [[nodiscard]] bool atCellEnd() const {
        return m_rest.front() == '&' || m_rest.starts_with("\\\\") || m_rest.starts_with("\\end{");
    }

    void skipSpaces() {
        m_rest = m_rest.substr(std::min(m_rest.find_first_not_of(" \n\t"), m_rest.size()));
    }

    // --- writing ---

    static void append(Part& part, std::string_view text, int atoms, bool endsWord) {
        if (text.empty())
            return;
        if (part.endsWord && isWordCharacter(text.front()))
            part.text += ' ';
        part.text += text;
        part.atoms += atoms;
        part.endsWord = endsWord;
    }

    static void appendWord(Part& part, std::string_view word) {
        if (!part.text.empty() && isWordCharacter(part.text.back()))
            part.text += ' ';
        append(part, word, 2, true);
    }

    // A script directly follows what it belongs to, without a space.
    static void addScript(Part& part, const std::string& script, bool isUpper) {
        if (script.empty())
            return;
        while (part.text.ends_with(' '))
            part.text.pop_back();
        if (const auto form = isUpper ? superscript(script) : subscript(script)) {
            part.text += *form;
            return;
        }
        const bool isSingle = firstCharacter(script).size() == script.size();
        part.text += isUpper ? '^' : '_';
        part.text += isSingle ? script : "{" + script + "}";
    }

    std::string_view m_rest;
    int m_depth = 0;
};

// Each line without superfluous spaces; empty lines left out.
std::string tidied(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string line = withoutGaps(collapsed(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.empty())
            result += (result.empty() ? "" : "\n") + line;
    }
    return result;
}

}  // namespace

std::string mathText(std::string_view tex) {
    try {
        return tidied(MathReader(tex).run());
    } catch (const NoTextForm&) {
        return collapsed(tex);
    }
}

}  // namespace reference::importers::sphinx
