// A question, as it is taken apart.
#include "reference/ask/Question.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "reference/ask/QuestionError.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using ask::Question;
using ask::Term;

void requireSound(const std::vector<Term>& terms, std::size_t size) {
    for (const Term& term : terms) {
        require(!term.components.empty() && term.hints <= term.components.size(),
                "A term has components");
        require(term.position <= size && term.length <= size - term.position,
                "A term has a place in the question");
    }
}

std::size_t wordsOf(const Question& question) {
    std::size_t words = question.phrases().size();
    for (const Term& term : question.terms())
        words += term.components.size();
    return words;
}

bool isSame(const std::vector<Term>& a, const std::vector<Term>& b) {
    return std::ranges::equal(a, b, [](const Term& one, const Term& other) {
        return one.components == other.components && one.hints == other.hints &&
               one.length == other.length;
    });
}

void run(std::string_view input) {
    const std::u16string text = unitsOf(input);
    try {
        const Question question = Question::parse(text);
        require(text.find(question.text()) != std::u16string::npos,
                "The text is a part of what was asked");
        requireSound(question.terms(), text.size());
        requireSound(question.calls(), text.size());
        require(wordsOf(question) <= Question::maxTerms, "There are no more words than allowed");
        require(!question.calls().empty() || !question.terms().empty() ||
                    !question.phrases().empty() || question.hasFilters(),
                "There is something to look for");
        for (const auto& product : question.products())
            require(!product.name.empty() && product.position <= text.size() &&
                        product.length <= text.size() - product.position,
                    "A product has a place in the question");
        // White space at the ends means nothing.
        const Question again = Question::parse(question.text());
        require(again.text() == question.text() && isSame(again.terms(), question.terms()) &&
                    isSame(again.calls(), question.calls()) &&
                    again.phrases() == question.phrases() &&
                    again.excluded() == question.excluded() && again.types() == question.types() &&
                    again.place() == question.place() &&
                    again.wantsDeprecated() == question.wantsDeprecated(),
                "What was read means the same when it is read again");
    } catch (const ask::QuestionError& error) {
        // A zero in what is quoted ends the message.
        const bool hasZero = text.find(u'\0') != std::u16string::npos;
        require((hasZero || std::string_view(error.what()).ends_with('.')) && isUtf8(error.what()),
                "An error says what it is", error.what());
        require(error.position() <= text.size() && error.length() <= text.size() - error.position(),
                "An error has a place in the question", error.what());
    }
}

const FuzzTarget target("Question", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
