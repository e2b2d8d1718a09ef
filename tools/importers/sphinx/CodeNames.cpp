#include "sphinx/CodeNames.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "docset/AliasFile.hpp"
#include "sphinx/BlockReader.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

enum class TokenKind { Name, Dot, Comma, Equals, Open, Close, EndOfStatement, Other, EndOfCode };

struct Token {
    TokenKind kind = TokenKind::EndOfCode;
    std::string_view text;
};

bool isNameByte(char c) {
    return docset::isIdentifier({&c, 1}) || isDigit(c) || static_cast<unsigned char>(c) >= 0x80;
}

// Divides code into tokens. A statement ends with its line, but not within brackets; a prompt
// begins a new one in any case.
class CodeLexer {
  public:
    explicit CodeLexer(std::string_view code) : m_code(code) {}

    Token next() {
        while (m_at < m_code.size()) {
            if (m_isLineStart) {
                m_isLineStart = false;
                if (passPrompt() && std::exchange(m_depth, 0) > 0)
                    return {.kind = TokenKind::EndOfStatement};
                continue;
            }
            const char c = m_code[m_at];
            if (c == '\n') {
                m_isLineStart = true;
                ++m_at;
                if (m_depth == 0)
                    return {.kind = TokenKind::EndOfStatement};
            } else if (c == '#') {
                m_at = std::min(m_code.find('\n', m_at), m_code.size());
            } else if (c == '\\' && rest().starts_with("\\\n")) {
                m_at += 2;
            } else if (c == ' ' || c == '\t' || c == '\r') {
                ++m_at;
            } else {
                return readToken(c);
            }
        }
        return {};
    }

  private:
    [[nodiscard]] std::string_view rest() const { return m_code.substr(m_at); }

    // Whether the line begins with the prompt for a new statement.
    bool passPrompt() {
        while (m_at < m_code.size() && (m_code[m_at] == ' ' || m_code[m_at] == '\t'))
            ++m_at;
        if (rest().starts_with("...")) {
            m_at += std::string_view(rest().starts_with("...:") ? "...:" : "...").size();
            return false;
        }
        if (rest().starts_with(">>>")) {
            m_at += 3;
            return true;
        }
        if (!rest().starts_with("In ["))
            return false;
        const std::size_t end = rest().substr(0, rest().find('\n')).find("]:");
        if (end == std::string_view::npos)
            return false;
        m_at += end + 2;
        return true;
    }

    Token readToken(char c) {
        if (isNameByte(c))
            return readName();
        if (c == '"' || c == '\'')
            return readString(c);
        ++m_at;
        switch (c) {
            case '.':
                return {.kind = TokenKind::Dot};
            case ',':
                return {.kind = TokenKind::Comma};
            case ';':
                return {.kind = TokenKind::EndOfStatement};
            case '(':
            case '[':
            case '{':
                ++m_depth;
                return {.kind = c == '(' ? TokenKind::Open : TokenKind::Other};
            case ')':
            case ']':
            case '}':
                m_depth -= m_depth > 0 ? 1 : 0;
                return {.kind = c == ')' ? TokenKind::Close : TokenKind::Other};
            case '=':
                if (!rest().starts_with('='))
                    return {.kind = TokenKind::Equals};
                ++m_at;
                return {.kind = TokenKind::Other};
            default:
                return {.kind = TokenKind::Other};
        }
    }

    Token readName() {
        const std::size_t begin = m_at;
        while (m_at < m_code.size() && isNameByte(m_code[m_at]))
            ++m_at;
        const auto text = m_code.substr(begin, m_at - begin);
        return {.kind = docset::isIdentifier(text) ? TokenKind::Name : TokenKind::Other,
                .text = text};
    }

    // An apostrophe in a line of output opens no string.
    Token readString(char quote) {
        const std::string thrice(3, quote);
        bool& isUnclosed = quote == '"' ? m_lacksLongEnd.first : m_lacksLongEnd.second;
        const bool isLong = rest().starts_with(thrice);
        if (isLong && isUnclosed) {
            ++m_at;
            return {.kind = TokenKind::Other};
        }
        std::size_t end = m_at + (isLong ? 3 : 1);
        for (; end < m_code.size(); ++end) {
            if (m_code[end] == '\\')
                ++end;
            else if (!isLong && m_code[end] == '\n')
                break;
            else if (isLong ? m_code.substr(end).starts_with(thrice) : m_code[end] == quote) {
                m_at = end + (isLong ? 3 : 1);
                return {.kind = TokenKind::Other};
            }
        }
        isUnclosed = isUnclosed || isLong;
        ++m_at;
        return {.kind = TokenKind::Other};
    }

    const std::string_view m_code;
    std::size_t m_at = 0;
    std::size_t m_depth = 0;
    bool m_isLineStart = true;
    // Whether the rest of the code has no end of a string in three quotes, or in three apostrophes:
    // it is looked for once.
    std::pair<bool, bool> m_lacksLongEnd;
};

class CodeNamesReader {
  public:
    CodeNamesReader(std::string_view code, CodeNames& names) : m_lexer(code), m_names(names) {}

    void read() {
        take();
        while (m_token.kind != TokenKind::EndOfCode) {
            readStatement();
            while (!isAtEnd())
                take();
            if (m_token.kind == TokenKind::EndOfStatement)
                take();
        }
    }

  private:
    void take() { m_token = m_lexer.next(); }

    [[nodiscard]] bool isAtEnd() const {
        return m_token.kind == TokenKind::EndOfStatement || m_token.kind == TokenKind::EndOfCode;
    }

    bool takeWord(std::string_view word) {
        const bool isWord = m_token.kind == TokenKind::Name && m_token.text == word;
        if (isWord)
            take();
        return isWord;
    }

    bool takeKind(TokenKind kind) {
        const bool isKind = m_token.kind == kind;
        if (isKind)
            take();
        return isKind;
    }

    // Empty where there is none.
    std::string takeName() {
        std::string name;
        if (m_token.kind == TokenKind::Name) {
            name = m_token.text;
            take();
        }
        return name;
    }

    std::string takeDottedName() {
        std::string name = takeName();
        while (!name.empty() && takeKind(TokenKind::Dot)) {
            const std::string component = takeName();
            if (component.empty())
                return {};
            name += "." + component;
        }
        return name;
    }

    void readStatement() {
        if (takeWord("import"))
            readImports({});
        else if (takeWord("from"))
            readFromImport();
        else if (const std::string name = takeName(); !name.empty() && takeKind(TokenKind::Equals))
            readAssignment(name);
    }

    void readFromImport() {
        const std::string package = takeDottedName();
        if (package.empty() || !takeWord("import"))
            return;
        takeKind(TokenKind::Open);
        readImports(package + ".");
    }

    // The list of what is imported, up to the end of the statement.
    void readImports(const std::string& prefix) {
        std::vector<std::pair<std::string, std::string>> aliases;
        do {
            if (isAtEnd() || m_token.kind == TokenKind::Close)
                break;
            const std::string name = takeDottedName();
            if (name.empty())
                return;
            if (!takeWord("as"))
                continue;
            const std::string alias = takeName();
            if (alias.empty())
                return;
            if (alias != lastComponent(name))
                aliases.emplace_back(alias, prefix + name);
        } while (takeKind(TokenKind::Comma));
        takeKind(TokenKind::Close);
        if (!isAtEnd())
            return;
        for (const auto& [alias, name] : aliases)
            ++m_names.imports[alias][name];
    }

    // What a variable gets from itself is most likely of the same class.
    void readAssignment(const std::string& variable) {
        const std::string value = takeDottedName();
        if (value == variable || value.starts_with(variable + "."))
            return;
        const bool isCall = m_token.kind == TokenKind::Open;
        ++m_names.assignments[variable][isCall ? value : std::string()];
    }

    CodeLexer m_lexer;
    Token m_token;
    CodeNames& m_names;
};

}  // namespace

void addCodeNames(std::string_view code, CodeNames& names) {
    CodeNamesReader(code, names).read();
}

CodeNames codeNamesOf(Node page) {
    CodeNames names;
    for (const std::string& code : codeWithin(page))
        addCodeNames(code, names);
    return names;
}

}  // namespace reference::importers::sphinx
