// A built tree of two pages is imported, and what comes out of it published: lines of the
// inventory, a line "---", the page m.html, a line "---", and the page py-modindex.html.
#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "docset/publish.hpp"
#include "docset/validate.hpp"
#include "inventoryOf.hpp"
#include "sphinx/ImportTree.hpp"
#include "support/TempFolder.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using importers::sphinx::ImportOptions;

void run(std::string_view input) {
    static const tests::TempFolder tree;
    tree.write("objects.inv", inventoryOf(takePart(input)));
    tree.write("m.html", takePart(input));
    tree.write("py-modindex.html", input);
    ImportOptions options;
    options.source = tree.path();
    options.shortName = u"sample";
    options.threads = 1;
    const auto result = importers::sphinx::importTree(options);
    for (const auto& fault : result.report.faults)
        require(!fault.problem.empty(), "A fault says what it is", fault.page);
    // As the tool does, which refuses a product without entities.
    if (result.documentation.entities.empty())
        return;
    const tests::TempFolder set;
    docset::publishProduct(set.path(), "en_US", result.documentation);
    const auto report = docset::validate(set.path());
    require(report.faults.empty(), "What is imported is sound",
            report.faults.empty() ? "" : report.faults.front().toString());
}

const FuzzTarget target("SphinxTree", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
