#pragma once

#include <string>
#include <vector>

#include "fl/i18n/utf.hpp"
#include "property/RefEntityType.hpp"
#include "reference/ask/ask.hpp"
#include "support/LibraryTest.hpp"

namespace reference::tests {

// Two small products to ask about; a test may add others.
class AskFixture : public LibraryTest {
  protected:
    AskFixture() {
        source().add(ProductBuilder(u"frames")
                         .entity(u"frames.read_csv", property::RefEntityType::Function,
                                 u"read_csv.html", u"Read a comma-separated file into a table.")
                         .entity(u"frames.read_json", property::RefEntityType::Function,
                                 u"read_json.html", u"Read a JSON document into a table.")
                         .entity(u"frames.Table", property::RefEntityType::Class, u"Table.html",
                                 u"Columns of equal length.")
                         .entity(u"frames.Table.sort_rows", property::RefEntityType::Method,
                                 u"sort_rows.html", u"Sort the rows by a column.")
                         .entity(u"frames.Table.drop", property::RefEntityType::Method,
                                 u"drop.html", u"Remove rows or columns.")
                         .entity(u"frames.Table.group_by", property::RefEntityType::Method,
                                 u"group_by.html",
                                 u"Divide the rows into groups with equal values.")
                         .entity(u"frames.io.CsvReader", property::RefEntityType::Class,
                                 u"CsvReader.html", u"Reads records one by one.")
                         .build());
        source().add(ProductBuilder(u"numbers")
                         .entity(u"numbers.linalg.norm", property::RefEntityType::Function,
                                 u"norm.html", u"The length of a vector.")
                         .entity(u"numbers.gaussian_kernel", property::RefEntityType::Function,
                                 u"gaussian.html", u"Weights of a bell curve.")
                         .entity(u"numbers.mean", property::RefEntityType::Function, u"mean.html",
                                 u"The average of values.")
                         .entity(u"Mean", property::RefEntityType::Class, u"MeanClass.html",
                                 u"Keeps a mean.")
                         .build());
    }

    // "name [rung] change" of each hit.
    static std::vector<std::string> find(const std::u16string& question,
                                         const ask::AskOptions& options = {}) {
        std::vector<std::string> hits;
        for (const auto& hit : ask::ask(question, options).hits)
            hits.push_back(fl::i18n::toUtf8(hit.name) + " [" + std::string(toString(hit.rung)) +
                           "]" + (hit.change.empty() ? "" : " " + fl::i18n::toUtf8(hit.change)));
        return hits;
    }

    static std::string first(const std::u16string& question, const ask::AskOptions& options = {}) {
        const auto hits = find(question, options);
        return hits.empty() ? "nothing" : hits.front();
    }
};

}  // namespace reference::tests
