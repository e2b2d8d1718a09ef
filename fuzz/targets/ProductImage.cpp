// An image of a product's records and pages, of joined names and of what questions need, with
// damage that no hash tells of: the lines of ImageEdits.hpp. Whatever an image says, nothing
// outside of it is read, and reading comes to an end.
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.hpp"
#include "ImageEdits.hpp"
#include "docimage/JoinedNames.hpp"
#include "docimage/LookupImage.hpp"
#include "docimage/PageImage.hpp"
#include "docimage/QuestionIndex.hpp"
#include "support/Items.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using namespace docimage;

constexpr std::uint32_t pagesSection = 500;
constexpr std::uint32_t joinedSection = 600;
constexpr std::uint32_t questionsSection = 700;

OpenImage sample() {
    using property::FunctionType;
    using property::RefEntityType;
    const LookupImage::Entities entities = {
        {u"geo.Shape", {{RefEntityType::Class, FunctionType::Function, u"s.html", u"A shape"}}},
        {u"geo.Shape.draw",
         {{RefEntityType::Method, FunctionType::Function, u"d.html", u"Draws the shape of it"}}},
        {u"fit",
         {{RefEntityType::Function, FunctionType::Function, u"f.html", u"Fits \u00C4 curve"},
          {RefEntityType::Topic, FunctionType::NotCallable, u"t.html", u""}}}};
    const Aliases aliases = {{u"g", {{u"geo", 3}, {u"geo.Shape", 1}}}};
    const PageImage::Pages pages = {
        {u"full.html", {tests::makeFullItem(u"full.html"), tests::makeFullItem(u"full.html")}},
        {u"s.html", {tests::makeItem({.href = u"s.html", .purpose = u"A shape"})}}};
    ImageWriter writer;
    LookupImage::write(entities, aliases, writer);
    PageImage::write(pages, writer, pagesSection);
    const auto lookup = std::make_shared<const LookupImage>(entities, aliases);
    JoinedNames::write(std::vector{lookup, lookup}, writer, joinedSection);
    QuestionIndex::write(std::vector{lookup.get(), lookup.get()}, writer, questionsSection);
    return {.bytes = writer.bytes(), .sections = writer.sections()};
}

void readTexts(const TextTable& texts) {
    for (std::size_t at = 0; at < texts.size(); ++at)
        static_cast<void>(texts[at]);
    static_cast<void>(texts.lowerBound("m"));
}

void readLexicon(const Lexicon& lexicon) {
    static_cast<void>(lexicon.isWellFormed());
    static_cast<void>(lexicon.byEnds());
    for (const std::string_view letters : {"a", "ra", "dra", "shape", "\u00C3"})
        for (const bool isStart : {false, true})
            for (const bool isEnd : {false, true})
                lexicon.forEachWordWith({letters, isStart, isEnd}, [&](std::uint32_t word) {
                    static_cast<void>(lexicon.word(word));
                    lexicon.forEachTextWith(word, [](std::uint32_t) {});
                });
}

void readLookup(const std::shared_ptr<const Image>& image) {
    const LookupImage lookup(image);
    for (std::size_t kind = 0; kind < nameKinds; ++kind)
        for (std::uint32_t top = 0; top < 64; ++top)
            lookup.names(static_cast<NameKind>(kind)).find(top << 26U, [](std::uint32_t) {});
    readLexicon(lookup.words());
    for (std::size_t href = 0; href < lookup.hrefCount(); ++href)
        static_cast<void>(lookup.recordsOfHref(href));
    static_cast<void>(lookup.findKey("fit"));
    static_cast<void>(lookup.entities());
    static_cast<void>(lookup.aliases());
}

void readPages(const std::shared_ptr<const Image>& image) {
    const auto pages = std::make_shared<const PageImage>(image, pagesSection);
    readLexicon(pages->words());
    readLexicon(pages->wordStems());
    for (std::size_t item = 0; item < pages->itemCount(); ++item) {
        static_cast<void>(pages->hasProperties(item));
        static_cast<void>(pages->pageOfItem(item));
        static_cast<void>(pages->anySearchedText(item, [](std::string_view) { return false; }));
        static_cast<void>(pages->item(item)->whole());
    }
    static_cast<void>(pages->pages());
}

void readJoined(const std::shared_ptr<const Image>& image) {
    const JoinedNames joined(image, joinedSection);
    for (std::size_t kind = 0; kind < nameKinds; ++kind)
        for (std::uint32_t top = 0; top < 64; ++top)
            joined.names(static_cast<NameKind>(kind)).find(top << 26U, [](std::uint32_t) {});
    require(std::ranges::is_sorted(joined.firstKeys()), "The first keys ascend");
    require(joined.firstKeys().size() == joined.firstHrefs().size(), "Each product has both");
}

void readQuestions(const std::shared_ptr<const Image>& image) {
    const QuestionIndex questions(image, questionsSection);
    require(std::ranges::is_sorted(questions.firstKeys()), "The first keys ascend");
    for (std::uint32_t key = 0; key < questions.keyCount(); ++key) {
        const auto product = questions.productOf(key);
        require(product + 1 < questions.firstKeys().size(), "A key has a product that there is");
        static_cast<void>(questions.facts(key));
    }
    for (const auto* const lexicon :
         {&questions.firstNames(), &questions.lastNames(), &questions.lastParts(),
          &questions.outerParts(), &questions.purposes(), &questions.partStems()})
        readLexicon(*lexicon);
    readTexts(questions.partWords());
    static_cast<void>(questions.partsByEnds());
    static_cast<void>(questions.namesOfAlias("g"));
}

void run(std::string_view input) {
    static const OpenImage sound = sample();
    OpenImage damaged = sound;
    for (const auto line : linesOf(input))
        damaged.damage(line);
    // On a heap block of just this size, so that a read beyond it is seen.
    const auto bytes = std::make_shared<const std::string>(damaged.bytes);
    const auto image = std::make_shared<const Image>(bytes, damaged.sections);
    for (const auto read : {&readLookup, &readPages, &readJoined, &readQuestions}) {
        try {
            read(image);
        } catch (const DamagedImage&) {
            // As it should be.
        }
    }
}

const FuzzTarget target("ProductImage", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
