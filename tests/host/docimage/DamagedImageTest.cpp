// Images that hold anything at all: whatever they say, nothing outside of them is read, and reading
// comes to an end. Hashes would find the damage first, so these images have none.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "docimage/Image.hpp"
#include "docimage/JoinedNames.hpp"
#include "docimage/LookupImage.hpp"
#include "docimage/PageImage.hpp"
#include "support/Generator.hpp"
#include "support/Items.hpp"
#include "support/LibraryTest.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace docimage;

constexpr std::uint32_t pagesSection = 500;
constexpr std::uint32_t joinedSection = 600;

docset::ProductDocumentation sample() {
    ProductBuilder product(u"p");
    product.classWith(u"geo.Shape", u"geo", u"Shape.html", {{u"Size", {u"Width", u"Height"}}})
        .entity(u"geo.Shape.draw", property::RefEntityType::Method, u"draw.html", u"Draws it")
        .entity(u"fit", property::RefEntityType::Function, u"fit.html", u"Fits \u00C4 curve")
        .item(makeFullItem(u"full.html"));
    return product.build();
}

void readLexicon(const Lexicon& lexicon) {
    for (const std::string_view letters : {"a", "ra", "dra", "shape", "\u00C3"})
        for (const bool isStart : {false, true})
            for (const bool isEnd : {false, true})
                lexicon.forEachWordWith({letters, isStart, isEnd}, [&](std::uint32_t word) {
                    lexicon.forEachTextWith(word, [](std::uint32_t) {});
                });
}

// Everything that there is to be read.
void readAll(const std::shared_ptr<const Image>& image) {
    const LookupImage lookup(image);
    for (std::size_t kind = 0; kind < nameKinds; ++kind)
        for (std::uint32_t top = 0; top < 64; ++top)
            lookup.names(static_cast<NameKind>(kind)).find(top << 26U, [](std::uint32_t) {});
    readLexicon(lookup.words());
    for (std::size_t href = 0; href < lookup.hrefCount(); ++href)
        static_cast<void>(lookup.recordsOfHref(href));
    static_cast<void>(lookup.entities());

    const JoinedNames joined(image, joinedSection);
    for (std::size_t kind = 0; kind < nameKinds; ++kind)
        for (std::uint32_t top = 0; top < 64; ++top)
            joined.names(static_cast<NameKind>(kind)).find(top << 26U, [](std::uint32_t) {});
    EXPECT_TRUE(std::ranges::is_sorted(joined.firstKeys()));
    EXPECT_TRUE(joined.firstKeys().empty() || joined.firstKeys().front() == 0);
    EXPECT_EQ(joined.firstKeys().size(), joined.firstHrefs().size());

    const auto pages = std::make_shared<const PageImage>(image, pagesSection);
    readLexicon(pages->words());
    for (std::size_t item = 0; item < pages->itemCount(); ++item) {
        static_cast<void>(pages->hasProperties(item));
        static_cast<void>(pages->pageOfItem(item));
        static_cast<void>(pages->anySearchedText(item, [](std::string_view) { return false; }));
        static_cast<void>(pages->item(item)->whole());
    }
    static_cast<void>(pages->pages());
}

TEST(DamagedImageTest, NothingOutsideOfAnImageIsReadWhateverItSays) {
    const auto documentation = sample();
    ImageWriter writer;
    LookupImage::write(documentation.entities, documentation.aliases, writer);
    PageImage::write(documentation.pages, writer, pagesSection);
    const auto lookup =
        std::make_shared<const LookupImage>(documentation.entities, documentation.aliases);
    JoinedNames::write(std::vector{lookup, lookup}, writer, joinedSection);
    const std::string sound = writer.bytes();
    const auto sections = writer.sections();
    EXPECT_NO_THROW(readAll(
        std::make_shared<const Image>(std::make_shared<const std::string>(sound), sections)));

    Generator generator(1);
    int refused = 0;
    constexpr int rounds = 3000;
    for (int round = 0; round < rounds; ++round) {
        // On a heap block of just this size, so that a read beyond it is seen.
        auto damaged = std::make_shared<std::string>(sound);
        for (std::size_t changes = 1 + generator.below(4); changes > 0; --changes) {
            // Each section as often as any other, however small it is.
            const auto& section = sections[generator.below(sections.size())].second;
            if (section.size == 0)
                continue;
            const std::size_t at = section.offset + generator.below(section.size);
            (*damaged)[at] = static_cast<char>(generator.below(256));
        }
        auto changed = sections;
        if (generator.chance(10)) {
            auto& section = changed[generator.below(changed.size())].second;
            section.size = generator.below(section.size + 1);
        }
        try {
            readAll(std::make_shared<const Image>(damaged, changed));
        } catch (const DamagedImage&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, rounds / 10);
    EXPECT_LT(refused, rounds);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
