#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "docset/JsonText.hpp"
#include "fl/i18n/utf.hpp"
#include "property/RefEntityType.hpp"
#include "reference/ask/complete.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/Commands.hpp"
#include "vref/DisplayText.hpp"
#include "vref/Table.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;
using ask::Completion;
using property::RefEntityType;

std::string typeText(const Completion& completion) {
    return completion.isName ? RefEntityType::enumToString(completion.type) : std::string();
}

// In one line, without tabs.
std::string purposeText(const Completion& completion) {
    std::string text = shownLine(completion.purpose);
    std::ranges::replace_if(
        text, [](char unit) { return unit == '\n' || unit == '\t'; }, ' ');
    return text;
}

void writeJson(std::ostream& out, const std::vector<Completion>& completions) {
    json::array array;
    for (const Completion& completion : completions) {
        json::object object{{"text", fl::i18n::toUtf8(completion.text)}};
        if (completion.isName) {
            object["name"] = fl::i18n::toUtf8(completion.name);
            object["type"] = typeText(completion);
            object["purpose"] = fl::i18n::toUtf8(completion.purpose);
        }
        array.push_back(std::move(object));
    }
    docset::writeJson(out, array);
    out << '\n';
}

void writeTable(std::ostream& out, const Terminal& terminal,
                const std::vector<Completion>& completions) {
    using enum Table::Align;
    Table table({{"NAME", Left}, {"TYPE", Left}, {"PURPOSE", Left}});
    for (const Completion& completion : completions)
        table.add({{shownLine(completion.text), Style::Name},
                   {typeText(completion)},
                   {purposeText(completion)}});
    table.write(out, terminal);
}

void writeLines(std::ostream& out, const std::vector<Completion>& completions) {
    for (const Completion& completion : completions)
        out << shownLine(completion.text) << '\t' << typeText(completion) << '\t'
            << purposeText(completion) << '\n';
}

}  // namespace

ExitStatus complete(const CompleteOptions& options, const Configuration& configuration) {
    const Documentation documentation(configuration.documentation());
    ask::CompleteOptions wanted{.limit = options.limit};
    for (const auto& text : options.query.products) {
        wanted.products.push_back(fromCommandLine(text));
        documentation.requireInstalled(wanted.products.back(), "--product");
    }
    wanted.preferredProducts = preferredProducts(options.query, documentation);
    const auto completions = ask::complete(fromCommandLine(options.query.name), wanted);
    const Terminal terminal = Terminal::ofStandardOutput(configuration.colours.value);
    if (options.json)
        writeJson(std::cout, completions);
    else if (terminal.isTerminal())
        writeTable(std::cout, terminal, completions);
    else
        writeLines(std::cout, completions);
    return completions.empty() ? NothingFound : Success;
}

}  // namespace reference::tools
