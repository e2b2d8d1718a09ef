// How long questions and completions take, made from the names and purposes of a documentation set.
//
//   question_times [COUNT]
//
// COUNT questions of each kind (100), about names that lie evenly in the set of VELTRA_DOC_ROOT.
// Each is asked twice, and the second time counts: what is read once is read.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "fl/i18n/utf.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/QuestionError.hpp"
#include "reference/ask/ask.hpp"
#include "reference/ask/complete.hpp"

namespace {

using Clock = std::chrono::steady_clock;
using reference::cache_manager::ReferenceCacheManager;

struct Entity {
    std::string name;
    std::string purpose;

    [[nodiscard]] std::string last() const { return name.substr(name.rfind('.') + 1); }
};

// From each product its share, so that a set of many products needs no memory for all names.
std::vector<Entity> sample(std::size_t count) {
    ReferenceCacheManager::PopulateLookupCaches();
    const auto lookups = ReferenceCacheManager::GetLookupCache();
    std::vector<Entity> entities;
    if (lookups->empty())
        return entities;
    const std::size_t products = std::min<std::size_t>(lookups->size(), 10);
    const std::size_t step = lookups->size() / products;
    std::size_t at = 0;
    for (const auto& [name, lookup] : *lookups) {
        if (at++ % step != 0)
            continue;
        const auto& items = lookup.getItems();
        const std::size_t every = std::max<std::size_t>(items.size() * products / count, 1);
        std::size_t number = 0;
        for (const auto& [key, records] : items)
            if (number++ % every == 0 && entities.size() < count)
                entities.push_back({.name = fl::i18n::toUtf8(key),
                                    .purpose = fl::i18n::toUtf8(records.front().getPurpose())});
    }
    return entities;
}

// The first words of a text that are not short.
std::string longWords(const std::string& text, std::size_t count) {
    constexpr std::size_t shortest = 5;
    std::istringstream stream(text);
    std::string words;
    std::string word;
    while (count > 0 && stream >> word)
        if (word.size() >= shortest) {
            words += (words.empty() ? "" : " ") + word;
            --count;
        }
    return words;
}

std::string firstWords(const std::string& text, std::size_t count) {
    std::istringstream stream(text);
    std::string words;
    std::string word;
    for (; count > 0 && stream >> word; --count)
        words += " " + word;
    return words;
}

std::string inPieces(std::string name) {
    std::ranges::replace(name, '_', ' ');
    std::ranges::replace(name, '.', ' ');
    return name;
}

// Two letters in the middle are exchanged.
std::string slipped(std::string name) {
    constexpr std::size_t shortest = 5;
    if (name.size() >= shortest)
        std::swap(name[name.size() / 2], name[name.size() / 2 - 1]);
    return name;
}

void print(const std::string& kind, std::vector<double> times) {
    if (times.empty())
        return;
    std::ranges::sort(times);
    const auto at = [&](std::size_t percent) { return times[(times.size() - 1) * percent / 100]; };
    std::cout << std::left << std::setw(22) << kind << std::right << std::fixed
              << std::setprecision(0) << std::setw(6) << times.size() << std::setw(10) << at(50)
              << std::setw(10) << at(95) << std::setw(10) << times.back() << '\n';
}

template <typename Make, typename Ask>
void measure(const std::string& kind, const std::vector<Entity>& entities, Make make, Ask ask) {
    std::vector<double> times;
    for (const Entity& entity : entities) {
        const std::u16string text = fl::i18n::toUtf16(make(entity));
        if (text.empty())
            continue;
        try {
            static_cast<void>(ask(text));
        } catch (const reference::ask::QuestionError&) {
            continue;  // an operator, pasted as if it were called
        }
        const auto begin = Clock::now();
        static_cast<void>(ask(text));
        times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - begin).count());
    }
    print(kind, std::move(times));
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (; times > 0; --times)
        all += text;
    return all;
}

// Words that no text has.
std::string differentWords(std::size_t count) {
    std::string words;
    for (std::size_t word = 0; word < count; ++word) {
        words += "qzxvabcd";
        words += static_cast<char>('a' + word / 26);
        words += static_cast<char>('a' + word % 26);
        words += ' ';
    }
    return words;
}

// Questions that are meant to take long: at most 50 ms, whether they are answered or refused.
void measureHostile() {
    constexpr std::size_t megabyte = 1U << 20U;
    constexpr std::size_t longest = reference::ask::Question::maxLength;
    const std::string nul(1, '\0');
    const std::vector<std::u16string> questions = {
        fl::i18n::toUtf16(repeated("a", megabyte)),
        fl::i18n::toUtf16(repeated("word ", 10'000)),
        fl::i18n::toUtf16(repeated("sort list ", longest / 10)),
        fl::i18n::toUtf16(repeated("a ", longest / 2)),
        fl::i18n::toUtf16(repeated("a.", longest / 2)),
        fl::i18n::toUtf16(repeated("(", longest)),
        fl::i18n::toUtf16(repeated("f(", longest / 2)),
        fl::i18n::toUtf16(repeated("\"a\" ", longest / 4)),
        fl::i18n::toUtf16(repeated("-x ", longest / 3)),
        fl::i18n::toUtf16(repeated("type:method ", longest / 12)),
        fl::i18n::toUtf16(repeated("ab", longest / 2)),
        fl::i18n::toUtf16(repeated("abababababababab ", longest / 17)),
        fl::i18n::toUtf16("\"" + differentWords(longest / 11 - 1) + "\""),
        fl::i18n::toUtf16(differentWords(reference::ask::Question::maxTerms)),
        fl::i18n::toUtf16("aaaaaaaaaaaaaaaaaaaaaaaaaaab"),
        fl::i18n::toUtf16("eeeeeeeee_eeeeeeeeee_eeeeeeeee"),
        fl::i18n::toUtf16(repeated("\xCE\xA3", longest)),
        fl::i18n::toUtf16(repeated("\xE6\x97\xA5\xE6\x9C\xAC", longest / 2)),
        fl::i18n::toUtf16("read" + nul + "csv" + repeated(nul, 100)),
        std::u16string(longest, u'\xD800'),
        u"e e e e e e e e",
        u"get set",
    };
    std::vector<double> times;
    for (const auto& question : questions) {
        const auto begin = Clock::now();
        try {
            static_cast<void>(reference::ask::ask(question));
        } catch (const reference::ask::QuestionError&) {
            // Refused.
        }
        times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - begin).count());
    }
    print("hostile, asked once", std::move(times));
}

void measureAll(std::size_t count) {
    const auto entities = sample(count);
    std::cout << "kind                   count    median       95%   longest  (us)\n";
    const auto ask = [](const std::u16string& text) {
        return reference::ask::ask(text).hits.size();
    };
    const auto complete = [](const std::u16string& text) {
        return reference::ask::complete(text).size();
    };
    measure(
        "name", entities, [](const Entity& one) { return one.name; }, ask);
    measure(
        "foreign package", entities, [](const Entity& one) { return "elsewhere." + one.last(); },
        ask);
    measure(
        "pasted code", entities,
        [](const Entity& one) { return "x = " + one.name + "(a, key=\"b\")"; }, ask);
    measure(
        "pieces", entities, [](const Entity& one) { return inPieces(one.last()); }, ask);
    measure(
        "slip", entities, [](const Entity& one) { return slipped(one.last()); }, ask);
    measure(
        "words", entities, [](const Entity& one) { return longWords(one.purpose, 3); }, ask);
    measure(
        "sentence", entities,
        [](const Entity& one) { return "how do I" + firstWords(one.purpose, 6); }, ask);
    measure(
        "nothing there is", entities,
        [](const Entity& one) { return "qzxv" + one.last() + " wkjqy"; }, ask);
    measureHostile();
    measure(
        "completion: part", entities,
        [](const Entity& one) { return one.name.substr(0, one.name.rfind('.') + 3); }, complete);
    measure(
        "completion: 2 letters", entities,
        [](const Entity& one) { return one.last().substr(0, 2); }, complete);
    measure(
        "completion: 3 letters", entities,
        [](const Entity& one) { return one.last().substr(0, 3); }, complete);
}

}  // namespace

int main(int argc, char** argv) {
    constexpr std::size_t usualCount = 100;
    try {
        measureAll(argc > 1 ? std::stoul(argv[1]) : usualCount);
    } catch (const std::exception& error) {
        std::cerr << "question_times: " << error.what() << '\n';
        return 1;
    }
}
