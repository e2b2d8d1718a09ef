#include "zorb/ClassDescription.hpp"

namespace zorb {

const std::u16string* textOf(const vqArray* value) {
    if (value == nullptr)
        return nullptr;
    const auto* texts = value->getIf<vqArray::Strings>();
    if (texts == nullptr || texts->size() != 1)
        throw RequireStringError(
            {omGetCOSClassID(value).str() +
             (texts == nullptr ? "" : " with " + std::to_string(texts->size()) + " elements")});
    return &texts->front();
}

}  // namespace zorb
