#include "reference/ask/Rung.hpp"

#include <cstddef>
#include <iterator>

namespace reference::ask {
namespace {

struct RungTexts {
    std::string_view name;
    std::string_view description;
};

// In the order of the rungs.
constexpr RungTexts texts[] = {{"name", "the very name"},
                               {"any-case", "the name in another case"},
                               {"without-package", "the name without its package"},
                               {"other-package", "the name in another package"},
                               {"parts", "all words are parts of the name"},
                               {"beginning", "the name begins like this"},
                               {"spelling", "the name is spelt like this"},
                               {"words", "all words are in the name and the purpose"},
                               {"text", "all words are in the text"},
                               {"most-words", "most words are there"}};

const RungTexts& textsOf(Rung rung) noexcept {
    const auto number = static_cast<std::size_t>(rung);
    return texts[number < std::size(texts) ? number : std::size(texts) - 1];
}

}  // namespace

std::string_view toString(Rung rung) noexcept {
    return textsOf(rung).name;
}

std::string_view describe(Rung rung) noexcept {
    return textsOf(rung).description;
}

}  // namespace reference::ask
