#include "support/LookupWalk.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "refutils/matchUnqualifiedString.hpp"
#include "support/LookupModel.hpp"

namespace reference::tests {
namespace {

using api::ReferenceRequest;
using cache_manager::ProductMatchData;
using cache_manager::ReferenceCacheManager;
using property::FunctionType;
using property::RefEntityType;
using Record = property::RefItemLookup;
using Resource = docparser::DocResource<Record>;
using Hrefs = std::set<std::u16string>;
using NameMemo = std::optional<bool>;

const std::set<std::uint32_t> unqualifiedTypes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 22, 23};

// Walks fold the same few texts again and again.
const std::u16string& lowerCase(const std::u16string& text) {
    constexpr std::size_t enough = 100'000;
    static thread_local std::unordered_map<std::u16string, std::u16string> known;
    if (known.size() > enough)
        known.clear();
    auto found = known.find(text);
    if (found == known.end())
        found = known.emplace(text, modelLowerCase(text)).first;
    return found->second;
}

bool occursIn(const std::u16string& part, const std::u16string& text) {
    return text.find(part) != std::u16string::npos;
}

class Walk {
  public:
    Walk(const ReferenceRequest& request, ReferenceCacheManager::SearchMethod method)
        : m_request(request), m_method(method), m_text(fold(request.getEntityText())) {}

    [[nodiscard]] Hrefs hrefsOf(const Resource& resource) const {
        Hrefs hrefs;
        for (const auto& [key, records] : resource.getItems())
            visit(key, records, [&](const Record& record) { hrefs.insert(record.getHref()); });
        return hrefs;
    }

    template <typename OnMatch>
    void visit(const std::u16string& key, const std::vector<Record>& records,
               OnMatch onMatch) const {
        const std::u16string name = fold(key);
        NameMemo memo;
        for (const Record& record : records)
            if (isAccepted(record) && isMatch(name, record, memo))
                onMatch(record);
    }

  private:
    [[nodiscard]] std::u16string fold(const std::u16string& text) const {
        return m_request.isCaseSensitive() ? text : lowerCase(text);
    }

    [[nodiscard]] bool isAccepted(const Record& record) const {
        const auto& types = m_request.getTypes();
        const auto lists = [&](RefEntityType::Value type) {
            return std::ranges::find(types, type) != types.end();
        };
        return types.empty() || lists(record.getType()) ||
               (lists(RefEntityType::Method) && record.getType() == RefEntityType::Function &&
                record.getFunctionType() == FunctionType::Method);
    }

    [[nodiscard]] bool isNamed(const std::u16string& candidate, const Record& record) const {
        const bool qualified =
            m_request.isExactMatch() || !unqualifiedTypes.contains(record.getType());
        const auto dots = std::ranges::count(m_text, u'.');
        return m_request.isAllTextMatch() ||
               utils::matchUnqualifiedString(m_text, static_cast<std::size_t>(dots) + 1, candidate,
                                             qualified);
    }

    [[nodiscard]] bool isMatch(const std::u16string& name, const Record& record,
                               NameMemo& memo) const {
        switch (m_method) {
            case ReferenceCacheManager::AllTextSearch:
                return true;
            case ReferenceCacheManager::PageNameSearch:
                return isNamed(fold(record.getHref()), record);
            case ReferenceCacheManager::NameAndPurposeSearch:
                return m_request.isAllTextMatch() ||
                       (!m_text.empty() &&
                        (occursIn(m_text, name) || occursIn(m_text, fold(record.getPurpose()))));
            case ReferenceCacheManager::ClassEntitySearch: {
                if (ReferenceCacheManager::IsClassLikeType(record.getType()) &&
                    isNamed(name, record))
                    return true;
                if (memo || m_request.isAllTextMatch())
                    break;
                const auto dot = name.rfind(u'.');
                if (dot == std::u16string::npos || m_text.size() >= name.size())
                    return false;
                memo = isNamed(name.substr(0, dot), record);
                return *memo;
            }
            default:
                break;
        }
        if (!memo)
            memo = isNamed(name, record);
        return *memo;
    }

    const ReferenceRequest& m_request;
    const ReferenceCacheManager::SearchMethod m_method;
    const std::u16string m_text;
};

}  // namespace

std::map<std::u16string, ProductMatchData> walkProductsWithEntity(
    const ReferenceRequest& request, ReferenceCacheManager::SearchMethod method,
    const ReferenceCacheManager::LookupCache& lookup) {
    const auto& wanted = request.getProducts();
    const bool wantsAll = wanted.empty() || (wanted.size() == 1 && wanted.front().empty());
    const Walk walk(request, method);
    std::map<std::u16string, ProductMatchData> found;
    for (const auto& [name, resource] : lookup) {
        if (!wantsAll && std::ranges::find(wanted, name) == wanted.end())
            continue;
        if (Hrefs hrefs = walk.hrefsOf(resource); !hrefs.empty())
            found.emplace(name, ProductMatchData{resource.getHeaderInfo().getReferenceFileName(),
                                                 std::move(hrefs)});
    }
    return found;
}

bool walkFinds(const ReferenceRequest& request, ReferenceCacheManager::SearchMethod method,
               const std::u16string& key, const std::vector<Record>& records) {
    bool found = false;
    Walk(request, method).visit(key, records, [&](const Record&) { found = true; });
    return found;
}

}  // namespace reference::tests
