#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "corpus/Corpus.hpp"

namespace reference::bench {

// Makes three Xapian databases of the corpus in the folder: "records", "results" and "items", a
// document for each row, with the answer's texts as its data. Names are boolean terms; the words of
// texts are terms with positions, neither stemmed nor ranked. Each is compacted at the end.
void fillXapian(const Corpus& corpus, const std::filesystem::path& folder);

// The term of a name; a long one ends in a hash, because a term has at most 245 bytes.
[[nodiscard]] std::string xapianTerm(std::string_view prefix, std::string_view name);

}  // namespace reference::bench
