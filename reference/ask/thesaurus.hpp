// Words that mean what other words mean. Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "docimage/Stemmer.hpp"

namespace reference::ask {

// What documentation may say in place of some of a question's words.
struct Meaning {
    std::uint64_t stems;    // which words: a bit for each stem
    std::string_view said;  // words, divided by blanks; may contain some of those
};

inline constexpr std::size_t mostMeant = 64;

// What the thesaurus has for the stems of a question, `mostMeant` at most: for each alone, and for
// each phrase whose words are all among them. The texts live as long as the process; any thread
// with a stemmer of its own.
[[nodiscard]] std::vector<Meaning> meaningsOf(std::span<const std::string> stems,
                                              docimage::Stemmer& stemmer);

}  // namespace reference::ask
