#include "docset/JsonText.hpp"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

namespace reference::docset {
namespace {

namespace json = boost::json;

constexpr std::size_t maxLineWidth = 100;

class Writer {
  public:
    explicit Writer(std::ostream& out) : m_out(out) {}

    void write(const json::value& value) {
        if (const auto* object = value.if_object(); object != nullptr && !object->empty())
            writeObject(*object);
        else if (const auto* array = value.if_array(); array != nullptr && !fitsOneLine(*array))
            writeArray(*array);
        else
            m_out << json::serialize(value);
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
            m_out << json::serialize(member.key()) << ": ";
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

void writeJson(std::ostream& out, const json::value& value) {
    Writer(out).write(value);
}

}  // namespace reference::docset
