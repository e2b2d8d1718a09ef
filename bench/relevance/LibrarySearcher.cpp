#include "relevance/LibrarySearcher.hpp"

#include "fl/i18n/utf.hpp"
#include "reference/ask/ask.hpp"

namespace reference::bench {

std::vector<std::string> LibrarySearcher::ask(const std::string& question, std::size_t count) {
    const auto answer = ask::ask(fl::i18n::toUtf16(question), {.limit = count});
    std::vector<std::string> found;
    found.reserve(answer.hits.size());
    for (const auto& hit : answer.hits)
        found.push_back(fl::i18n::toUtf8(hit.data.getHeaderInfo().getShortName()) + ":" +
                        fl::i18n::toUtf8(hit.name));
    return found;
}

}  // namespace reference::bench
