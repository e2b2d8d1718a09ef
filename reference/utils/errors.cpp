#include "reference/utils/errors.hpp"

#include "foundation/core/except/MessageCatalog.hpp"

namespace reference::utils {
namespace {

using foundation::core::except::MessageCatalog;

bool addTexts() {
    MessageCatalog::addText(
        ExpectedComparatorCellArrayError::identifier(),
        "The comparators of a compound comparator are given as a cell array, with one comparator "
        "in each cell; this value is no cell array.");
    MessageCatalog::addText(
        ExpectedRequestError::identifier(),
        "A retriever takes one ReferenceRequest object; an empty array was given.");
    MessageCatalog::addText(
        ExpectedScalarComparatorError::identifier(),
        "A request takes one comparator object; to order by several, put them into a "
        "CompoundReferenceComparator.");
    MessageCatalog::addText(
        InvalidComparatorError::identifier(),
        "A value of the class {0} is no comparator; objects of the classes of the package "
        "veltra.internal.reference.api.comparator are.");
    return true;
}

const bool areTextsAdded [[maybe_unused]] = addTexts();

}  // namespace
}  // namespace reference::utils
