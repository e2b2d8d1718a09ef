#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>

#include "docparser/DocSource.hpp"

namespace reference::bench {

inline constexpr std::size_t productCount = 100;
inline constexpr std::size_t entitiesOfProduct = 300;
inline constexpr std::size_t entityCount = productCount * entitiesOfProduct;

// Documentation of 100 products of 300 entities each: in every product a tenth classes with four
// properties each, half methods, the rest functions and constants, with purposes and descriptions
// of realistic length. Names share components, as real ones do: every product has a function
// "product<n>.stats.fit7" and a class "product<n>.Class3".
[[nodiscard]] std::shared_ptr<docparser::DocSource> makeManyEntities();

// The same as a documentation set in an empty folder; ten of the products bear the names that
// start-up looks for. Returns the size of all its files, in bytes.
std::size_t publishManyEntities(const std::filesystem::path& root);

}  // namespace reference::bench
