#include "docset/JsonText.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <ostream>
#include <string>

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

namespace reference::docset {
namespace {

namespace json = boost::json;

constexpr std::size_t maxLineWidth = 100;

// What terminals may obey, as UTF-8: C1 controls, line and paragraph separators, and what changes
// the direction of text. Writes it as \uXXXX, which says the same in JSON.
std::string withEscapes(std::string text) {
    const auto isMeant = [](unsigned lead, unsigned second, unsigned third) {
        if (lead == 0xC2)
            return second < 0xA0;
        return lead == 0xE2 && ((second == 0x80 && third >= 0xA8 && third <= 0xAE) ||
                                (second == 0x81 && third >= 0xA6 && third <= 0xA9));
    };
    const auto byteAt = [&](std::size_t at) {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
    };
    std::string escaped;
    std::size_t kept = 0;
    for (std::size_t at = text.find_first_of("\xC2\xE2\x7F"); at != std::string::npos;
         at = text.find_first_of("\xC2\xE2\x7F", at + 1)) {
        const unsigned lead = byteAt(at);
        const bool isDelete = lead == 0x7F;
        if (!isDelete && !isMeant(lead, byteAt(at + 1), byteAt(at + 2)))
            continue;
        const unsigned code =
            isDelete       ? lead
            : lead == 0xC2 ? byteAt(at + 1)
                           : 0x2000U | (byteAt(at + 1) & 0x3FU) << 6U | (byteAt(at + 2) & 0x3FU);
        std::array<char, 7> digits{};
        std::snprintf(digits.data(), digits.size(), "\\u%04x", code);
        escaped.append(text, kept, at - kept);
        escaped += digits.data();
        kept = at + (isDelete ? 1 : lead == 0xC2 ? 2 : 3);
    }
    if (kept == 0)
        return text;
    escaped.append(text, kept);
    return escaped;
}

class Writer {
  public:
    explicit Writer(std::ostream& out) : m_out(out) {}

    void write(const json::value& value) {
        if (const auto* object = value.if_object(); object != nullptr && !object->empty())
            writeObject(*object);
        else if (const auto* array = value.if_array(); array != nullptr && !fitsOneLine(*array))
            writeArray(*array);
        else
            m_out << toJsonText(value);
    }

  private:
    [[nodiscard]] bool fitsOneLine(const json::array& array) const {
        std::size_t width = m_indent.size();
        return std::ranges::all_of(array, [&](const json::value& element) {
            width += element.is_string() ? element.get_string().size() + 4 : 24;
            return !element.is_structured() && width <= maxLineWidth;
        });
    }

    void writeObject(const json::object& object) {
        open('{');
        bool first = true;
        for (const auto& member : object) {
            nextLine(first);
            m_out << toJsonText(member.key()) << ": ";
            write(member.value());
        }
        close('}');
    }

    void writeArray(const json::array& array) {
        open('[');
        bool first = true;
        for (const auto& element : array) {
            nextLine(first);
            write(element);
        }
        close(']');
    }

    void open(char bracket) {
        m_out << bracket;
        m_indent += "  ";
    }

    void nextLine(bool& first) {
        m_out << (first ? "\n" : ",\n") << m_indent;
        first = false;
    }

    void close(char bracket) {
        m_indent.resize(m_indent.size() - 2);
        m_out << '\n' << m_indent << bracket;
    }

    std::ostream& m_out;
    std::string m_indent;
};

}  // namespace

std::string toJsonText(const json::value& value) {
    return withEscapes(json::serialize(value));
}

void writeJson(std::ostream& out, const json::value& value) {
    Writer(out).write(value);
}

}  // namespace reference::docset
