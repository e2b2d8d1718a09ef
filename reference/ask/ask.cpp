#include "reference/ask/ask.hpp"

#include <exception>
#include <optional>

#include "reference/api/cache_manager/referenceStore.hpp"
#include "reference/ask/Ladder.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/QuestionError.hpp"

namespace reference::ask {

Answer ask(std::u16string_view text, const AskOptions& options) {
    std::optional<Question> question;
    std::exception_ptr problem;
    try {
        question = Question::parse(text);
    } catch (const QuestionError&) {
        problem = std::current_exception();
    }
    Answer answer = cache_manager::referenceStore().answer([&](const search::Snapshot& snapshot) {
        if (snapshot.index() == nullptr || text.size() > Question::maxLength)
            return Answer();
        return climb(snapshot, question ? std::u16string_view(question->text()) : text,
                     question ? &*question : nullptr, options);
    });
    if (problem && answer.hits.empty())
        std::rethrow_exception(problem);
    return answer;
}

}  // namespace reference::ask
