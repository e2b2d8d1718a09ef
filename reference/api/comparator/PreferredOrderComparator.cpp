#include "reference/api/comparator/PreferredOrderComparator.hpp"

#include "reference/api/comparator/DeprecatedOrderComparator.hpp"
#include "reference/api/comparator/EntityTypeOrderComparator.hpp"
#include "reference/api/comparator/FunctionTypeOrderComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "reference/api/hostNames.hpp"

namespace reference::api::comparator {
namespace {

const ProductMatchComparator s_veltraFirst(u"veltra");
const ProductMatchComparator s_pendrakeFirst(u"pendrake");

enum class Decision { First, Second, Tie };

template <typename Comparator>
Decision decide(const Comparator& comparator, const ReferenceData& a, const ReferenceData& b) {
    if (comparator(b, a))
        return Decision::Second;
    return comparator(a, b) ? Decision::First : Decision::Tie;
}

// The answer of a CompoundReferenceComparator over the same comparators, without the vector and the
// functions that one is made of: a sort asks this n log n times.
template <typename... Comparators>
bool decideInTurn(const ReferenceData& a, const ReferenceData& b,
                  const Comparators&... comparators) {
    Decision decision = Decision::Tie;
    static_cast<void>((((decision = decide(comparators, a, b)) != Decision::Tie) || ...));
    return decision == Decision::First;
}

}  // namespace

bool PreferredOrderComparator::operator()(const ReferenceData& a, const ReferenceData& b) const {
    return decideInTurn(a, b, DeprecatedOrderComparator(), s_veltraFirst, s_pendrakeFirst,
                        EntityTypeOrderComparator(), FunctionTypeOrderComparator());
}

const char* PreferredOrderComparator::getZORBClassName() noexcept {
    return "PreferredOrderComparator";
}

const char* PreferredOrderComparator::getZORBPackageName() noexcept {
    return comparatorPackageName;
}

}  // namespace reference::api::comparator
