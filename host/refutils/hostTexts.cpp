#include "refutils/hostTexts.hpp"

#include "vq/matrix.hpp"
#include "zorb/errors.hpp"
#include "zorb/om.hpp"

namespace reference::utils {

void setStringProperty(std::u16string& text, const std::u16string* value) {
    if (value != nullptr)
        text = *value;
}

void setStringVectorAndCache(const vqArray* value, vqArrayPtr& cache,
                             std::vector<std::u16string>& texts) {
    if (value == nullptr)
        return;
    const auto* given = value->getIf<vqArray::Strings>();
    if (given == nullptr)
        throw zorb::RequireStringArrayError({omGetCOSClassID(value).str()});
    auto copy = *given;
    cache = copyVqArrayToSharedVqArrayPtr(value);
    texts = std::move(copy);
}

const vqArray* accessStringVectorCache(vqArrayPtr& cache,
                                       const std::vector<std::u16string>& texts) {
    if (!cache)
        cache = matrix::createStringRow(texts);
    return cache.get();
}

vqArrayPtr copyVqArrayToSharedVqArrayPtr(const vqArray* value) {
    return value == nullptr ? nullptr : vqArrayPtr(new vqArray(*value));
}

}  // namespace reference::utils
