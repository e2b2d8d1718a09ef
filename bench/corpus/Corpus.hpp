#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "corpus/TextColumn.hpp"

namespace reference::bench {

// Between texts that are searched as one; no text and no query holds it.
inline constexpr char textSeparator = '\x1f';

// A documentation set as rows in UTF-8: what rivals are filled with, what queries are picked from,
// and what answers are checked against. Numbers of rows stand for rows.
//
// It is read once and not changed; any number of threads may read it.
struct Corpus {
    // Short names.
    std::vector<std::string> products;

    // Pages: what a lookup record leads to.
    TextColumn pageHrefs;
    std::vector<std::uint32_t> pageProducts;

    // Lookup records.
    TextColumn keys;
    TextColumn foldedKeys;
    std::vector<std::uint32_t> recordPages;
    // Folded key, separator, folded purpose: what a search for parts looks at.
    TextColumn recordTexts;
    // What the record is found by when the package is ignored: its key's last component and the
    // last two. The whole key if its kind is only found by its whole name.
    TextColumn lastComponents;
    TextColumn lastTwoComponents;
    // The file name that the record's page is found by, with its fragment.
    TextColumn fileNames;
    // Classes that the record is found by, with the record's page.
    std::vector<std::pair<std::string, std::uint32_t>> classPages;
    // Records of classes, by number.
    std::vector<std::uint32_t> classRecords;

    // Results: everything that an answer may hold. That is each item, and each property of a class,
    // which the library makes an item of.
    TextColumn resultNames;
    TextColumn resultHrefs;
    TextColumn resultPurposes;
    std::vector<std::uint32_t> resultPages;
    // The item itself, or the item that the property belongs to. The results of an item are
    // neighbours, with the item itself at the end.
    std::vector<std::uint32_t> resultItems;
    std::vector<bool> resultIsProperty;
    // Whether the result is part of the answer when its class is asked for.
    std::vector<bool> resultIsInClass;
    // Folded names and purpose, separated: what decides, on a page that was found by a part of a
    // record, which results are meant.
    TextColumn resultTexts;
    // The results of each page: the first, and the one after the last.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pageResults;
    // What a record's own name leads to: record and result, sorted.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> recordResults;

    // Every text of an item that a search of all texts looks at, folded and separated, and the
    // result that is the item.
    TextColumn itemTexts;
    std::vector<std::uint32_t> itemResults;

    [[nodiscard]] std::string_view productOfRecord(std::uint32_t record) const {
        return products[pageProducts[recordPages[record]]];
    }
    [[nodiscard]] std::string_view hrefOfRecord(std::uint32_t record) const {
        return pageHrefs[recordPages[record]];
    }
    [[nodiscard]] std::string_view productOfResult(std::uint32_t result) const {
        return products[pageProducts[resultPages[result]]];
    }
};

// Reads the installed products of the documentation set in `root`, one after the other. Throws what
// the parser throws.
[[nodiscard]] Corpus readCorpus(const std::filesystem::path& root);

}  // namespace reference::bench
