#include "reference/ask/pastedCode.hpp"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "fl/i18n/units.hpp"

namespace reference::ask {
namespace {

constexpr std::size_t deepestBrackets = 32;

bool isOpening(char16_t unit) noexcept {
    return unit == u'(' || unit == u'[' || unit == u'{';
}

bool isClosing(char16_t unit) noexcept {
    return unit == u')' || unit == u']' || unit == u'}';
}

bool isQuote(char16_t unit) noexcept {
    return unit == u'"' || unit == u'\'';
}

// Names that stand for an object of a class that the code does not tell.
bool isOwnObject(std::u16string_view name) noexcept {
    return name == u"self" || name == u"cls" || name == u"this";
}

// Reads the chains of one expression.
class CodeReader {
  public:
    CodeReader(std::u16string_view code, std::size_t offset) : m_code(code), m_offset(offset) {}

    // The chains of this level and, after them, those of the brackets.
    std::vector<Term> read(std::size_t depth) {
        for (std::size_t at = 0; at < m_code.size();) {
            if (isQuote(m_code[at])) {
                at = readChain(endOfString(m_code, at), u"str", at, depth);
            } else if (isOpening(m_code[at])) {
                const auto* const type = m_code[at] == u'[' ? u"list" : u"dict";
                const bool isLiteral = m_code[at] != u'(';
                at = readChain(readBracket(at, depth), isLiteral ? type : u"", at, depth);
            } else if (isIdentifierUnit(m_code[at])) {
                at = readChain(at, u"", at, depth);
            } else {
                ++at;
            }
        }
        m_calls.insert(m_calls.end(), std::make_move_iterator(m_inner.begin()),
                       std::make_move_iterator(m_inner.end()));
        return std::move(m_calls);
    }

  private:
    // Reads names, calls and subscripts from `at` on. `type` is that of the literal before, if
    // there is one, which began at `begin`.
    std::size_t readChain(std::size_t at, std::u16string_view type, std::size_t begin,
                          std::size_t depth) {
        std::vector<Term> chain;
        Term name{.components = {}, .position = m_offset + begin, .length = 0};
        bool isFirst = true;
        bool isCalled = false;
        if (!type.empty())
            name.components.emplace_back(type);
        std::u16string before;  // what the call before it was of
        const auto endName = [&](std::size_t end) {
            name.length = m_offset + end - name.position;
            if (!name.components.empty() && isOwnObject(name.components.front()))
                name.components.erase(name.components.begin());
            // A literal or a variable alone names nothing that is documented.
            const bool isBare = isFirst && name.components.size() == 1 && !isCalled;
            const std::u16string last =
                name.components.empty() ? std::u16string() : name.components.back();
            if (!name.components.empty() && !isBare) {
                name.hints = before.empty() ? 0 : 1;
                if (!before.empty())
                    name.components.insert(name.components.begin(), before);
                chain.push_back(name);
            }
            // A subscript of a result is taken for something like it.
            if (isCalled || !last.empty())
                before = isCalled ? last : std::u16string();
            name.components.clear();
            isFirst = false;
            isCalled = false;
        };
        while (at < m_code.size()) {
            if (!name.components.empty())
                at = endOfTemplate(m_code, at);
            const std::size_t separator = separatorAt(m_code, at);
            if (separator > 0 || (name.components.empty() && isIdentifierUnit(m_code[at]))) {
                at += separator;
                if (name.components.empty())
                    name.position = m_offset + at;
                std::size_t end = at;
                while (end < m_code.size() && isIdentifierUnit(m_code[end]))
                    ++end;
                name.components.emplace_back(m_code.substr(at, end - at));
                at = end;
            } else if (m_code[at] == u'(' || m_code[at] == u'[') {
                isCalled = m_code[at] == u'(';
                endName(at);
                at = readBracket(at, depth);
            } else {
                break;
            }
        }
        endName(at);
        // The last call of a chain is the one that was typed last.
        m_calls.insert(m_calls.end(), std::make_move_iterator(chain.rbegin()),
                       std::make_move_iterator(chain.rend()));
        return std::max(at, begin + 1);
    }

    std::size_t readBracket(std::size_t at, std::size_t depth) {
        const std::size_t end = endOfBracket(m_code, at);
        if (depth < deepestBrackets) {
            auto inner =
                CodeReader(m_code.substr(at + 1, end - at - 1), m_offset + at + 1).read(depth + 1);
            m_inner.insert(m_inner.end(), std::make_move_iterator(inner.begin()),
                           std::make_move_iterator(inner.end()));
        }
        return end;
    }

    const std::u16string_view m_code;
    const std::size_t m_offset;
    std::vector<Term> m_calls;
    std::vector<Term> m_inner;
};

}  // namespace

bool isIdentifierUnit(char16_t unit) noexcept {
    return fl::i18n::isLetterOrDigit(unit) || unit == u'_' || unit == u'$';
}

std::size_t separatorAt(std::u16string_view text, std::size_t at) noexcept {
    constexpr std::u16string_view separators[] = {u".", u"::", u"->", u"#", u"/"};
    for (const auto separator : separators)
        if (text.substr(at).starts_with(separator) && at + separator.size() < text.size() &&
            isIdentifierUnit(text[at + separator.size()]))
            return separator.size();
    return 0;
}

std::size_t endOfTemplate(std::u16string_view text, std::size_t at) noexcept {
    if (at >= text.size() || text[at] != u'<')
        return at;
    std::size_t open = 0;
    for (std::size_t end = at; end < text.size(); ++end) {
        if (text[end] == u'<')
            ++open;
        else if (text[end] == u'>' && --open == 0)
            return separatorAt(text, end + 1) > 0 || text.substr(end + 1).starts_with(u'(')
                       ? end + 1
                       : at;
        else if (text[end] == u'(' || text[end] == u';')
            break;
    }
    return at;
}

std::size_t endOfString(std::u16string_view code, std::size_t at) noexcept {
    for (std::size_t end = at + 1; end < code.size(); ++end) {
        if (code[end] == u'\\')
            ++end;
        else if (code[end] == code[at])
            return end + 1;
    }
    return code.size();
}

std::size_t endOfBracket(std::u16string_view code, std::size_t at) noexcept {
    std::size_t open = 0;
    for (std::size_t end = at; end < code.size();) {
        if (isQuote(code[end])) {
            end = endOfString(code, end);
            continue;
        }
        if (isOpening(code[end]))
            ++open;
        else if (isClosing(code[end]) && --open == 0)
            return end + 1;
        ++end;
    }
    return code.size();
}

std::vector<Term> callsIn(std::u16string_view code, std::size_t offset) {
    auto calls = CodeReader(code, offset).read(0);
    // Who prints a result asks for what gave it.
    if (calls.size() > 1 && calls.front().components == std::vector<std::u16string>{u"print"})
        std::rotate(calls.begin(), calls.begin() + 1, calls.end());
    return calls;
}

}  // namespace reference::ask
