#include <iostream>
#include <string>
#include <vector>

#include "docset/JsonText.hpp"
#include "vref/Commands.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ProductRows.hpp"
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
                   {withoutControls(row.displayName)}});
    table.write(out, terminal);
}

}  // namespace

ExitStatus products(const ProductsOptions& options) {
    const Documentation documentation(options.documentation);
    const std::vector<ProductRow> rows = productRows(documentation);
    if (options.json) {
        docset::writeJson(std::cout, toJson(rows));
        std::cout << '\n';
    } else {
        writeTable(std::cout, Terminal::ofStandardOutput(), rows);
    }
    if (!rows.empty())
        return Success;
    std::cerr << "vref: the documentation set holds no products\n";
    return NothingFound;
}

}  // namespace reference::tools
