#include "queries/pickQueries.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <unicode/uscript.h>

#include "corpus/fold.hpp"
#include "corpus/words.hpp"
#include "fl/i18n/utf.hpp"

namespace reference::bench {
namespace {

// What the standard library's generator yields is the same everywhere; its distributions are not.
class Random {
  public:
    explicit Random(std::uint64_t seed) : m_generator(seed) {}
    std::size_t below(std::size_t limit) { return m_generator() % limit; }

    template <typename Row>
    void shuffle(std::vector<Row>& rows) {
        for (std::size_t n = rows.size(); n > 1; --n)
            std::swap(rows[n - 1], rows[below(n)]);
    }

  private:
    std::mt19937_64 m_generator;
};

bool isLetter(char sign) {
    return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z');
}

bool isPlainWord(std::string_view word) {
    return std::ranges::all_of(word, isLetter);
}

bool isPunctuation(char sign) {
    return sign > ' ' && sign < '\x7f' && !isLetter(sign) && !(sign >= '0' && sign <= '9');
}

bool isNonLatin(std::string_view word) {
    while (!word.empty()) {
        const auto character = static_cast<UChar32>(takeCharacter(word));
        if ((U_GET_GC_MASK(character) & U_GC_L_MASK) == 0)
            continue;
        UErrorCode error = U_ZERO_ERROR;
        const UScriptCode script = uscript_getScript(character, &error);
        if (script != USCRIPT_LATIN && script != USCRIPT_COMMON && script != USCRIPT_INHERITED)
            return true;
    }
    return false;
}

// How many of the column's texts contain the part, counted no further than `limit`.
std::size_t countWith(const TextColumn& column, std::string_view part, std::size_t limit) {
    std::size_t count = 0;
    column.forEachWith(part, [&](std::uint32_t /*text*/) { return ++count < limit; });
    return count;
}

// A name in which two neighbouring letters are swapped, so that it looks like the others; the same
// name where all letters are alike.
std::string misspelt(std::string name, Random& random) {
    for (int attempt = 0; attempt < 20 && name.size() > 1; ++attempt) {
        const std::size_t place = random.below(name.size() - 1);
        if (isLetter(name[place]) && isLetter(name[place + 1]) && name[place] != name[place + 1]) {
            std::swap(name[place], name[place + 1]);
            break;
        }
    }
    return name;
}

std::string shouted(std::string name) {
    for (char& sign : name)
        if (sign >= 'a' && sign <= 'z')
            sign = static_cast<char>(sign - 'a' + 'A');
    return name;
}

class Picker {
  public:
    Picker(const Corpus& corpus, const QueryClass& queryClass, std::size_t wanted)
        : m_corpus(corpus),
          m_class(queryClass),
          m_column(queryClass.ask == Ask::TextResults ? corpus.itemTexts : corpus.recordTexts),
          m_wanted(wanted),
          m_random(20'000 + static_cast<std::uint64_t>(queryClass.pick)) {}

    std::vector<Query> pick() {
        switch (m_class.pick) {
            case Pick::Names:
                sample(m_corpus.keys);
                break;
            case Pick::ShoutedNames:
                attempt([&] { return shouted(std::string(randomText(m_corpus.keys))); });
                break;
            case Pick::MissingNames:
                pickMissingNames();
                break;
            case Pick::LastComponents:
                sample(m_corpus.lastComponents);
                break;
            case Pick::LastTwoComponents:
                sample(m_corpus.lastTwoComponents);
                break;
            case Pick::Classes:
                attempt([&] {
                    const auto& classes = m_corpus.classRecords;
                    return std::string(m_corpus.keys[classes[m_random.below(classes.size())]]);
                });
                break;
            case Pick::FileNames:
                sample(m_corpus.fileNames);
                break;
            case Pick::RareWords:
                pickWords(1, 3, &isPlainWord);
                break;
            case Pick::MediumWords:
                pickWords(m_column.size() / 1000 + 1, m_column.size() / 100, &isPlainWord);
                break;
            case Pick::FrequentWords:
                pickWords(m_column.size() / 10, m_column.size() / 5, &isPlainWord);
                break;
            case Pick::MissingWords:
                attempt([&] {
                    const std::string word = misspelt(randomWord(), m_random);
                    return isPlainWord(word) && countWith(m_column, word, 1) == 0 ? word
                                                                                  : std::string();
                });
                break;
            case Pick::TwoLetters:
                attempt([&] {
                    const std::string word = randomWord();
                    return isPlainWord(word) ? word.substr(m_random.below(word.size() - 1), 2)
                                             : std::string();
                });
                break;
            case Pick::Phrases:
                attempt([&] { return randomPhrase(); });
                break;
            case Pick::NonLatinWords:
                pickNonLatin();
                break;
            case Pick::Punctuation:
                attempt([&] { return randomSigns(); });
                break;
        }
        return std::move(m_queries);
    }

  private:
    void add(const std::string& text) {
        if (m_queries.size() >= m_wanted || text.empty() || !m_seen.insert(text).second)
            return;
        std::u16string utf16 = fl::i18n::toUtf16(text);
        std::string lower = folded(utf16);
        m_queries.push_back({std::move(utf16), text, std::move(lower)});
    }

    // Adds what `make` makes until there are enough, or until it hardly makes anything new.
    void attempt(const std::function<std::string()>& make) {
        for (std::size_t n = 0; n < m_wanted * 200 && m_queries.size() < m_wanted; ++n)
            add(make());
    }

    std::string_view randomText(const TextColumn& column) {
        return column[m_random.below(column.size())];
    }

    void sample(const TextColumn& column) {
        attempt([&] { return std::string(randomText(column)); });
    }

    void pickMissingNames() {
        std::unordered_set<std::string_view> keys;
        for (std::size_t n = 0; n < m_corpus.keys.size(); ++n)
            keys.insert(m_corpus.keys[n]);
        attempt([&] {
            const std::string name = misspelt(std::string(randomText(m_corpus.keys)), m_random);
            return keys.contains(name) ? std::string() : name;
        });
    }

    // A word of four letters or more of a random text.
    std::string randomWord() {
        for (;;) {
            std::vector<std::string_view> words;
            forEachWord(randomText(m_column), [&](std::string_view word) {
                if (word.size() >= 4)
                    words.push_back(word);
                return true;
            });
            if (!words.empty())
                return std::string(words[m_random.below(words.size())]);
        }
    }

    // Two plain words with one space between them.
    std::string randomPhrase() {
        const std::string_view text = randomText(m_column);
        std::vector<std::string_view> phrases;
        std::string_view before;
        forEachWord(text, [&](std::string_view word) {
            if (before.size() >= 2 && word.size() >= 2 && isPlainWord(before) &&
                isPlainWord(word) && before.data() + before.size() + 1 == word.data() &&
                *(word.data() - 1) == ' ')
                phrases.emplace_back(before.data(), before.size() + 1 + word.size());
            before = word;
            return true;
        });
        return phrases.empty() ? std::string()
                               : std::string(phrases[m_random.below(phrases.size())]);
    }

    // Two or three signs of a longest run of punctuation.
    std::string randomSigns() {
        const std::string_view text = randomText(m_column);
        std::vector<std::string_view> runs;
        for (std::size_t begin = 0; begin < text.size(); ++begin) {
            std::size_t end = begin;
            while (end < text.size() && isPunctuation(text[end]))
                ++end;
            if (end - begin >= 2)
                runs.push_back(text.substr(begin, std::min<std::size_t>(end - begin, 3)));
            begin = end;
        }
        return runs.empty() ? std::string() : std::string(runs[m_random.below(runs.size())]);
    }

    // Words that at least `least` and at most `most` texts contain, as a part of another word or
    // alone. Candidates come from a sample of the texts; all of them are counted in all texts.
    void pickWords(std::size_t least, std::size_t most, bool (*isFit)(std::string_view)) {
        // Beyond this many texts, a sample of them has words enough.
        constexpr std::size_t sampled = 50'000;
        const std::size_t step = m_column.size() / sampled + 1;
        std::map<std::string_view, std::size_t> counts;
        std::set<std::string_view> inText;
        for (std::size_t n = 0; n < m_column.size(); n += step) {
            inText.clear();
            forEachWord(m_column[n], [&](std::string_view word) {
                if (word.size() >= 3 && isFit(word))
                    inText.insert(word);
                return true;
            });
            for (const auto word : inText)
                ++counts[word];
        }
        std::vector<std::string_view> candidates;
        for (const auto& [word, count] : counts)
            if ((count == 1 || count * step <= most) && (count + 1) * step * 20 >= least)
                candidates.push_back(word);
        m_random.shuffle(candidates);
        // There are few frequent words, but all of them are looked at; of the others, enough.
        constexpr std::size_t mostCounted = 2'000;
        for (std::size_t n = 0; n < std::min(candidates.size(), mostCounted); ++n) {
            if (m_queries.size() >= m_wanted)
                return;
            const std::size_t count = countWith(m_column, candidates[n], most + 1);
            if (count >= least && count <= most)
                add(std::string(candidates[n]));
        }
    }

    // Nearly all texts are Latin: looking at each of them once is quicker than guessing.
    void pickNonLatin() {
        std::set<std::string> words;
        for (std::size_t n = 0; n < m_column.size(); ++n) {
            const std::string_view text = m_column[n];
            if (std::ranges::none_of(text, [](char byte) { return byte < 0; }))
                continue;
            forEachWord(text, [&](std::string_view word) {
                if (isNonLatin(word))
                    words.emplace(word);
                return words.size() < 10'000;
            });
        }
        std::vector<std::string> candidates(words.begin(), words.end());
        m_random.shuffle(candidates);
        std::ranges::for_each(candidates, [this](const auto& word) { add(word); });
    }

    const Corpus& m_corpus;
    const QueryClass& m_class;
    const TextColumn& m_column;
    const std::size_t m_wanted;
    Random m_random;
    std::vector<Query> m_queries;
    std::set<std::string> m_seen;
};

}  // namespace

std::vector<Query> pickQueries(const Corpus& corpus, const QueryClass& queryClass,
                               std::size_t count) {
    return Picker(corpus, queryClass, count).pick();
}

}  // namespace reference::bench
