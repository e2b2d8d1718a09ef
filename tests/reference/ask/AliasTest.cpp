// Questions that begin with what examples call a module or a class.
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "docset/publish.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/ask.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using cache_manager::ReferenceCacheManager;
using docparser::DocResourceParser;
using docparser::FileDocSource;
using property::RefEntityType;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

// Frames' examples import frames, and numbers, which may be there or not; so do those of plots.
ProductBuilder frames() {
    return ProductBuilder(u"frames")
        .entity(u"frames", RefEntityType::Package, u"frames.html", u"Tables.")
        .entity(u"frames.read_csv", RefEntityType::Function, u"read_csv.html", u"Reads a file.")
        .entity(u"frames.Table", RefEntityType::Class, u"Table.html", u"Columns.")
        .entity(u"frames.Table.linspace", RefEntityType::Method, u"t_linspace.html", u"Fills.")
        .entity(u"frames.Table.group", RefEntityType::Method, u"group.html", u"Groups rows.")
        .entity(u"frames.rd", RefEntityType::Property, u"rd.html", u"Radius.")
        .alias(u"rd", u"frames.Table", 50)
        .alias(u"rd", u"frames.read_csv", 60)
        .alias(u"fr", u"frames", 40)
        .alias(u"t", u"frames.Table", 20)
        .alias(u"nm", u"numbers", 30);
}

ProductBuilder numbers() {
    return ProductBuilder(u"numbers")
        .entity(u"numbers.linspace", RefEntityType::Function, u"linspace.html", u"Even steps.")
        .entity(u"numbers.random.draw", RefEntityType::Function, u"draw.html", u"Draws one.");
}

ProductBuilder plots() {
    return ProductBuilder(u"plots")
        .entity(u"plots.easy.plot", RefEntityType::Function, u"plot.html", u"Draws a curve.")
        .entity(u"plots.hard.plot", RefEntityType::Function, u"hard.html", u"Draws a curve.")
        .entity(u"plots.easy.group", RefEntityType::Function, u"p_group.html", u"Groups curves.")
        .alias(u"plt", u"plots.hard", 2)
        .alias(u"plt", u"plots.easy", 9);
}

class AliasTest : public LibraryTest {
  protected:
    // "name [rung] change" of each hit.
    static std::vector<std::string> find(const std::u16string& question) {
        std::vector<std::string> hits;
        for (const auto& hit : ask::ask(question).hits)
            hits.push_back(fl::i18n::toUtf8(hit.name) + " [" + std::string(toString(hit.rung)) +
                           "]" + (hit.change.empty() ? "" : " " + fl::i18n::toUtf8(hit.change)));
        return hits;
    }

    static std::string first(const std::u16string& question) {
        const auto hits = find(question);
        return hits.empty() ? "nothing" : hits.front();
    }

    static void readSet(const std::filesystem::path& root) {
        DocResourceParser::setSource(std::make_shared<FileDocSource>(
            [root] { return docparser::DocumentationLocation{.docRoot = root}; }));
        ReferenceCacheManager::ClearAllCaches();
    }
};

TEST_F(AliasTest, AreWrittenOutFromMemoryFilesAndImages) {
    const struct {
        const char16_t* question;
        const char* first;
    } rows[] = {
        {u"fr.read_csv(\"x.csv\")", "frames.read_csv [name] alias: frames"},
        {u"fr.read_csv", "frames.read_csv [name] alias: frames"},
        {u"fr.READ_CSV", "frames.read_csv [any-case] alias: frames"},
        {u"fr.group", "frames.Table.group [without-package] alias: frames"},
        {u"fr.Table.gruop", "frames.Table.group [spelling] spelling: group"},
        {u"fr.read_c", "frames.read_csv [beginning] alias: frames"},
        {u"fr", "frames [name] alias: frames"},
        {u"t.group()", "frames.Table.group [name] alias: frames.Table"},
        {u"t", "frames.Table [without-package] alias: frames.Table"},
        {u"rd", "frames.rd [without-package]"},
        {u"x = fr.Table(y).group(z)", "frames.Table.group [without-package]"},
        {u"nm.linspace", "numbers.linspace [name] alias: numbers"},
        {u"nm.draw", "numbers.random.draw [without-package] alias: numbers"},
        {u"plt.plot(x)", "plots.easy.plot [name] alias: plots.easy"},
        {u"nm linspace", "numbers.linspace [without-package]"},
        {u"linspace", "numbers.linspace [without-package]"},
        {u"fr linspace", "frames.Table.linspace [without-package]"},
        {u"plt group", "plots.easy.group [without-package]"},
        {u"fr Table group", "frames.Table.group [parts]"},
        {u"fr.read_csv file", "frames.read_csv [words]"},
    };
    const TempFolder folder;
    for (const auto& product : {frames(), numbers(), plots()}) {
        add(product);
        docset::publishProduct(folder.path(), "en_US", product.build());
    }
    const auto check = [&](const char* where) {
        for (const auto& row : rows)
            EXPECT_EQ(first(row.question), row.first)
                << where << ": " << fl::i18n::toUtf8(row.question);
    };
    check("memory");
    readSet(folder.path());
    check("images");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
        if (entry.path().extension() == ".image")
            std::filesystem::remove(entry.path());
    readSet(folder.path());
    check("files");
}

TEST_F(AliasTest, SayWhatIsNotInstalled) {
    add(frames());
    EXPECT_THAT(find(u"nm.linspace"),
                ElementsAre("frames.Table.linspace [other-package] without numbers, which is not "
                            "installed"));
    EXPECT_THAT(find(u"nm.random.group()"),
                ElementsAre("frames.Table.group [other-package] without numbers.random, which is "
                            "not installed"));
    add(numbers());
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_EQ(first(u"nm.group"), "frames.Table.group [other-package] without numbers");
}

TEST_F(AliasTest, GoAfterWhatIsReallyNamedSo) {
    add(frames());
    add(ProductBuilder(u"fr").entity(u"fr.read_csv", RefEntityType::Function, u"r.html",
                                     u"Reads."));
    EXPECT_THAT(find(u"fr.read_csv"),
                ElementsAre("fr.read_csv [name]", "frames.read_csv [name] alias: frames"));
    EXPECT_EQ(first(u"fr.Table"), "frames.Table [name] alias: frames");
}

TEST_F(AliasTest, OfSeveralMeaningsGoByHowOftenTheyAreSeen) {
    add(plots());
    EXPECT_THAT(find(u"plt.plot"), ElementsAre("plots.easy.plot [name] alias: plots.easy",
                                               "plots.hard.plot [name] alias: plots.hard"));
    // All products are counted.
    add(ProductBuilder(u"beside")
            .entity(u"beside.x", RefEntityType::Function, u"x.html", u"X.")
            .alias(u"plt", u"plots.hard", 8));
    ReferenceCacheManager::ClearAllCaches();
    EXPECT_THAT(find(u"plt.plot"), ElementsAre("plots.hard.plot [name] alias: plots.hard",
                                               "plots.easy.plot [name] alias: plots.easy"));
}

TEST_F(AliasTest, OfWhatIsNotInstalledDoNotHideWhatIs) {
    add(plots().alias(u"plt", u"other.plots", 100));
    EXPECT_THAT(find(u"plt.plot"), ElementsAre("plots.easy.plot [name] alias: plots.easy",
                                               "plots.hard.plot [name] alias: plots.hard"));
}

TEST_F(AliasTest, AreNoWordsWhereTheProductHasTheWord) {
    add(ProductBuilder(u"signals")
            .entity(u"signals.interp.linear", RefEntityType::Function, u"l.html", u"A line.")
            .entity(u"signals.linear", RefEntityType::Function, u"s.html", u"A line.")
            .alias(u"interp", u"signals.interp", 9));
    EXPECT_EQ(first(u"interp linear"), "signals.interp.linear [parts]");
    EXPECT_EQ(first(u"interp.linear"), "signals.interp.linear [name] alias: signals.interp");
}

TEST_F(AliasTest, OfClassesNameNoProduct) {
    add(ProductBuilder(u"signals")
            .entity(u"signals.Table", RefEntityType::Class, u"t.html", u"Columns.")
            .entity(u"signals.other_rows", RefEntityType::Function, u"o.html", u"Rows.")
            .entity(u"signals.rows", RefEntityType::Function, u"r.html", u"Rows.")
            .alias(u"tab", u"signals.Table", 90));
    EXPECT_EQ(first(u"tab.x"), "nothing");
    EXPECT_EQ(first(u"tab"), "signals.Table [without-package] alias: signals.Table");
    EXPECT_THAT(find(u"tab rows"), Not(Contains(StartsWith("signals.rows [without-package]"))));
}

TEST_F(AliasTest, AreNotWhatIsCalledOnAResult) {
    add(frames());
    EXPECT_EQ(first(u"x().fr().group()"), "frames.Table.group [without-package]");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
