// Requests through every retriever, against the plain model of the lookup. A line each:
//
//     seed 3                   documentation at random, in place of what there was
//     name 1 geo.Shape         one more entity of that type, on a page of its own
//     ask ip 1,2 Shape.draw    a request; flags: i ignoring case, p ignoring packages, a all, -
//     none;
//                              then the types, or -
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "docparser/DocResourceParser.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Generator.hpp"
#include "support/Items.hpp"
#include "support/LookupModel.hpp"
#include "support/MemorySource.hpp"
#include "support/Print.hpp"
#include "support/retrieveBy.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using api::ReferenceRequest;
using property::RefEntityType;
using tests::Search;

std::vector<RefEntityType::Value> typesOf(std::string_view word) {
    std::vector<RefEntityType::Value> types;
    while (word != "-" && !word.empty()) {
        const auto end = word.find(',');
        types.push_back(static_cast<RefEntityType::Value>(numberOf(word.substr(0, end))));
        word.remove_prefix(end == std::string_view::npos ? word.size() : end + 1);
    }
    return types;
}

class Session {
  public:
    void obey(std::string_view line) {
        const auto word = takeWord(line);
        if (word == "seed")
            makeAtRandom(numberOf(line));
        else if (word == "name")
            addName(line);
        else if (word == "ask")
            ask(line);
    }

  private:
    void makeAtRandom(std::uint32_t seed) {
        tests::Generator generator(seed);
        m_products.clear();
        for (const auto& name : tests::productNames)
            m_products.push_back(generator.product(name));
        m_isRead = false;
    }

    void addName(std::string_view line) {
        const auto type = static_cast<RefEntityType::Value>(numberOf(takeWord(line)));
        const std::u16string name = unitsOf(line);
        if (m_products.empty()) {
            docset::ProductDocumentation product;
            product.header = {
                .shortName = u"own", .displayName = {}, .helpFolder = u"own", .version = {}};
            m_products.push_back(std::move(product));
        }
        auto& product = m_products.back();
        const std::u16string href = u"ref/" + name + u".html";
        product.entities[name].emplace_back(type, property::FunctionType::Function, href,
                                            u"About " + name);
        product.pages[href].push_back(tests::makeItem(
            {.href = href,
             .entities = {property::RefEntity{type, name, property::FunctionType::Function}},
             .purpose = u"About " + name,
             .description = name + u"\n" + name}));
        m_isRead = false;
    }

    void ask(std::string_view line) {
        if (!m_isRead) {
            auto source = std::make_shared<tests::MemorySource>();
            for (const auto& product : m_products)
                source->add(product);
            docparser::DocResourceParser::setSource(std::move(source));
            cache_manager::ReferenceCacheManager::ClearAllCaches();
            m_isRead = true;
        }
        const auto flags = takeWord(line);
        const auto has = [&](char flag) { return flags.find(flag) != std::string_view::npos; };
        auto types = typesOf(takeWord(line));
        ReferenceRequest request =
            has('a') ? ReferenceRequest::createMatchAllTextRequest(std::move(types), {})
                     : ReferenceRequest(unitsOf(line), std::move(types));
        if (has('i'))
            request.setEntityCaseSensitivity(api::EntityCaseSensitivity::Insensitive);
        if (has('p'))
            request.setEntityPrecision(api::EntityPrecision::Ignore_Package);
        for (const auto search :
             {Search::Entity, Search::Class, Search::Purpose, Search::AllText, Search::Page}) {
            const std::string told = "search " + std::to_string(static_cast<int>(search)) + " " +
                                     std::string(flags) + " " + std::string(line);
            const auto expected = tests::modelAnswer(search, request, m_products);
            const auto actual = tests::retrieveBy(search, request);
            require(actual.size() == expected.size(), "As much is found as by the model", told);
            for (std::size_t at = 0; at < actual.size(); ++at)
                require(actual[at].getHeaderInfo().getShortName() == expected[at].first &&
                            actual[at].getRefItem() == expected[at].second,
                        "The same is found as by the model", told + ": " + tests::dump(actual[at]));
        }
    }

    std::vector<docset::ProductDocumentation> m_products;
    bool m_isRead = false;
};

void run(std::string_view input) {
    // A cap: the model walks all names for each request.
    constexpr std::size_t mostLines = 12;
    Session session;
    std::size_t lines = 0;
    for (const auto line : linesOf(input))
        if (++lines <= mostLines)
            session.obey(line);
}

const FuzzTarget target("Retrievers", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
