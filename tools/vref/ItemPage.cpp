#include "vref/ItemPage.hpp"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "property/DeprecationStatus.hpp"
#include "property/RefEntityType.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ProseLayout.hpp"
#include "vref/ResultList.hpp"

namespace reference::tools {
namespace {

using property::DeprecationStatus;
using property::RefItem;

// Lines longer than this tire the eye, however wide the terminal is.
constexpr std::size_t widestProse = 100;
constexpr std::size_t narrowestProse = 20;
constexpr std::size_t indentStep = 4;

// The name of a property and what is known about its type and value, as they stand in lists.
std::string headOf(const std::string& name, const std::vector<std::u16string>& values) {
    std::string all;
    for (const auto& value : values)
        all += (all.empty() ? "" : " | ") + shownLine(value);
    if (all.empty())
        return name;
    return name.empty() ? all : name + " : " + all;
}

// The property that an entry was made for; null for every other entry.
const property::ClassProperty* singleProperty(const RefItem& item) {
    const auto& groups = item.getClassPropertyGroups();
    const bool isSingle =
        item.getRefEntities().size() == 1 &&
        item.getRefEntities().front().getRefEntityType() == property::RefEntityType::Property &&
        groups.size() == 1 && groups.front().getClassProperties().size() == 1;
    if (!isSingle)
        return nullptr;
    const auto& single = groups.front().getClassProperties().front();
    return single.getPurpose() == item.getPurpose() ? &single : nullptr;
}

// How much of a text is shown.
enum class Extent { Whole, FirstParagraph };

class PageWriter {
  public:
    PageWriter(std::ostream& out, const Terminal& terminal) : m_out(out), m_terminal(terminal) {}

    void write(const api::ReferenceData& result, const PageDetails& details) {
        const RefItem& item = result.getRefItem();
        const property::ClassProperty* const single = singleProperty(item);
        const std::string purpose = shown(item.getPurpose());
        const std::size_t firstEnd = std::min(purpose.find("\n\n"), purpose.size());
        const std::string first = single != nullptr ? purpose.substr(0, firstEnd) : purpose;
        writeHead(result, first, single == nullptr);
        if (!details.address.empty())
            verbatim(1, m_terminal.styled(Style::Faint, details.address));
        writeSyntaxes(item);
        if (single != nullptr && !single->getValues().empty()) {
            heading("Syntax");
            syntax(headOf(shownLine(single->getName()), single->getValues()));
        }
        const std::vector<ProseSection> sections =
            sectionsOf(single != nullptr ? purpose.substr(std::min(firstEnd + 2, purpose.size()))
                                         : shown(item.getDescription()));
        for (const ProseSection& section : sections)
            if (section.title.empty())
                writeSection("Description", section);
        if (item.getInputGroups().empty())
            writeInfos("Inputs", item.getInputs());
        for (const auto& group : item.getInputGroups())
            writeInfos(group.getTitle().empty() ? "Inputs" : shownLine(group.getTitle()),
                       group.getInputs());
        writeInfos("Outputs", item.getOutputs());
        writeParameters(item);
        for (const ProseSection& section : sections)
            if (!section.title.empty())
                writeSection(section.title, section);
        if (single == nullptr)
            for (const auto& group : item.getClassPropertyGroups())
                writeInfos(group.getTitle().empty() ? "Properties" : shownLine(group.getTitle()),
                           group.getClassProperties(), Extent::FirstParagraph);
        for (const MemberGroup& group : details.members)
            writeMembers(group);
        writeExamples(item);
        writeSeeAlso(item, details.seeAlso);
    }

  private:
    void writeHead(const api::ReferenceData& result, const std::string& purpose,
                   bool showsVersion) {
        const RefItem& item = result.getRefItem();
        const auto& header = result.getHeaderInfo();
        m_out << m_terminal.styled(Style::Name, namesOf(result)) << '\n';
        if (item.getDeprecationStatus() != DeprecationStatus::Current)
            prose(1, DeprecationStatus::enumToString(item.getDeprecationStatus()), Style::Warning);
        if (const std::string replacements = replacementsOf(result); !replacements.empty())
            prose(1, "use " + replacements, Style::Warning);
        prose(1, purpose);
        m_out << '\n';

        std::string place = kindsOf(result);
        const auto add = [&place](const std::string& text) {
            place += (place.empty() ? "" : ", ") + text;
        };
        if (!item.getPackageName().empty())
            add("package " + shownLine(item.getPackageName()));
        std::string product = shownLine(header.getDisplayName().empty() ? header.getShortName()
                                                                        : header.getDisplayName());
        if (!header.getVersion().empty())
            product += " " + shownLine(header.getVersion());
        add(product);
        if (showsVersion && !item.getIntroduced().empty())
            add("since " + shownLine(item.getIntroduced()));
        prose(1, place, Style::Faint);
        prose(1, shownLine(header.getHelpFolder()) + "/" + shownLine(item.getHref()), Style::Faint);
    }

    void writeSyntaxes(const RefItem& item) {
        if (item.getSyntaxGroups().empty())
            return;
        heading("Syntax");
        for (const auto& group : item.getSyntaxGroups()) {
            prose(1, shownLine(group.getTitle()), Style::Faint);
            for (const auto& each : group.getSyntaxes())
                syntax(shown(each));
        }
    }

    void writeSection(const std::string& title, const ProseSection& section) {
        heading(title);
        prose(1, section.text);
    }

    void writeMembers(const MemberGroup& group) {
        heading(group.title);
        for (const Member& member : group.members) {
            indent(1);
            m_out << m_terminal.linked(member.address,
                                       m_terminal.styled(Style::Name, shownLine(member.name)));
            if (member.status != DeprecationStatus::Current)
                m_out << "  "
                      << m_terminal.styled(
                             Style::Warning,
                             "(" + DeprecationStatus::enumToString(member.status) + ")");
            m_out << '\n';
            prose(2, shown(member.purpose));
        }
    }

    template <typename Info>
    void writeInfos(std::string_view title, const std::vector<Info>& infos,
                    Extent extent = Extent::Whole) {
        if (infos.empty())
            return;
        heading(title);
        for (const auto& info : infos) {
            const std::string name = shownLine(info.getName());
            const std::string head = headOf(name, info.getValues());
            indent(1);
            m_out << m_terminal.styled(Style::Name, name) << head.substr(name.size()) << '\n';
            const std::string purpose = shown(info.getPurpose());
            prose(2, extent == Extent::Whole ? purpose : purpose.substr(0, purpose.find("\n\n")));
        }
    }

    void writeParameters(const RefItem& item) {
        if (item.getParameters().empty())
            return;
        heading("Parameters");
        for (const auto& parameter : item.getParameters()) {
            indent(1);
            m_out << m_terminal.styled(Style::Name, shownLine(parameter.getName()));
            if (!parameter.getDefaultValue().empty())
                m_out << " = " << shownLine(parameter.getDefaultValue());
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
            prose(1, shownLine(example.getTitle()));
            verbatim(2, shown(example.getCode()));
        }
    }

    void writeSeeAlso(const RefItem& item, const std::vector<SeeAlsoTarget>& targets) {
        const auto& entries = item.getSeeAlsoInfo();
        if (entries.empty())
            return;
        heading("See also");
        for (std::size_t at = 0; at < entries.size(); ++at) {
            const SeeAlsoTarget target = at < targets.size() ? targets[at] : SeeAlsoTarget();
            constexpr std::u16string_view separator = u" – ";
            const std::u16string name = nameOf(entries[at]);
            std::u16string remark = entries[at].getName().substr(name.size());
            remark.erase(0, separator.size());
            indent(1);
            m_out << m_terminal.linked(target.address,
                                       m_terminal.styled(Style::Name, shownLine(name)));
            if (!entries[at].getPage().empty())
                m_out << "  " << m_terminal.styled(Style::Faint, shownLine(entries[at].getPage()));
            m_out << '\n';
            prose(2, shown(remark.empty() ? target.purpose : remark));
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
        for (const auto& line : layOutProse(text, widthAt(level))) {
            if (!line.empty())
                indent(level);
            m_out << m_terminal.styled(style, line) << '\n';
        }
    }

    void syntax(const std::string& text) {
        for (const auto& line : layOutSyntax(text, widthAt(1))) {
            indent(1);
            m_out << line << '\n';
        }
    }

    [[nodiscard]] std::size_t widthAt(std::size_t level) const {
        const std::size_t whole = std::min(m_terminal.width(), widestProse);
        const std::size_t taken = level * indentStep;
        return whole > taken + narrowestProse ? whole - taken : narrowestProse;
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
               const PageDetails& details) {
    PageWriter(out, terminal).write(result, details);
}

}  // namespace reference::tools
