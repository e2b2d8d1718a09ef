#pragma once

#include <filesystem>

#include "corpus/Corpus.hpp"

namespace reference::bench {

// Makes a new SQLite database of the corpus in `file`, with every index that the engines use: in
// one transaction, the full-text indexes merged into one piece each, and analysed. Rows have the
// corpus's numbers.
//
// Texts that an answer needs lie beside what it is found by, so that no answer about names reads
// more than one b-tree and one table.
void fillSqlite(const Corpus& corpus, const std::filesystem::path& file);

}  // namespace reference::bench
