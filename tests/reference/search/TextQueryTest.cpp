// What a lexicon is asked for a text, and which texts have the words.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "docimage/Image.hpp"
#include "docimage/Lexicon.hpp"
#include "reference/search/ReferenceRequestExt.hpp"
#include "reference/search/TextQuery.hpp"

namespace reference::search {
namespace VELTRA_TEST_FILE {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

ReferenceRequestExt::Request asked(const std::u16string& text, bool caseCounts = false) {
    return {.text = text, .types = {}, .products = {}, .isCaseSensitive = caseCounts};
}

TEST(TextQueryTest, OnlyOneWordInAnyCaseIsExact) {
    const struct {
        std::u16string text;
        bool isExact;
        std::size_t parts;
    } cases[] = {
        {u"fit", true, 1},          {u"FIT", true, 1},
        {u"\u00E4rger", true, 1},   {u"fit a", false, 2},
        {u"fit ", false, 1},        {u"(fit", false, 1},
        {u"->", false, 0},          {u"", false, 0},
        {u"\u03C3", false, 1},      {u"fi\u03C3t", false, 1},
        {u"a\U0001D400", false, 1}, {u"a\xD800", false, 1},
        {u"a\xDFFF", false, 1},
    };
    for (const auto& c : cases) {
        const ReferenceRequestExt ext(asked(c.text));
        const TextQuery query(ext);
        EXPECT_EQ(query.isExact(), c.isExact) << testing::PrintToString(c.text);
        EXPECT_EQ(query.hasParts(), c.parts > 0) << testing::PrintToString(c.text);
        const ReferenceRequestExt exact(asked(c.text, true));
        EXPECT_FALSE(TextQuery(exact).isExact()) << testing::PrintToString(c.text);
    }
}

class TextQueryLexiconTest : public ::testing::Test {
  protected:
    TextQueryLexiconTest() {
        docimage::LexiconBuilder builder;
        std::uint32_t number = 0;
        for (const auto* const text :
             {u"sort rows", u"sort columns", u"rows sorted", u"rows", u"resort in rows"})
            builder.addText(text, number++);
        docimage::ImageWriter writer;
        builder.writeTo(writer, 0);
        m_image = writer.finish();
        m_lexicon = docimage::Lexicon(*m_image, 0);
    }

    // The numbers of texts that have each part of it.
    [[nodiscard]] std::vector<std::size_t> weights(const std::u16string& text) const {
        const ReferenceRequestExt ext(asked(text));
        std::vector<std::size_t> found;
        for (const auto& part : TextQuery(ext).wordsOf(m_lexicon))
            found.push_back(part.weight);
        return found;
    }
    [[nodiscard]] std::vector<std::uint32_t> texts(const std::u16string& text) const {
        const ReferenceRequestExt ext(asked(text));
        auto words = TextQuery(ext).wordsOf(m_lexicon);
        return TextQuery::textsWithAll(m_lexicon, words, 5);
    }

    std::shared_ptr<const docimage::Image> m_image;
    docimage::Lexicon m_lexicon;
};

TEST_F(TextQueryLexiconTest, WordsBeginAndEndWhereTheTextHasMore) {
    EXPECT_THAT(weights(u"sort"), ElementsAre(4));    // sort, sorted, resort
    EXPECT_THAT(weights(u"sort "), ElementsAre(3));   // sort, resort
    EXPECT_THAT(weights(u" sort"), ElementsAre(3));   // sort, sorted
    EXPECT_THAT(weights(u" sort "), ElementsAre(2));  // sort
    EXPECT_THAT(weights(u"sort rows"), ElementsAre(3, 4));
    EXPECT_THAT(weights(u"rows sort"), ElementsAre(4, 3));
    EXPECT_THAT(weights(u"sort in rows"), ElementsAre(3, 1, 4));
    EXPECT_THAT(weights(u"sort nothing"), IsEmpty());
}

TEST_F(TextQueryLexiconTest, TextsHaveAllParts) {
    EXPECT_THAT(texts(u"sort"), ElementsAre(0, 1, 2, 4));
    EXPECT_THAT(texts(u"sort rows"), ElementsAre(0, 4));
    EXPECT_THAT(texts(u"rows sort"), ElementsAre(0, 2));
    EXPECT_THAT(texts(u"sort in rows"), ElementsAre(4));
    EXPECT_THAT(texts(u"columns sort"), ElementsAre(1));
    EXPECT_THAT(texts(u"nothing"), IsEmpty());
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::search
