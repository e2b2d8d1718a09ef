// An item as bytes: its fields one after the other, texts and lists with their length before them.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "property/ItemData.hpp"
#include "property/RefItem.hpp"

namespace reference::docimage {

[[nodiscard]] std::string toItemRecord(const property::RefItem& item);

// What is read of a record. Each throws DamagedImage for bytes that are no record.
[[nodiscard]] property::ItemHead readItemHead(std::string_view record);
[[nodiscard]] boost::intrusive_ptr<const property::WholeItem> readItem(std::string_view record);

// Calls `visit(text)` with the bytes of each text that a search of all texts looks at (see
// searchedTexts.hpp), until it returns true; returns whether it did.
[[nodiscard]] bool anySearchedText(std::string_view record,
                                   const std::function<bool(std::string_view)>& visit);

// Whether the item has properties, as a class has.
[[nodiscard]] bool hasProperties(std::string_view record);

}  // namespace reference::docimage
