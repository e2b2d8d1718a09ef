// A question to the documentation that ships with the library. Nothing is wrong with what cannot be
// asked; a limit shows the beginning of the same answer.
#include "reference/ask/ask.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "ShippedSet.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/QuestionError.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using ask::Answer;
using ask::AskOptions;

std::optional<Answer> answerTo(const std::u16string& question, const AskOptions& options) {
    try {
        return ask::ask(question, options);
    } catch (const ask::QuestionError& error) {
        require(error.position() <= question.size() &&
                    error.length() <= question.size() - error.position(),
                "An error has a place in the question", error.what());
        return std::nullopt;
    }
}

bool isSame(const ask::Hit& a, const ask::Hit& b) {
    return a.name == b.name && a.rung == b.rung && a.change == b.change &&
           a.data.getHeaderInfo().getShortName() == b.data.getHeaderInfo().getShortName() &&
           a.data.getRefItem() == b.data.getRefItem();
}

// What each call of code found is in the order of the rungs, one call after the other.
void requireOrder(const std::vector<ask::Hit>& hits, std::u16string_view text) {
    std::size_t looserBefore = 0;
    for (std::size_t at = 1; at < hits.size(); ++at)
        looserBefore += hits[at].rung < hits[at - 1].rung;
    if (looserBefore == 0)
        return;
    require(looserBefore < ask::Question::parse(text).calls().size(), "Closer rungs go first");
}

void run(std::string_view input) {
    readShippedSet();
    const std::u16string question = unitsOf(input);
    constexpr std::size_t some = 3;
    constexpr std::size_t many = 2000;
    const auto whole = answerTo(question, {.limit = many});
    const auto beginning = answerTo(question, {.limit = some});
    require(whole.has_value() == beginning.has_value(), "A limit does not make a question wrong");
    if (!whole)
        return;
    require(whole->hits.size() <= many && beginning->hits.size() <= some,
            "There are no more hits than allowed");
    require(beginning->hits.size() == std::min(some, whole->hits.size()), "A limit is used up");
    // Where a limit leaves names out, those that share an entry are counted one by one.
    require(whole->total == whole->hits.size() && beginning->total >= whole->total,
            "It is known how many there are");
    require(std::equal(beginning->hits.begin(), beginning->hits.end(), whole->hits.begin(), isSame),
            "A limit shows the beginning of the same answer");
    require(whole->turnedAway.empty() || whole->total == 0,
            "What was turned away is shown where nothing else is");
    require(whole->turnedAway.size() <= whole->filteredAway,
            "No more is shown than was turned away");
    requireOrder(whole->hits, question);
    for (const auto& hit : whole->hits)
        require(!hit.name.empty(), "A hit has a name");
}

const FuzzTarget target("Ask", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
