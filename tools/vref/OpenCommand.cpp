#include <iostream>
#include <string>

#include "fl/i18n/utf.hpp"
#include "vref/Browser.hpp"
#include "vref/Commands.hpp"
#include "vref/DisplayText.hpp"
#include "vref/NamedEntries.hpp"
#include "vref/PagePlace.hpp"
#include "vref/StandardStreams.hpp"

namespace reference::tools {
namespace {

// Why there is no page to open for the result.
std::string whyNoPlace(const api::ReferenceData& result, const Documentation& documentation) {
    const std::u16string& product = result.getHeaderInfo().getShortName();
    const std::string name = shownLine(product);
    const auto source = documentation.sourceOf(product);
    if (!source)
        return "the documentation set does not say where the pages of \"" + name +
               "\" are; \"vref import\" remembers it";
    return "\"" + shownLine(result.getRefItem().getHref()) + "\" is no page in the folder that \"" +
           name + "\" was imported from, " + printableLine(source->folder);
}

}  // namespace

ExitStatus openPage(const QueryOptions& query, const Configuration& configuration) {
    const Documentation documentation(configuration.documentation());
    const NamedEntries named = entriesNamed(query, 1, documentation);
    const auto& found = named.entries;
    if (found.empty())
        return NothingFound;
    const auto place = documentation.placeOf(found.front());
    if (!place) {
        say(whyNoPlace(found.front(), documentation));
        return NothingFound;
    }
    const std::string address = place->address();
    const Opening opening = openInBrowser(address);
    if (opening != Opening::Done)
        std::cout << address << '\n';
    if (opening == Opening::Failed)
        say("xdg-open could not open the page; its address is printed instead");
    tellOthers(named, configuration.colours.value);
    return opening == Opening::Failed ? Incomplete : Success;
}

}  // namespace reference::tools
