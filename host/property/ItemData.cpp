#include "property/ItemData.hpp"

namespace reference::property {

SharedItem::~SharedItem() = default;

WholeItem::~WholeItem() = default;

boost::intrusive_ptr<const WholeItem> WholeItem::whole() const {
    return this;
}

}  // namespace reference::property
