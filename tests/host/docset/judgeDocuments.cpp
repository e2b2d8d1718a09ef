// The C++ half of check_agreement.py:
//
//     judgeDocuments read
//         For each line "ROOT FILE" of the standard input, FILE being one of a documentation set's
//         four: a line "FAULTS VALIDATED FIRST", the number of faults that the file's reader
//         reports, the number that validate() reports within the file, and the first fault.
//     judgeDocuments make SEED ROOT
//         Publishes products made from SEED into a new set at ROOT, and fails when one is not read
//         back as it was.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <iostream>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "docset/AliasFile.hpp"
#include "docset/Manifest.hpp"
#include "docset/ProductFileReader.hpp"
#include "docset/publish.hpp"
#include "docset/validate.hpp"
#include "fl/i18n/utf.hpp"
#include "host/docset/Sets.hpp"
#include "support/Items.hpp"

namespace reference::tests {
namespace {

using namespace property;

std::vector<docset::Fault> faultsOf(const std::string& root, const std::string& file) {
    FaultList faults;
    if (file == docset::manifestFileName)
        static_cast<void>(docset::readManifest(root, faults.handler()));
    else if (file.ends_with(".aliases.json"))
        static_cast<void>(docset::readAliases(root, "en_US/l.json", faults.handler()));
    else if (file.ends_with("l.json"))
        static_cast<void>(docset::readLookupFile(root, file, faults.handler()));
    else
        static_cast<void>(docset::readReferenceFile(root, file, faults.handler()));
    return faults.all();
}

// Faults that validate() places in the file; those between files have no place.
std::ptrdiff_t validatedFaultsIn(const std::string& root, const std::string& file) {
    const auto report = docset::validate(root);
    return std::ranges::count_if(report.faults, [&](const docset::Fault& fault) {
        return fault.line != 0 && fault.file == root + "/" + file;
    });
}

int judge() {
    std::string root;
    std::string file;
    while (std::cin >> root >> file) {
        const auto faults = faultsOf(root, file);
        std::string first = faults.empty() ? "-" : faults.front().toString();
        std::ranges::replace(first, '\n', ' ');
        std::cout << faults.size() << ' ' << validatedFaultsIn(root, file) << ' ' << first << '\n';
    }
    return 0;
}

// Makes values at random, all of which a documentation set can hold.
class Maker {
  public:
    explicit Maker(std::uint32_t seed) : m_random(seed) {}

    docset::ProductDocumentation product() {
        docset::ProductDocumentation made;
        made.header = {
            .shortName = name(), .displayName = text(), .helpFolder = text(), .version = text()};
        for (std::size_t page = count(6); page > 0; --page) {
            const std::u16string href = name();
            auto& items = made.pages[href];
            for (std::size_t number = 1 + count(2); number > 0; --number) {
                items.push_back(item(href));
                for (const auto& entity : items.back().getRefEntities())
                    made.entities[entity.getName()].emplace_back(
                        entity.getRefEntityType(), entity.getFunctionType(), href, text());
            }
        }
        for (std::size_t alias = count(3); alias > 0; --alias)
            made.aliases[identifier()][identifier() + u"." + identifier()] =
                static_cast<std::uint32_t>(1 + count(9));
        if (count(1) != 0)
            made.source = docset::ProductSource{.folder = "/" + utf8(text(false)),
                                                .importer = utf8(name()),
                                                .importerVersion = utf8(text())};
        return made;
    }

  private:
    static std::string utf8(const std::u16string& value) { return fl::i18n::toUtf8(value); }

    // 0 to `most`.
    std::size_t count(std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(0, most)(m_random);
    }

    std::u16string text(bool withZero = true) {
        static const std::vector<std::u16string> parts = {u"a",
                                                          u"B",
                                                          u".",
                                                          u"/",
                                                          u"\\",
                                                          u"\"",
                                                          u" ",
                                                          u"\n",
                                                          u"\t",
                                                          u"\x7F",
                                                          u"\x1F",
                                                          u"é",
                                                          u"\u2028",
                                                          u"統",
                                                          u"😀",
                                                          u"{}",
                                                          u"\uFEFF",
                                                          u"\uFFFF",
                                                          std::u16string(1, u'\0')};
        std::u16string made;
        for (std::size_t left = count(6); left > 0; --left)
            made += parts[count(parts.size() - (withZero ? 1 : 2))];
        return made;
    }

    std::u16string name() { return u"n" + text(); }

    std::u16string identifier() {
        return std::u16string(1 + count(2), static_cast<char16_t>(u'a' + count(25))) + u"_7";
    }

    template <typename Make>
    auto list(Make make) {
        std::vector<decltype(make())> made;
        for (std::size_t left = count(3); left > 0; --left)
            made.push_back(make());
        return made;
    }

    std::vector<std::u16string> texts() {
        return list([this] { return text(); });
    }

    template <typename Enumeration>
    typename Enumeration::Value value() {
        const auto& named = Enumeration::namedValues();
        const std::size_t picked = count(named.size() + 1);
        if (picked < named.size())
            return named[picked];
        return static_cast<typename Enumeration::Value>(
            picked == named.size() ? std::numeric_limits<std::uint32_t>::max()
                                   : std::uniform_int_distribution<std::uint32_t>()(m_random));
    }

    RefEntity entity() { return {value<RefEntityType>(), name(), value<FunctionType>()}; }

    template <typename Kind>
    Kind info() {
        return Kind(text(), text(), text(), texts());
    }

    std::vector<SeeAlso> pointers() {
        return list([this] { return SeeAlso(text(), text()); });
    }

    RefItem item(const std::u16string& href) {
        std::vector<RefEntity> entities = {entity()};
        while (count(2) == 0)
            entities.push_back(entity());
        const auto inputs = [this] { return list([this] { return info<Input>(); }); };
        const auto properties = [this] { return list([this] { return info<ClassProperty>(); }); };
        return makeItem(
            {.href = href,
             .entities = std::move(entities),
             .packageName = text(),
             .purpose = text(),
             .introduced = text(),
             .description = text(),
             .appThumbnail = AppThumbnail(text(), text()),
             .deprecationStatus = value<DeprecationStatus>(),
             .syntaxGroups = list([this] { return SyntaxGroup(text(), texts()); }),
             .inputs = inputs(),
             .inputGroups = list([&] { return InputGroup(text(), inputs()); }),
             .outputs = list([this] { return info<Output>(); }),
             .classPropertyGroups = list([&] { return ClassPropertyGroup(text(), properties()); }),
             .seeAlso = pointers(),
             .examples = list([this] { return Example(text(), text()); }),
             .parameters = list([this] { return Parameter(text(), text(), text()); }),
             .replacements = pointers()});
    }

    std::mt19937 m_random;
};

int make(std::uint32_t seed, const std::string& root) {
    Maker maker(seed);
    for (int number = 0; number < 5; ++number) {
        const docset::ProductDocumentation product = maker.product();
        docset::publishProduct(root, "en_US", product);
        if (readProduct(root, product.header.shortName) != product) {
            std::cerr << "product " << number << " of seed " << seed << " came back changed\n";
            return 1;
        }
    }
    return 0;
}

int run(const std::vector<std::string>& arguments) {
    if (arguments.size() == 1 && arguments[0] == "read")
        return judge();
    if (arguments.size() == 3 && arguments[0] == "make")
        return make(static_cast<std::uint32_t>(std::stoul(arguments[1])), arguments[2]);
    std::cerr << "usage: judgeDocuments read | judgeDocuments make SEED ROOT\n";
    return 2;
}

}  // namespace
}  // namespace reference::tests

int main(int argc, char** argv) {
    try {
        return reference::tests::run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::cerr << "judgeDocuments: " << error.what() << '\n';
        return 2;
    }
}
