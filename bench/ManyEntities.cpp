#include "ManyEntities.hpp"

#include <string>
#include <utility>
#include <vector>

#include "docset/publish.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"
#include "support/MemorySource.hpp"

namespace reference::bench {
namespace {

using namespace property;
using tests::ProductBuilder;

std::u16string digits(std::size_t number) {
    const std::string text = std::to_string(number);
    return {text.begin(), text.end()};
}

void addEntity(ProductBuilder& product, RefEntityType::Value type, const std::u16string& name,
               std::size_t number) {
    const std::u16string href = u"ref/" + name + u".html";
    const std::u16string purpose = u"Work out quantity " + digits(number) +
                                   u" of the given samples, with weights where they are given";
    product.record(name, type, href, purpose);
    product.item(tests::makeItem(
        {.href = href,
         .entities = {RefEntity(type, name, FunctionType::Function)},
         .packageName = name.substr(0, name.find(u'.')),
         .purpose = purpose,
         .introduced = u"3.1",
         .description = u"The quantity is worked out in one pass over the samples. Where weights "
                        u"are given, each sample counts as often as its weight says; a weight of "
                        u"zero leaves the sample out.",
         .deprecationStatus =
             number % 20 == 0 ? DeprecationStatus::Deprecated : DeprecationStatus::Current,
         .syntaxGroups = {SyntaxGroup(u"", {u"y = " + name + u"(samples, weights)"})},
         .inputs = {Input(u"samples", u"The samples, one a row", u"", {u"matrix"}),
                    Input(u"weights", u"One a sample", u"", {u"vector", u"[]"})},
         .outputs = {Output(u"y", u"The quantity", u"", {u"scalar"})}}));
}

ProductBuilder makeProduct(std::size_t number, const std::u16string& shortName) {
    const std::u16string package = u"product" + digits(number);
    ProductBuilder product(shortName);
    for (std::size_t n = 0; n < entitiesOfProduct; ++n) {
        if (n % 10 == 0)
            product.classWith(package + u".Class" + digits(n / 10), package,
                              u"ref/class" + digits(n / 10) + u".html",
                              {{u"Size", {u"Width", u"Height"}}, {u"Look", {u"Colour", u"Font"}}});
        else if (n % 2 == 0)
            addEntity(product, RefEntityType::Method,
                      package + u".Class" + digits(n / 10) + u".method" + digits(n), n);
        else if (n % 5 == 0)
            addEntity(product, RefEntityType::Constant, package + u".LIMIT" + digits(n), n);
        else
            addEntity(product, RefEntityType::Function, package + u".stats.fit" + digits(n), n);
    }
    return product;
}

}  // namespace

std::shared_ptr<docparser::DocSource> makeManyEntities() {
    auto source = std::make_shared<tests::MemorySource>();
    for (std::size_t number = 0; number < productCount; ++number)
        source->add(makeProduct(number, u"product" + digits(number)).build());
    return source;
}

std::size_t publishManyEntities(const std::filesystem::path& root) {
    const std::vector<std::u16string> startupProducts = {
        u"veltra", u"brisk",  u"caldera", u"lumora", u"qix",
        u"tarvel", u"merisk", u"dornel",  u"yarl",   u"pendrake"};
    for (std::size_t number = 0; number < productCount; ++number)
        docset::publishProduct(
            root, "en_US",
            makeProduct(number, number < startupProducts.size() ? startupProducts[number]
                                                                : u"product" + digits(number))
                .build());
    std::size_t size = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
        if (entry.is_regular_file())
            size += entry.file_size();
    return size;
}

}  // namespace reference::bench
