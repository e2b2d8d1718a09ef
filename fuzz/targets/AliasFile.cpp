// A file of aliases beside a lookup file. What is read is written and read again.
#include "docset/AliasFile.hpp"

#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "ReadFaults.hpp"
#include "fl/i18n/utf.hpp"
#include "support/TempFolder.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using fl::i18n::toUtf8;

constexpr const char* lookupFile = "a.lookup.json";

// Aliases and names are ASCII without anything that JSON escapes.
std::string written(const docimage::Aliases& aliases) {
    std::string members;
    for (const auto& [alias, names] : aliases) {
        std::string list;
        for (const auto& [name, count] : names)
            list += (list.empty() ? "\"" : ", \"") + toUtf8(name) + "\": " + std::to_string(count);
        members += (members.empty() ? "\"" : ",\n\"") + toUtf8(alias) + "\": {" + list + "}";
    }
    return "{\"format\": \"veltra-documentation-aliases\", \"formatVersion\": 1, \"aliases\": {" +
           members + "}}";
}

void run(std::string_view input) {
    static const tests::TempFolder folder;
    static const std::string fileName = docset::aliasFileName(lookupFile);
    folder.write(fileName, input);
    ReadFaults faults(input);
    const auto aliases = docset::readAliases(folder.path(), lookupFile, faults.handler());
    require(aliases || faults.count() > 0, "A file that is refused has a fault");
    if (!aliases)
        return;
    // What is faulty is left out, so that the rest is sound and within all limits.
    require(aliases->size() <= docset::mostAliases, "There are no more aliases than allowed");
    for (const auto& [alias, names] : *aliases) {
        require(docset::isIdentifier(toUtf8(alias)), "An alias is an identifier", toUtf8(alias));
        for (const auto& name : names)
            require(docset::isDottedName(toUtf8(name.first)) && name.second > 0,
                    "It stands for a name that was seen", toUtf8(name.first));
        require(!names.empty() && names.size() <= docset::mostNamesOfAlias,
                "An alias has no more names than allowed", toUtf8(alias));
    }
    const std::string again = written(*aliases);
    folder.write(fileName, again);
    ReadFaults none(again);
    const auto reread = docset::readAliases(folder.path(), lookupFile, none.handler());
    require(reread && none.count() == 0, "What was read can be written", again);
    require(*reread == *aliases, "The aliases stay the same", again);
}

const FuzzTarget target("AliasFile", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
