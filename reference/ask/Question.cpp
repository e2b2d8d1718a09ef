#include "reference/ask/Question.hpp"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "fl/i18n/units.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/ask/QuestionError.hpp"
#include "reference/ask/pastedCode.hpp"

namespace reference::ask {

using property::RefEntityType;

namespace {

std::string withoutControls(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\x7F'; }, ' ');
    return text;
}

}  // namespace

QuestionError::QuestionError(const std::string& problem, std::size_t position, std::size_t length)
    : std::invalid_argument(withoutControls(problem)), m_position(position), m_length(length) {}

QuestionError::~QuestionError() = default;

namespace {

constexpr std::u16string_view knownPlaces[] = {u"name", u"purpose", u"text"};
constexpr std::u16string_view knownStates[] = {u"deprecated", u"current"};
constexpr QuestionFilter knownFilters[] = {{.name = u"type", .values = {}},
                                           {.name = u"product", .values = {}},
                                           {.name = u"in", .values = knownPlaces},
                                           {.name = u"is", .values = knownStates}};
// They bind names in code, and name nothing themselves.
constexpr std::u16string_view codeWords[] = {
    u"as",   u"assert", u"async",  u"await", u"class", u"def",    u"del",  u"elif",
    u"else", u"except", u"for",    u"from",  u"if",    u"import", u"in",   u"new",
    u"not",  u"raise",  u"return", u"throw", u"try",   u"while",  u"with", u"yield"};
constexpr std::u16string_view errorEndings[] = {u"Error",     u"Exception", u"Warning",
                                                u"Interrupt", u"Exit",      u"Fault"};

bool isSpace(char16_t unit) {
    return fl::i18n::isWhiteSpace(unit);
}

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

std::u16string_view trimmed(std::u16string_view text) {
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::u16string asciiLower(std::u16string_view text) {
    std::u16string lower(text);
    for (char16_t& unit : lower)
        if (unit >= u'A' && unit <= u'Z')
            unit = static_cast<char16_t>(unit + (u'a' - u'A'));
    return lower;
}

template <std::size_t size>
bool isOneOf(std::u16string_view text, const std::u16string_view (&texts)[size]) {
    return std::ranges::find(texts, text) != std::end(texts);
}

// The length of the prompt of an interpreter at the beginning of the text.
std::size_t promptLength(std::u16string_view text) {
    for (const std::u16string_view prompt : {u">>>", u"...", u"$ "})
        if (text.starts_with(prompt))
            return prompt.size();
    for (const std::u16string_view prompt : {u"In [", u"Out["}) {
        const std::size_t end = text.find(u"]:");
        if (text.starts_with(prompt) && end != std::u16string_view::npos)
            return end + 2;
    }
    return 0;
}

std::vector<std::u16string_view> splitAtCommas(std::u16string_view text) {
    std::vector<std::u16string_view> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(u',', begin), text.size());
        if (begin < end)
            parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

}  // namespace

// Goes through the text once, from chunk to chunk: what stands between white space, with brackets
// and strings taken as a whole.
class QuestionParser {
  public:
    explicit QuestionParser(std::u16string_view text) {
        const std::u16string_view inner = trimmed(text);
        m_question.m_text = inner;
        m_text = m_question.m_text;
        m_before = text.empty() ? 0 : static_cast<std::size_t>(inner.data() - text.data());
    }

    Question parse() {
        if (m_text.size() > Question::maxLength)
            fail("A question may have up to " + std::to_string(Question::maxLength) +
                     " characters; this one has " + std::to_string(m_text.size()) + ".",
                 Question::maxLength, m_text.size() - Question::maxLength);
        if (readTraceback())
            return std::move(m_question);
        for (m_at = promptLength(m_text); m_at < m_text.size();)
            if (isSpace(m_text[m_at]))
                ++m_at;
            else
                readChunk();
        finish();
        return std::move(m_question);
    }

  private:
    [[noreturn]] void fail(const std::string& problem, std::size_t at, std::size_t length) const {
        throw QuestionError(problem, m_before + at, length);
    }

    void readChunk() {
        if (m_text[m_at] == u'"' && readPhrase())
            return;
        if (readFilter() || readExcluded())
            return;
        const std::size_t begin = m_at;
        bool hasBrackets = false;
        while (m_at < m_text.size() && !isSpace(m_text[m_at])) {
            const char16_t unit = m_text[m_at];
            const bool isString = (unit == u'"' || unit == u'\'') &&
                                  (m_at == begin || !isIdentifierUnit(m_text[m_at - 1]));
            if (isString && isFollowedByMember(endOfString(m_text, m_at))) {
                m_at = endOfString(m_text, m_at);
                hasBrackets = true;
            } else if (const std::size_t end = endOfTemplate(m_text, m_at);
                       end > m_at && m_at > begin) {
                m_at = end;
            } else if (isCallOrLiteral(m_at, m_at > begin)) {
                hasBrackets = true;
                m_at = endOfBracket(m_text, m_at);
            } else {
                ++m_at;
            }
        }
        addChunk(begin, m_at, hasBrackets);
    }

    // Whether a bracket holds the arguments of what stands before it, or is a list or a dictionary
    // that a member is called on.
    [[nodiscard]] bool isCallOrLiteral(std::size_t at, bool isAfterName) const {
        const char16_t unit = m_text[at];
        if (isAfterName && (unit == u'(' || unit == u'['))
            return true;
        return (unit == u'[' || unit == u'{') && isFollowedByMember(endOfBracket(m_text, at));
    }

    [[nodiscard]] bool isFollowedByMember(std::size_t at) const {
        return at + 1 < m_text.size() && m_text[at] == u'.' && isIdentifierUnit(m_text[at + 1]);
    }

    // Not what is a string in code, with a member after it.
    bool readPhrase() {
        const std::size_t end = m_text.find(u'"', m_at + 1);
        if (end == std::u16string_view::npos)
            fail("The phrase that begins here is not ended by a quotation mark.", m_at,
                 m_text.size() - m_at);
        if (isFollowedByMember(end + 1))
            return false;
        const auto phrase = trimmed(m_text.substr(m_at + 1, end - m_at - 1));
        if (!phrase.empty())
            m_question.m_phrases.emplace_back(phrase);
        requireFewWords(m_at);
        m_at = end + 1;
        return true;
    }

    bool readFilter() {
        const std::size_t colon = m_text.find(u':', m_at);
        constexpr std::size_t longestName = 7;
        if (colon == std::u16string_view::npos || colon - m_at > longestName ||
            m_text.substr(colon).starts_with(u"::"))
            return false;
        const std::u16string name = asciiLower(m_text.substr(m_at, colon - m_at));
        if (std::ranges::find(knownFilters, name, &QuestionFilter::name) == std::end(knownFilters))
            return false;
        const std::size_t begin = m_at;
        m_at = colon + 1;
        std::u16string_view value;
        if (m_at < m_text.size() && m_text[m_at] == u'"') {
            const std::size_t end = m_text.find(u'"', m_at + 1);
            if (end == std::u16string_view::npos)
                fail("The value that begins here is not ended by a quotation mark.", m_at,
                     m_text.size() - m_at);
            value = m_text.substr(m_at + 1, end - m_at - 1);
            m_at = end + 1;
        } else {
            std::size_t end = m_at;
            while (end < m_text.size() && !isSpace(m_text[end]))
                ++end;
            value = m_text.substr(m_at, end - m_at);
            m_at = end;
        }
        const auto values = splitAtCommas(value);
        if (values.empty())
            fail("The filter \"" + fl::i18n::toUtf8(name) + ":\" has no value; " +
                     std::string(valuesOf(name)),
                 begin, m_at - begin);
        for (const auto& one : values)
            addFilter(name, one);
        return true;
    }

    [[nodiscard]] static std::string_view valuesOf(std::u16string_view filter) {
        if (filter == u"type")
            return "\"type:method\" has one.";
        if (filter == u"product")
            return "\"product:scipy\" has one.";
        if (filter == u"in")
            return "there is: in:name, in:purpose, in:text.";
        return "there is: is:deprecated, is:current.";
    }

    void addFilter(std::u16string_view name, std::u16string_view value) {
        const auto position = static_cast<std::size_t>(value.data() - m_text.data());
        const auto refuse = [&] {
            std::string known(valuesOf(name));
            if (name == u"type") {
                known = "there is:";
                for (const auto type : RefEntityType::namedValues())
                    known += " " + RefEntityType::enumToString(type);
                known += ".";
            }
            fail("\"" + fl::i18n::toUtf8(value) + "\" is no value of the filter \"" +
                     fl::i18n::toUtf8(name) + ":\"; " + known,
                 position, value.size());
        };
        const std::u16string lower = asciiLower(value);
        if (name == u"type") {
            const auto type = RefEntityType::fromString(fl::i18n::toUtf8(value));
            if (!type)
                refuse();
            m_question.m_types.push_back(*type);
        } else if (name == u"product") {
            m_question.m_products.push_back({.name = std::u16string(value),
                                             .position = m_before + position,
                                             .length = value.size()});
        } else if (name == u"in") {
            if (!isOneOf(lower, knownPlaces))
                refuse();
            m_question.m_place = lower == u"name"      ? Place::Names
                                 : lower == u"purpose" ? Place::Purposes
                                                       : Place::Texts;
        } else {
            if (!isOneOf(lower, knownStates))
                refuse();
            m_question.m_deprecated = lower == u"deprecated";
        }
    }

    // A minus sign directly before a word, after a space.
    bool readExcluded() {
        if (m_text[m_at] != u'-' || m_at + 1 >= m_text.size() || m_text[m_at + 1] == u'-' ||
            !isIdentifierUnit(m_text[m_at + 1]) || isDigit(m_text[m_at + 1]))
            return false;
        std::size_t end = m_at + 1;
        while (end < m_text.size() && !isSpace(m_text[end]))
            ++end;
        m_question.m_excluded.emplace_back(m_text.substr(m_at + 1, end - m_at - 1));
        m_at = end;
        return true;
    }

    void addChunk(std::size_t begin, std::size_t end, bool hasBrackets) {
        std::u16string_view chunk = m_text.substr(begin, end - begin);
        // What stands before an assignment is the name that the result gets.
        if (const std::size_t equals = assignmentIn(chunk); equals != std::u16string_view::npos) {
            m_question.m_terms.clear();
            m_isCode = true;
            begin += equals + 1;
            chunk.remove_prefix(equals + 1);
            if (chunk.empty())
                return;
        }
        if (hasBrackets) {
            auto calls = callsIn(chunk, m_before + begin);
            m_isCode = m_isCode || !calls.empty();
            m_question.m_calls.insert(m_question.m_calls.end(),
                                      std::make_move_iterator(calls.begin()),
                                      std::make_move_iterator(calls.end()));
            requireFewWords(begin);
            return;
        }
        if (endsLikeError(chunk)) {
            m_at = m_text.size();
            m_question.m_terms.clear();
            m_question.m_calls.clear();
            m_question.m_phrases.clear();
        }
        addTerms(chunk, begin);
        requireFewWords(begin);
    }

    // Each component of a name is a word, and so is a phrase. Of several calls, each may have as
    // many.
    void requireFewWords(std::size_t begin) const {
        std::size_t words = m_question.m_phrases.size();
        for (const Term& term : m_question.m_terms)
            words += term.components.size();
        for (const Term& call : m_question.m_calls)
            words = std::max(words, call.components.size());
        if (words > Question::maxTerms)
            fail("A question may have up to " + std::to_string(Question::maxTerms) + " words.",
                 begin, m_text.size() - begin);
    }

    // The position of a sign of assignment that stands outside brackets.
    static std::size_t assignmentIn(std::u16string_view chunk) {
        constexpr std::u16string_view compared = u"=<>!~";
        for (std::size_t at = 0; at < chunk.size(); ++at) {
            if (chunk[at] == u'(' || chunk[at] == u'[' || chunk[at] == u'"' || chunk[at] == u'\'')
                break;
            if (chunk[at] != u'=')
                continue;
            const bool isComparison =
                (at > 0 && compared.find(chunk[at - 1]) != std::u16string_view::npos) ||
                (at + 1 < chunk.size() && chunk[at + 1] == u'=');
            return isComparison ? std::u16string_view::npos : at;
        }
        return std::u16string_view::npos;
    }

    // "json.decoder.JSONDecodeError:", after which a message comes.
    static bool endsLikeError(std::u16string_view chunk) {
        if (!chunk.ends_with(u':'))
            return false;
        chunk.remove_suffix(1);
        return std::ranges::any_of(errorEndings,
                                   [&](auto ending) { return chunk.ends_with(ending); });
    }

    // The runs of identifiers and separators in a chunk; the punctuation between them is left out.
    void addTerms(std::u16string_view chunk, std::size_t begin) {
        const std::size_t before = m_question.m_terms.size();
        for (std::size_t at = 0; at < chunk.size();) {
            if (!isIdentifierUnit(chunk[at])) {
                ++at;
                continue;
            }
            Term term{.components = {}, .position = m_before + begin + at, .length = 0};
            const std::size_t first = at;
            while (true) {
                std::size_t end = at;
                while (end < chunk.size() && isIdentifierUnit(chunk[end]))
                    ++end;
                term.components.emplace_back(chunk.substr(at, end - at));
                at = endOfTemplate(chunk, end);
                const std::size_t separator = separatorAt(chunk, at);
                if (separator == 0)
                    break;
                at += separator;
            }
            term.length = at - first;
            // The s of "list's".
            if (first > 0 && (chunk[first - 1] == u'\'' || chunk[first - 1] == u'\u2019') &&
                term.length <= 2 && m_question.m_terms.size() > before)
                continue;
            m_question.m_terms.push_back(std::move(term));
        }
    }

    // `File "socket.py", line 833, in create_connection`: the function of a traceback.
    bool readTraceback() {
        constexpr std::u16string_view beginning = u"File \"";
        constexpr std::u16string_view before = u", in ";
        const std::size_t found = m_text.rfind(before);
        if (!m_text.starts_with(beginning) || found == std::u16string_view::npos)
            return false;
        const std::size_t begin = found + before.size();
        std::size_t end = begin;
        while (end < m_text.size() && isIdentifierUnit(m_text[end]))
            ++end;
        if (begin == end)
            return false;
        Term term{.components = {}, .position = m_before + begin, .length = end - begin};
        // The module is named like the file.
        const auto path =
            m_text.substr(beginning.size(), m_text.find(u'"', beginning.size()) - beginning.size());
        const auto file = path.substr(path.find_last_of(u"/\\") + 1);
        if (const auto module = file.substr(0, file.find(u'.')); !module.empty())
            term.components.emplace_back(module);
        term.components.emplace_back(m_text.substr(begin, end - begin));
        m_question.m_calls.push_back(std::move(term));
        return true;
    }

    void finish() {
        auto& terms = m_question.m_terms;
        if (m_question.m_calls.empty() && !m_isCode)
            readImport();
        else
            std::erase_if(terms, [](const Term& term) {
                return term.components.size() == 1 && isOneOf(term.components.front(), codeWords);
            });
        if (terms.empty() && m_question.m_calls.empty() && m_question.m_phrases.empty())
            fail(m_question.hasFilters() ? "The question has filters, but nothing to look for."
                                         : "The question has nothing to look for.",
                 0, m_text.size());
    }

    // "import os.path as path", "from json import loads".
    void readImport() {
        auto& terms = m_question.m_terms;
        const auto isWord = [&](std::size_t at, std::u16string_view word) {
            return at < terms.size() && terms[at].components.size() == 1 &&
                   terms[at].components.front() == word;
        };
        const auto removeAlias = [&] {
            if (terms.size() > 2 && isWord(terms.size() - 2, u"as"))
                terms.resize(terms.size() - 2);
        };
        if (isWord(0, u"from") && isWord(2, u"import") && terms.size() > 3) {
            removeAlias();
            const Term package = terms[1];
            terms.erase(terms.begin(), terms.begin() + 3);
            for (Term& name : terms) {
                name.components.insert(name.components.begin(), package.components.begin(),
                                       package.components.end());
                m_question.m_calls.push_back(name);
            }
            terms.clear();
        } else if (isWord(0, u"import") && (terms.size() == 2 || isWord(2, u"as"))) {
            removeAlias();
            terms.erase(terms.begin());
        }
    }

    Question m_question;
    std::u16string_view m_text;
    // White space before the text, by which positions are those in what was given.
    std::size_t m_before = 0;
    std::size_t m_at = 0;
    bool m_isCode = false;
};

std::span<const QuestionFilter> Question::filters() noexcept {
    return knownFilters;
}

Question Question::parse(std::u16string_view text) {
    return QuestionParser(text).parse();
}

}  // namespace reference::ask
