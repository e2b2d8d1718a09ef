// The beginning of a name, completed from the documentation that ships with the library. What is
// offered can be completed itself.
#include "reference/ask/complete.hpp"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "ShippedSet.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using ask::complete;

void run(std::string_view input) {
    readShippedSet();
    const std::u16string beginning = unitsOf(input);
    constexpr std::size_t some = 5;
    constexpr std::size_t many = 10'000;
    const auto all = complete(beginning, {.limit = many});
    const auto first = complete(beginning, {.limit = some});
    require(first.size() == std::min(all.size(), some), "A limit is used up");
    std::set<std::u16string> texts;
    for (std::size_t at = 0; at < all.size(); ++at) {
        const auto& one = all[at];
        const std::string told = fl::i18n::toUtf8(one.text);
        require(at >= some || first[at].text == one.text, "A limit shows the beginning", told);
        require(texts.insert(one.text).second, "Each text is offered once", told);
        require(one.isName != one.text.ends_with(u'.') || one.name.ends_with(u'.'),
                "What ends with a dot goes on", told);
        require(one.isName == !one.name.empty(), "A name is told in full", told);
    }
    // Not all of them: one completion would cost hundreds.
    for (const auto& one : first) {
        const auto again = complete(one.text, {.limit = many});
        require(!again.empty(), "What is offered can be completed", fl::i18n::toUtf8(one.text));
        require(!one.isName ||
                    std::ranges::any_of(
                        again,
                        [&](const auto& other) { return other.text == one.text && other.isName; }),
                "A name that is offered is completed to itself", fl::i18n::toUtf8(one.text));
    }
}

const FuzzTarget target("Complete", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
