#include "reference/utils/EnumerationProperty.hpp"

#include <array>

#include "property/hostNames.hpp"
#include "reference/api/hostNames.hpp"
#include "refutils/hostTexts.hpp"
#include "vq/matrix.hpp"
#include "zorb/errors.hpp"
#include "zorb/om.hpp"

namespace reference::utils {

template <typename Value>
const vqArray* EnumerationProperty<Value>::getProperty() const {
    if (!m_cache) {
        const vqArrayPtr number = matrix::createNumber(m_value);
        std::array arguments{number.get()};
        m_cache = matrix::from_veltra(omConstructObjectWithClient(
            zorb::HostName<Value>::id(), 1, arguments.data(), COSGetPublicClient()));
    }
    return m_cache.get();
}

template <typename Value>
bool EnumerationProperty<Value>::setProperty(const vqArray* given) {
    if (given == nullptr)
        return false;
    if (omGetNumberOfElementsInUnderlyingArray(given) != 1)
        throw zorb::RequireScalarError();
    const auto number = omGetUInt32(omGetUnderlyingArray(given).get(), 0);
    m_cache = copyVqArrayToSharedVqArrayPtr(given);
    m_value = static_cast<Value>(number);
    return true;
}

template class EnumerationProperty<api::EntityCaseSensitivity::Value>;
template class EnumerationProperty<api::EntityPrecision::Value>;
template class EnumerationProperty<property::RefEntityType::Value>;

}  // namespace reference::utils
