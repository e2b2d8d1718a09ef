#pragma once

#include <cstddef>
#include <memory>

#include "docparser/DocSource.hpp"

namespace reference::bench {

inline constexpr std::size_t productCount = 100;
inline constexpr std::size_t entitiesOfProduct = 300;
inline constexpr std::size_t entityCount = productCount * entitiesOfProduct;

// Documentation of 100 products of 300 entities each: in every product a tenth classes with four
// properties each, half methods, the rest functions and constants, with purposes and descriptions
// of the length that real ones have. Names share components, as real ones do: every product has a
// function "product<n>.stats.fit7" and a class "product<n>.Class3".
[[nodiscard]] std::shared_ptr<docparser::DocSource> makeManyEntities();

}  // namespace reference::bench
