#include "vref/ItemPage.hpp"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "fl/i18n/utf.hpp"
#include "property/DeprecationStatus.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ResultList.hpp"

namespace reference::tools {
namespace {

using property::DeprecationStatus;
using property::RefItem;

// Lines longer than this tire the eye, however wide the terminal is.
constexpr std::size_t widestProse = 100;
constexpr std::size_t narrowestProse = 20;
constexpr std::size_t indentStep = 4;

std::string shown(const std::u16string& text) {
    return withoutControls(fl::i18n::toUtf8(text));
}

// The lines of a text in which lines that begin with a dash are the items of a list: the text of an
// item stands under itself.
std::vector<std::string> wrapItems(std::string_view text, std::size_t width) {
    constexpr std::string_view mark = "- ";
    std::vector<std::string> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.starts_with(mark)) {
            const auto wrapped = wrapToWidth(line, width);
            lines.insert(lines.end(), wrapped.begin(), wrapped.end());
            if (wrapped.empty())
                lines.emplace_back();
            continue;
        }
        std::string_view before = mark;
        for (const auto& part : wrapToWidth(line.substr(mark.size()), width - mark.size())) {
            lines.push_back(std::string(before) + part);
            before = "  ";
        }
    }
    return lines;
}

class PageWriter {
  public:
    PageWriter(std::ostream& out, const Terminal& terminal) : m_out(out), m_terminal(terminal) {}

    void write(const api::ReferenceData& result, const std::string& address) {
        const RefItem& item = result.getRefItem();
        writeHead(result);
        if (!address.empty())
            verbatim(1, m_terminal.styled(Style::Faint, address));
        writeSyntaxes(item);
        writeDescription(item);
        if (item.getInputGroups().empty())
            writeInfos("Inputs", item.getInputs());
        for (const auto& group : item.getInputGroups())
            writeInfos(group.getTitle().empty() ? "Inputs" : shown(group.getTitle()),
                       group.getInputs());
        writeInfos("Outputs", item.getOutputs());
        writeParameters(item);
        for (const auto& group : item.getClassPropertyGroups())
            writeInfos(group.getTitle().empty() ? "Properties" : shown(group.getTitle()),
                       group.getClassProperties());
        writeExamples(item);
        writeSeeAlso(item);
    }

  private:
    void writeHead(const api::ReferenceData& result) {
        const RefItem& item = result.getRefItem();
        const auto& header = result.getHeaderInfo();
        m_out << m_terminal.styled(Style::Name, namesOf(result)) << '\n';
        if (item.getDeprecationStatus() != DeprecationStatus::Current)
            prose(1, DeprecationStatus::enumToString(item.getDeprecationStatus()), Style::Warning);
        if (const std::string replacements = replacementsOf(result); !replacements.empty())
            prose(1, "use " + replacements, Style::Warning);
        prose(1, shown(item.getPurpose()));
        m_out << '\n';

        std::string place = kindsOf(result);
        const auto add = [&place](const std::string& text) {
            place += (place.empty() ? "" : ", ") + text;
        };
        if (!item.getPackageName().empty())
            add("package " + shown(item.getPackageName()));
        std::string product = shown(header.getDisplayName().empty() ? header.getShortName()
                                                                    : header.getDisplayName());
        if (!header.getVersion().empty())
            product += " " + shown(header.getVersion());
        add(product);
        if (!item.getIntroduced().empty())
            add("since " + shown(item.getIntroduced()));
        prose(1, place, Style::Faint);
        prose(1, shown(header.getHelpFolder()) + "/" + shown(item.getHref()), Style::Faint);
    }

    void writeSyntaxes(const RefItem& item) {
        if (item.getSyntaxGroups().empty())
            return;
        heading("Syntax");
        for (const auto& group : item.getSyntaxGroups()) {
            prose(1, shown(group.getTitle()), Style::Faint);
            for (const auto& syntax : group.getSyntaxes())
                verbatim(1, shown(syntax));
        }
    }

    void writeDescription(const RefItem& item) {
        if (item.getDescription().empty())
            return;
        heading("Description");
        prose(1, shown(item.getDescription()));
    }

    template <typename Info>
    void writeInfos(std::string_view title, const std::vector<Info>& infos) {
        if (infos.empty())
            return;
        heading(title);
        for (const auto& info : infos) {
            std::string values;
            for (const auto& value : info.getValues())
                values += (values.empty() ? "" : " | ") + shown(value);
            indent(1);
            m_out << m_terminal.styled(Style::Name, shown(info.getName()));
            if (!values.empty())
                m_out << (info.getName().empty() ? "" : " : ") << values;
            m_out << '\n';
            prose(2, shown(info.getPurpose()));
        }
    }

    void writeParameters(const RefItem& item) {
        if (item.getParameters().empty())
            return;
        heading("Parameters");
        for (const auto& parameter : item.getParameters()) {
            indent(1);
            m_out << m_terminal.styled(Style::Name, shown(parameter.getName()));
            if (!parameter.getDefaultValue().empty())
                m_out << " = " << shown(parameter.getDefaultValue());
            m_out << '\n';
            prose(2, shown(parameter.getPurpose()));
        }
    }

    void writeExamples(const RefItem& item) {
        if (item.getExamples().empty())
            return;
        heading("Examples");
        bool first = true;
        for (const auto& example : item.getExamples()) {
            if (!first)
                m_out << '\n';
            first = false;
            prose(1, shown(example.getTitle()));
            verbatim(2, shown(example.getCode()));
        }
    }

    void writeSeeAlso(const RefItem& item) {
        if (item.getSeeAlsoInfo().empty())
            return;
        heading("See also");
        for (const auto& seeAlso : item.getSeeAlsoInfo()) {
            indent(1);
            m_out << m_terminal.styled(Style::Name, shown(seeAlso.getName()));
            if (!seeAlso.getPage().empty())
                m_out << "  " << m_terminal.styled(Style::Faint, shown(seeAlso.getPage()));
            m_out << '\n';
        }
    }

    void heading(std::string_view title) {
        std::string capitals(title);
        std::ranges::transform(capitals, capitals.begin(), [](char letter) {
            return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
        });
        m_out << '\n' << m_terminal.styled(Style::Heading, capitals) << '\n';
    }

    void indent(std::size_t level) { m_out << std::string(level * indentStep, ' '); }

    void prose(std::size_t level, const std::string& text, Style style = Style::Plain) {
        const std::size_t whole = std::min(m_terminal.width(), widestProse);
        const std::size_t taken = level * indentStep;
        const std::size_t width = whole > taken + narrowestProse ? whole - taken : narrowestProse;
        for (const auto& line : wrapItems(text, width)) {
            if (!line.empty())
                indent(level);
            m_out << m_terminal.styled(style, line) << '\n';
        }
    }

    // Code keeps its own lines, however long.
    void verbatim(std::size_t level, std::string_view text) {
        while (!text.empty()) {
            const auto end = text.find('\n');
            const auto line = text.substr(0, end);
            if (!line.empty())
                indent(level);
            m_out << line << '\n';
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        }
    }

    std::ostream& m_out;
    const Terminal& m_terminal;
};

}  // namespace

void writePage(std::ostream& out, const Terminal& terminal, const api::ReferenceData& result,
               const std::string& address) {
    PageWriter(out, terminal).write(result, address);
}

}  // namespace reference::tools
