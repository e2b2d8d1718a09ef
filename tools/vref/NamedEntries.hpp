#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "vref/Documentation.hpp"
#include "vref/Query.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {

// What a text means, by the narrowest reading that finds something: a name, a page (an href, with
// or without the help folder before it), a question, and the page of a property. Where it is a
// question, entries are in the order in which "vref find" lists them. With --ignore-case or
// --ignore-package it is a request of the library instead.
struct NamedEntries {
    // From the wanted one on.
    std::vector<api::ReferenceData> entries;
    // How many of them were found in the same way as the first.
    std::size_t alike = 0;
    // What the question had to be taken for; empty for a name as it stands. UTF-8.
    std::string change;
};

// `nth` counts from 1. If there are fewer, nothing is returned, and a message on the standard error
// stream says so. Throws what findEntries() throws.
[[nodiscard]] NamedEntries entriesNamed(const QueryOptions& query, std::size_t nth,
                                        const Documentation& documentation);

// The entries of the page that the name is the href of, with or without the help folder before it,
// or else the class properties that are documented there. Throws what toRequest() throws.
[[nodiscard]] std::vector<api::ReferenceData> entriesOfPage(const QueryOptions& query,
                                                            const Documentation& documentation);

// On the standard error stream: what the text was taken for, all entries that were found in the
// same way but the first, and how to tell them apart.
void tellOthers(const NamedEntries& found, Colours colours);

}  // namespace reference::tools
