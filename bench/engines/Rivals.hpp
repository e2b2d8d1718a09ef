#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "corpus/Corpus.hpp"
#include "engines/Engine.hpp"

namespace reference::bench {

// Where a set and the databases that rivals made of it lie.
struct SetFolders {
    std::filesystem::path set;
    std::filesystem::path rivals;

    // The numbers grow when what is filled in changes, so that no database of before is taken.
    [[nodiscard]] std::filesystem::path sqliteFile() const { return rivals / "sqlite-2.db"; }
    [[nodiscard]] std::filesystem::path xapianFolder() const { return rivals / "xapian-1"; }
};

// Fills the databases that are missing or older than the set. Xapian's, which take longest, only
// with `withXapian`.
void fillRivals(const Corpus& corpus, const SetFolders& folders, bool withXapian);

// The library first, then everything that it is compared with. Xapian only with `withXapian`. The
// library is to be loaded by loadLibrary().
[[nodiscard]] std::vector<std::unique_ptr<Engine>> openEngines(
    const std::shared_ptr<const Corpus>& corpus, const SetFolders& folders, bool withXapian);

}  // namespace reference::bench
