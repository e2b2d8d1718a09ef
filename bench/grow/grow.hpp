#pragma once

#include <cstddef>
#include <filesystem>

namespace reference::bench {

// Makes a large documentation set out of a small real one. Each of the new products takes runs of
// neighbouring pages from everywhere in the real set, so that classes keep their members and
// lengths, kinds and properties are spread as in the real set, and has names and words of its own
// (see Vocabulary). The same real set and numbers give the same new set.
//
// `into` must be empty or not exist. Throws what reading and publishing throw. Products are made
// and written one after the other, so that memory holds the real set and one product.
void grow(const std::filesystem::path& from, const std::filesystem::path& into,
          std::size_t entities, std::size_t products);

}  // namespace reference::bench
