#include "reference/utils/getComparatorFromVq.hpp"

#include <algorithm>
#include <string>

#include "reference/api/comparator/comparatorClasses.hpp"
#include "reference/utils/errors.hpp"
#include "zorb/om.hpp"

namespace reference::utils {

api::RefRequestComparator getComparatorFromVq(const vqArray* value) {
    using api::comparator::ComparatorClass;
    const std::string& className = omGetCOSClassID(value).str();
    const auto classes = api::comparator::comparatorClasses();
    const auto found = std::ranges::find(classes, className, &ComparatorClass::name);
    if (found == classes.end())
        throw InvalidComparatorError({value == nullptr ? "null" : className});
    return found->copyOf(omGetArrayElement(value, 0));
}

}  // namespace reference::utils
