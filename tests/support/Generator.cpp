#include "support/Generator.hpp"

#include <utility>

#include "docimage/searchForm.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"

namespace reference::tests {

using namespace property;

std::size_t Generator::below(std::size_t limit) {
    // Not std::uniform_int_distribution: what that makes of a seed differs between standard
    // libraries.
    return m_random() % limit;
}

std::u16string Generator::component() {
    static const std::vector<std::u16string> components = {
        u"a",      u"A",      u"b",      u"ab",  u"Fit", u"fit", u"\u0130d", u"\u00C4",
        u"\u00E4", u"\xD800", u"\xDC00", u"x/y", u"",    u"B",   u"c",       u"Shape"};
    return pick(components);
}

std::u16string Generator::name() {
    std::u16string name = component();
    for (std::size_t more = below(4); more > 0; --more)
        name += u"." + component();
    return name;
}

std::u16string Generator::text() {
    if (chance(30))
        return {};
    std::u16string text = component();
    for (std::size_t more = below(3); more > 0; --more)
        text += u" " + component();
    return text;
}

std::u16string Generator::href() {
    const auto folder = pick<std::u16string>({u"", u"ref/", u"x/"});
    const auto page = component();
    return folder + page + pick<std::u16string>({u".html", u".HTML", u"", u".html#top"});
}

RefEntityType::Value Generator::type() {
    return static_cast<RefEntityType::Value>(
        pick<std::uint32_t>({0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 8, 14, 26, 27, 4000000000U}));
}

FunctionType::Value Generator::functionType() {
    return static_cast<FunctionType::Value>(pick<std::uint32_t>({0, 1, 2, 6, 9, 3000000000U}));
}

std::vector<std::u16string> Generator::texts(std::size_t most) {
    std::vector<std::u16string> all(below(most + 1));
    for (auto& one : all)
        one = text();
    return all;
}

// Braces, not parentheses: they evaluate what the generator is asked for from left to right, with
// every compiler.
RefItem Generator::item(std::u16string itemHref) {
    ItemFields fields{.href = std::move(itemHref)};
    for (std::size_t count = below(4); count > 0; --count)
        fields.entities.push_back(RefEntity{type(), name(), functionType()});
    fields.packageName = chance(50) ? component() : std::u16string();
    fields.purpose = text();
    fields.introduced = text();
    fields.description = text();
    fields.deprecationStatus =
        static_cast<DeprecationStatus::Value>(pick<std::uint32_t>({0, 0, 0, 1, 2, 4294967295U}));
    for (std::size_t count = below(2); count > 0; --count) {
        fields.syntaxGroups.push_back(SyntaxGroup{text(), texts(2)});
        fields.inputs.push_back(Input{component(), text(), {}, texts(2)});
        fields.outputs.push_back(Output{component(), text(), {}, texts(2)});
        fields.inputGroups.push_back(InputGroup{text(), fields.inputs});
        fields.seeAlso.push_back(SeeAlso{text(), text()});
        fields.examples.push_back(Example{text(), text()});
        fields.parameters.push_back(Parameter{component(), text(), text()});
    }
    for (std::size_t groups = below(3); groups > 0; --groups) {
        std::vector<ClassProperty> properties;
        for (std::size_t count = below(4); count > 0; --count)
            properties.push_back(ClassProperty{component(), text(),
                                               chance(50) ? href() : std::u16string(), texts(2)});
        fields.classPropertyGroups.push_back(ClassPropertyGroup{text(), std::move(properties)});
    }
    return makeItem(std::move(fields));
}

api::ReferenceData Generator::result() {
    const auto folder = pick<std::u16string>({u"veltra", u"pendrake", u"alpha", u""});
    return {HeaderInfo(u"file", folder, folder, u"", u""), item(href())};
}

std::vector<api::ReferenceData> Generator::results(std::size_t count) {
    std::vector<api::ReferenceData> all;
    for (; count > 0; --count)
        all.push_back(result());
    return all;
}

docset::ProductDocumentation Generator::product(const std::u16string& shortName) {
    docset::ProductDocumentation product;
    product.header = {
        .shortName = shortName, .displayName = {}, .helpFolder = shortName, .version = {}};
    for (std::size_t count = below(6); count > 0; --count)
        addItem(item(href()), product);
    for (std::size_t count = below(3); count > 0; --count) {
        auto& records = product.entities[name()];
        records.push_back(RefItemLookup{type(), functionType(), href(), text()});
    }
    return product;
}

docset::ProductDocumentation Generator::publishableProduct(const std::u16string& shortName) {
    ProductBuilder product(shortName);
    for (std::size_t count = 1 + below(30); count > 0; --count) {
        const std::u16string entityName = name();
        const std::u16string page = href();
        const std::u16string purpose = text();
        const bool isUnicode = docimage::isWellFormed(entityName) && docimage::isWellFormed(page) &&
                               docimage::isWellFormed(purpose);
        if (isUnicode && !entityName.empty() && !page.empty())
            product.entity(entityName, type(), page, purpose);
    }
    for (std::size_t count = below(3); count > 0; --count)
        product.alias(
            pick<std::u16string>({u"x", u"ab", u"c"}),
            pick<std::u16string>({u"a", u"a.ab", u"A.Fit", u"Shape", u"Shape.c", u"none"}),
            static_cast<std::uint32_t>(1 + below(3)));
    return product.build();
}

void Generator::addItem(const RefItem& made, docset::ProductDocumentation& product) {
    for (const auto& entity : made.getRefEntities()) {
        // Now and then the record is missing, or of another type than the entity.
        if (chance(10))
            continue;
        product.entities[entity.getName()].push_back(
            RefItemLookup{chance(10) ? type() : entity.getRefEntityType(), entity.getFunctionType(),
                          made.getHref(), made.getPurpose()});
        for (const auto& group : made.getClassPropertyGroups())
            for (const auto& property : group.getClassProperties())
                product.entities[entity.getName() + u"." + property.getName()].emplace_back(
                    RefEntityType::Property, FunctionType::Property, made.getHref(),
                    property.getPurpose());
    }
    // Now and then the page is missing.
    if (!chance(10))
        product.pages[made.getHref()].push_back(made);
}

api::ReferenceRequest Generator::request() {
    std::vector<RefEntityType::Value> types;
    if (chance(50))
        for (std::size_t count = below(3); count > 0; --count)
            types.push_back(type());
    std::vector<std::u16string> products;
    if (chance(40))
        for (std::size_t count = below(3); count > 0; --count)
            products.push_back(chance(20) ? std::u16string() : pick(productNames));
    if (chance(10))
        return api::ReferenceRequest::createMatchAllTextRequest(std::move(types),
                                                                std::move(products));
    const std::u16string asked = chance(50) ? name() : (chance(50) ? component() : href());
    api::ReferenceRequest request(asked, std::move(types), std::move(products));
    request.setEntityCaseSensitivity(
        static_cast<api::EntityCaseSensitivity::Value>(pick<std::uint32_t>({0, 1, 7})));
    request.setEntityPrecision(
        static_cast<api::EntityPrecision::Value>(pick<std::uint32_t>({0, 1, 7})));
    return request;
}

}  // namespace reference::tests
