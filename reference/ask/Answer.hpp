#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "reference/ask/Rung.hpp"

namespace reference::ask {

struct Hit {
    // The documented name by which the entry was found: "scipy.stats.gaussian_kde".
    std::u16string name;
    api::ReferenceData data;
    Rung rung = Rung::Name;
    // What had to be changed in the question: "spelling: gaussian_kde"; often empty.
    std::u16string change;
};

// What a question found. A plain value, independent of the library's caches.
struct Answer {
    // No more than were asked for. Where code has several calls, what the likelier call found goes
    // first; then what a closer rung found, then what is nearer to the question.
    std::vector<Hit> hits;
    // How many there are altogether. Where hits were left out, names that lead to one entry may
    // count one by one, because those that were left out were not looked at.
    std::size_t total = 0;
    // How many more the filters turned away, and, where there are no hits, the first of them.
    std::size_t filteredAway = 0;
    std::vector<Hit> turnedAway;
};

}  // namespace reference::ask
