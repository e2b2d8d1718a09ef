// A documentation set is validated and then read: the manifest, a line "---", the file a.json, a
// line
// "---", and the file b.json. Where nothing is wrong with a set, all of it can be read, and each
// record leads to an item; what cannot be read is a fault.
#include "docset/validate.hpp"

#include <cstddef>
#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "docparser/DocParserException.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/Manifest.hpp"
#include "fl/i18n/utf.hpp"
#include "support/TempFolder.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

void requireReadable(docparser::FileDocSource& source, const docset::ValidationReport& report) {
    const auto results = source.getResourceLookupFiles();
    require(results.leftOut.empty(), "A sound set is read whole",
            results.leftOut.empty() ? "" : results.leftOut.front().toString());
    require(results.installed.size() + results.uninstalled.size() == report.products,
            "Each product is read");
    for (const auto& [name, lookup] : results.installed) {
        const auto pages = source.getResourceFile(lookup.getHeaderInfo().getReferenceFileName());
        const auto found = pages.find(name);
        require(found != pages.end(), "A product has its pages", fl::i18n::toUtf8(name));
        for (const auto& [key, records] : lookup.getItems())
            for (const auto& record : records)
                require(found->second.getItems().contains(record.getHref()),
                        "A record leads to an item", fl::i18n::toUtf8(key));
    }
}

void run(std::string_view input) {
    static const tests::TempFolder root;
    root.write(docset::manifestFileName, takePart(input));
    root.write("a.json", takePart(input));
    root.write("b.json", input);
    const auto report = docset::validate(root.path());
    for (const auto& fault : report.faults)
        require(!fault.file.empty() && !fault.problem.empty(), "A fault says what it is",
                fault.toString());
    docparser::FileDocSource source([] {
        return docparser::DocumentationLocation{.docRoot = root.path(), .language = "en_US"};
    });
    if (report.faults.empty()) {
        requireReadable(source, report);
        return;
    }
    try {
        static_cast<void>(source.getResourceLookupFiles());
    } catch (const docparser::DocParserException&) {
        // Told by a fault.
    }
}

const FuzzTarget target("Validate", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
