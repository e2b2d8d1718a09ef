#include "sphinx/ExampleAliases.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "docset/AliasFile.hpp"
#include "fl/i18n/utf.hpp"
#include "property/RefEntityType.hpp"

namespace reference::importers::sphinx {
namespace {

using Counts = std::map<std::string, std::uint32_t>;
using Entities = std::map<std::u16string, std::vector<property::RefItemLookup>>;

constexpr std::uint32_t fewestUses = 10;

std::uint32_t totalOf(const Counts& counts) {
    std::uint32_t total = 0;
    for (const auto& [name, count] : counts)
        total += count;
    return total;
}

// The first `count` entries, the largest numbers first and, of equal ones, the first texts.
template <typename Number>
std::map<std::string, Number> mostOf(const std::map<std::string, Number>& all, std::size_t count,
                                     std::uint32_t (*numberOf)(const Number&)) {
    std::vector<std::pair<std::string, Number>> order(all.begin(), all.end());
    std::ranges::stable_sort(order, std::greater(),
                             [&](const auto& entry) { return numberOf(entry.second); });
    order.resize(std::min(order.size(), count));
    return {order.begin(), order.end()};
}

// What the alias stands for most often, or nothing.
std::optional<std::string> likeliest(const std::map<std::string, Counts>& aliases,
                                     const std::string& alias) {
    const auto found = aliases.find(alias);
    if (found == aliases.end())
        return std::nullopt;
    return std::ranges::max_element(found->second, {}, &Counts::value_type::second)->first;
}

bool isClass(const Entities& entities, const std::string& name) {
    const auto found = entities.find(fl::i18n::toUtf16(name));
    return found != entities.end() &&
           std::ranges::any_of(found->second, [](const property::RefItemLookup& record) {
               return record.getType() == property::RefEntityType::Class;
           });
}

}  // namespace

docimage::Aliases exampleAliases(const std::map<std::string, PageFacts>& pages,
                                 const Entities& entities) {
    std::map<std::string, Counts> imports;
    std::map<std::string, Counts> assignments;
    const auto add = [](const CodeNames::ByName& more, std::map<std::string, Counts>& all) {
        for (const auto& [name, counts] : more)
            for (const auto& [other, count] : counts)
                all[name][other] += count;
    };
    for (const auto& [page, facts] : pages) {
        add(facts.codeNames.imports, imports);
        add(facts.codeNames.assignments, assignments);
    }

    std::map<std::string, Counts> aliases = imports;
    for (const auto& [variable, values] : assignments) {
        Counts classes;
        for (const auto& [value, count] : values) {
            const std::size_t dot = value.find('.');
            const auto module = likeliest(imports, value.substr(0, dot));
            if (dot != std::string::npos && module &&
                isClass(entities, *module + value.substr(dot)))
                classes[*module + value.substr(dot)] += count;
        }
        for (const auto& [name, count] : classes)
            if (count >= fewestUses &&
                std::uint64_t{count} * 5 > std::uint64_t{totalOf(values)} * 4)
                aliases.try_emplace(variable, Counts{{name, count}});
    }

    docimage::Aliases result;
    for (const auto& [alias, names] : mostOf(aliases, docset::mostAliases, &totalOf)) {
        constexpr auto itself = [](const std::uint32_t& count) { return count; };
        for (const auto& [name, count] :
             mostOf<std::uint32_t>(names, docset::mostNamesOfAlias, itself))
            result[fl::i18n::toUtf16(alias)][fl::i18n::toUtf16(name)] = count;
    }
    return result;
}

}  // namespace reference::importers::sphinx
