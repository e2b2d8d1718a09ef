#include "vref/LanguageChoice.hpp"

#include <algorithm>

#include "vref/Environment.hpp"

namespace reference::tools {
namespace {

std::string folded(std::string_view locale) {
    std::string text(locale);
    std::ranges::transform(text, text.begin(), [](char letter) {
        if (letter == '-')
            return '_';
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return text;
}

std::string withoutEncoding(std::string_view locale) {
    return std::string(locale.substr(0, locale.find_first_of(".@")));
}

// The locale that asks for no language but the one that programs are written in.
bool isNoLanguage(std::string_view locale) {
    const std::string name = withoutEncoding(locale);
    return name.empty() || name == "C" || name == "POSIX";
}

void addWishes(std::string_view locale, const char* variable, std::vector<LanguageWish>& wishes) {
    const std::string name = withoutEncoding(locale);
    wishes.push_back({name, variable});
    if (const auto territory = name.find_first_of("_-"); territory != std::string::npos)
        wishes.push_back({name.substr(0, territory), variable});
}

const char* decidingVariable() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES"})
        if (!environmentText(variable).empty())
            return variable;
    return "LANG";
}

}  // namespace

std::vector<LanguageWish> languagesOfEnvironment() {
    std::vector<LanguageWish> wishes;
    const char* const variable = decidingVariable();
    const std::string locale = environmentText(variable);
    if (!isNoLanguage(locale)) {
        const std::string list = environmentText("LANGUAGE");
        bool isEnded = false;
        for (std::size_t start = 0; start < list.size() && !isEnded;) {
            const auto end = std::min(list.find(':', start), list.size());
            const std::string each = list.substr(start, end - start);
            start = end + 1;
            isEnded = !each.empty() && isNoLanguage(each);
            if (!isEnded && !each.empty())
                addWishes(each, "LANGUAGE", wishes);
        }
        if (!isEnded)
            addWishes(locale, variable, wishes);
    }
    wishes.push_back({"en", {}});
    return wishes;
}

std::optional<std::string> localeMeant(std::string_view wanted,
                                       const std::vector<std::string>& locales) {
    const std::string meant = folded(wanted);
    const auto found = std::ranges::find_if(locales, [&](const std::string& locale) {
        const std::string plain = folded(locale);
        return plain == meant || plain.substr(0, plain.find('_')) == meant;
    });
    return found != locales.end() ? std::optional(*found) : std::nullopt;
}

}  // namespace reference::tools
