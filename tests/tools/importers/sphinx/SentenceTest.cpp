#include <cstddef>

#include <gtest/gtest.h>

#include "sphinx/HtmlDocument.hpp"
#include "sphinx/Sentence.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

std::string firstOf(const std::string& html) {
    HtmlArena arena;
    const std::string page = "<p>" + html + "</p>";
    const HtmlDocument document(arena, page);
    return firstSentence(InlineText(document.root().findTag("p")));
}

TEST(SentenceTest, EndsWhereASentenceEnds) {
    const struct {
        const char* html;
        const char* sentence;
    } rows[] = {
        {"One thing. Another thing.", "One thing."},
        {"No mark at all", "No mark at all"},
        {"Really? Yes.", "Really?"},
        {"Stop! Now.", "Stop!"},
        {"In one go.", "In one go."},
        {"Ends in a quote.” Then more.", "Ends in a quote.”"},
        {"Costs 1.5 units. More.", "Costs 1.5 units."},
        {"Since version 3. New since then.", "Since version 3."},
        {"Two numbers. 3 is one.", "Two numbers."},
        {"A list. [1] says so.", "A list."},
        {"Some kinds, e.g. Apples, are sweet. Others not.", "Some kinds, e.g. Apples, are sweet."},
        {"That is, i.e. This one. Not that.", "That is, i.e. This one."},
        {"Pears, plums etc. are fruit. Peas are not.", "Pears, plums etc. are fruit."},
        {"Pears, plums etc. Peas are not.", "Pears, plums etc."},
        {"Compare cf. Smith and others. Done.", "Compare cf. Smith and others."},
        {"See Fig. 3 for that. Done.", "See Fig. 3 for that."},
        {"Sets the value p. Returns nothing.", "Sets the value p."},
        {"As on p. 12 of it. Done.", "As on p. 12 of it."},
        {"It takes 5 ms. Then it ends.", "It takes 5 ms."},
        {"By Eq. 2 it holds. Done.", "By Eq. 2 it holds."},
        {"Method of J. Smith for roots. Done.", "Method of J. Smith for roots."},
        {"The rank of the matrix A. If it is full, fine.", "The rank of the matrix A."},
        {"Lower case follows. but not a sentence. So.", "Lower case follows. but not a sentence."},
        {"Call <code>a. B</code> first. Then stop.", "Call a. B first."},
        {"Do this. <code>x</code> is changed.", "Do this."},
        {"One thing (see there. Or here) counts. Two.", "One thing (see there. Or here) counts."},
        {"An open ( bracket. Two.", "An open ( bracket."},
        {"Values x, y, ... Z are taken. Two.", "Values x, y, ... Z are taken."},
        {"And so on... The end.", "And so on..."},
        {"1. First step. Second.", "1. First step."},
        {"Solve <span class=\"math\">\\(a. B\\)</span> at once. Two.", "Solve a. B at once."},
        {"最初の文。次の文。", "最初の文。"},
        {"Line\n  breaks   collapse. Two.", "Line breaks collapse."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(firstOf(row.html), row.sentence) << row.html;
}

TEST(SentenceTest, TellsWhereTheLastOneBegins) {
    const struct {
        const char* text;
        std::size_t begin;
    } rows[] = {{"One. Two.", 5},
                {"One. It is (e.g. so). For example:", 22},
                {"Only one", 0},
                {"One.  ", 0},
                {"最初の文。次の文。", 15},
                {"", 0}};
    for (const auto& row : rows) {
        InlineText text;
        text.addText(row.text);
        EXPECT_EQ(lastSentenceBegin(text), row.begin) << row.text;
    }
}

TEST(SentenceTest, OfNothingIsNothing) {
    EXPECT_EQ(firstSentence(InlineText()), "");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
