#include <iostream>
#include <string>
#include <vector>

#include "docset/JsonText.hpp"
#include "vref/Commands.hpp"
#include "vref/DisplayText.hpp"
#include "vref/Pager.hpp"
#include "vref/ProductRows.hpp"
#include "vref/StandardStreams.hpp"
#include "vref/Table.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

void writeTable(std::ostream& out, const Terminal& terminal, const std::vector<ProductRow>& rows) {
    using enum Table::Align;
    Table table({{"PRODUCT", Left},
                 {"VERSION", Left},
                 {"LOCALE", Left},
                 {"STATE", Left},
                 {"ENTITIES", Right},
                 {"PAGES", Right},
                 {"NAME", Left}});
    for (const ProductRow& row : rows)
        table.add({{row.product, Style::Name},
                   {row.version},
                   {row.locale},
                   {row.state, row.state == "installed" ? Style::Plain : Style::Warning},
                   {std::to_string(row.entities)},
                   {std::to_string(row.pages)},
                   {row.displayName}});
    table.write(out, terminal);
}

}  // namespace

ExitStatus products(const ProductsOptions& options, const Configuration& configuration) {
    const Documentation documentation(configuration.documentation());
    const std::vector<ProductRow> rows = productRows(documentation);
    const auto terminal = Terminal::ofStandardOutput(configuration.colours.value);
    PagedOutput output(terminal, configuration.pager.value);
    if (options.json) {
        docset::writeJson(output.stream(), toJson(rows));
        output.stream() << '\n';
    } else {
        writeTable(output.stream(), terminal, rows);
    }
    output.show();
    if (!rows.empty())
        return Success;
    say("the documentation set holds no products");
    return NothingFound;
}

}  // namespace reference::tools
