#include "vref/ResultList.hpp"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <vector>

#include "property/DeprecationStatus.hpp"
#include "property/RefEntityType.hpp"
#include "vref/DisplayText.hpp"

namespace reference::tools {
namespace {

using property::DeprecationStatus;
using property::RefEntityType;

// A column is no wider than this, so that one long name does not push the others off the line.
constexpr std::size_t widestColumn = 60;

struct Row {
    std::string names;
    std::string kinds;
    std::string product;
    std::string status;  // empty for what is current
    std::string purpose;
    std::string href;
    std::string replacements;  // names, for what is deprecated
};

std::string statusText(DeprecationStatus::Value status) {
    return status == DeprecationStatus::Current
               ? std::string()
               : "(" + DeprecationStatus::enumToString(status) + ") ";
}

Row toRow(const api::ReferenceData& result) {
    const auto& item = result.getRefItem();
    return {.names = namesOf(result),
            .kinds = kindsOf(result),
            .product = shownLine(result.getHeaderInfo().getShortName()),
            .status = statusText(item.getDeprecationStatus()),
            .purpose = shownLine(item.getPurpose()),
            .href = shownLine(item.getHref()),
            .replacements = replacementsOf(result)};
}

std::size_t columnWidth(const std::vector<Row>& rows, std::string Row::*column) {
    std::size_t width = 0;
    for (const Row& row : rows)
        width = std::max(width, displayWidth(row.*column));
    return std::min(width, widestColumn);
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const auto& text : texts)
        all += (all.empty() ? "" : ", ") + text;
    return all;
}

}  // namespace

std::string namesOf(const api::ReferenceData& result) {
    std::vector<std::string> names;
    for (const auto& entity : result.getRefItem().getRefEntities())
        names.push_back(shownLine(entity.getName()));
    return names.empty() ? shownLine(result.getRefItem().getHref()) : joined(names);
}

std::string replacementsOf(const api::ReferenceData& result) {
    std::vector<std::string> names;
    for (const auto& replacement : result.getRefItem().getReplacements())
        names.push_back(shownLine(replacement.getName()));
    return joined(names);
}

std::string kindsOf(const api::ReferenceData& result) {
    std::vector<std::string> kinds;
    for (const auto& entity : result.getRefItem().getRefEntities()) {
        std::string kind = RefEntityType::enumToString(entity.getRefEntityType());
        if (std::ranges::find(kinds, kind) == kinds.end())
            kinds.push_back(std::move(kind));
    }
    return joined(kinds);
}

void writeList(std::ostream& out, const Terminal& terminal,
               std::span<const api::ReferenceData> results, const ListDetails& details) {
    std::vector<Row> rows;
    rows.reserve(results.size());
    std::ranges::transform(results, std::back_inserter(rows), toRow);
    const std::size_t namesWidth = columnWidth(rows, &Row::names);
    const std::size_t kindsWidth = columnWidth(rows, &Row::kinds);
    const std::size_t productWidth = columnWidth(rows, &Row::product);

    for (std::size_t at = 0; at < rows.size(); ++at) {
        const Row& row = rows[at];
        const std::size_t taken = displayWidth(row.names);
        const std::string middle = std::string(taken < namesWidth ? namesWidth - taken : 0, ' ') +
                                   "  " + padToWidth(row.kinds, kindsWidth) + "  " +
                                   padToWidth(row.product, productWidth);
        std::string status = row.status;
        std::string purpose = row.purpose;
        if (terminal.isTerminal()) {
            const std::size_t used = taken + displayWidth(middle) + 2;
            std::size_t left = terminal.width() > used ? terminal.width() - used : 0;
            status = cutToWidth(status, left);
            left -= displayWidth(status);
            purpose = cutToWidth(purpose, left);
        }
        std::string end = terminal.styled(Style::Warning, status) + purpose;
        if (!end.empty())
            end.insert(0, "  ");
        if (!details.headings.empty() && !details.headings[at].empty())
            out << terminal.styled(Style::Faint, printableLine(details.headings[at] + ":")) << '\n';
        out << terminal.linked(details.addresses.empty() ? "" : details.addresses[at],
                               terminal.styled(Style::Name, row.names))
            << middle << end << '\n';
        if (details.hrefs)
            out << "    " << terminal.styled(Style::Faint, row.href) << '\n';
        if (!row.replacements.empty())
            out << "    use " << terminal.styled(Style::Name, row.replacements) << '\n';
        if (!details.notes.empty())
            out << "    " << terminal.styled(Style::Faint, printableLine(details.notes[at]))
                << '\n';
    }
}

}  // namespace reference::tools
