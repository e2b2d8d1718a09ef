#include "reference/utils/getComparatorFromVq.hpp"

#include <algorithm>
#include <array>
#include <string>

#include "reference/api/comparator/CompoundReferenceComparator.hpp"
#include "reference/api/comparator/DeprecatedOrderComparator.hpp"
#include "reference/api/comparator/EntityDepthOrderComparator.hpp"
#include "reference/api/comparator/EntityMatchComparator.hpp"
#include "reference/api/comparator/EntityNameMatchComparator.hpp"
#include "reference/api/comparator/EntityTypeMatchComparator.hpp"
#include "reference/api/comparator/EntityTypeOrderComparator.hpp"
#include "reference/api/comparator/FunctionTypeOrderComparator.hpp"
#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/comparator/PageNameMatchComparator.hpp"
#include "reference/api/comparator/PreferredOrderComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "reference/utils/errors.hpp"
#include "zorb/om.hpp"

namespace reference::utils {
namespace {

using api::RefRequestComparator;
using namespace api::comparator;

struct Conversion {
    std::string className;
    RefRequestComparator (*convert)(const vqArray& value);
};

template <typename Comparator>
Conversion conversionOf() {
    return {.className = zorb::HostName<Comparator>::id().str(),
            .convert = [](const vqArray& value) -> RefRequestComparator {
                return Comparator(omGetNative<Comparator>(omGetArrayElement(&value, 0)));
            }};
}

const auto& conversions() {
    // Never destroyed: scripts may end after static objects have gone.
    static const auto& all = *new std::array{
        conversionOf<CompoundReferenceComparator>(), conversionOf<DeprecatedOrderComparator>(),
        conversionOf<EntityMatchComparator>(),       conversionOf<EntityNameMatchComparator>(),
        conversionOf<EntityTypeMatchComparator>(),   conversionOf<EntityTypeOrderComparator>(),
        conversionOf<FunctionTypeOrderComparator>(), conversionOf<IndexOrderComparator>(),
        conversionOf<PageNameMatchComparator>(),     conversionOf<PreferredOrderComparator>(),
        conversionOf<ProductMatchComparator>(),      conversionOf<EntityDepthOrderComparator>(),
    };
    return all;
}

}  // namespace

RefRequestComparator getComparatorFromVq(const vqArray* value) {
    const std::string& className = omGetCOSClassID(value).str();
    const auto found = std::ranges::find(conversions(), className, &Conversion::className);
    if (found == conversions().end())
        throw InvalidComparatorError({value == nullptr ? "null" : className});
    return found->convert(*value);
}

}  // namespace reference::utils
