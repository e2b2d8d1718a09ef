// The words of running text, by their stems.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "docimage/Image.hpp"
#include "docimage/Lexicon.hpp"
#include "foundation/core/export.hpp"

struct sb_stemmer;

namespace reference::docimage {

// Reduces the forms of an English word to one, by the Snowball algorithm "english": "sorting" and
// "sorts" to "sort". Words with other letters than a to z stay as they are. One thread.
class VELTRA_HOST_API Stemmer {
  public:
    // Throws std::bad_alloc.
    Stemmer();
    Stemmer(const Stemmer&) = delete;  // owns the state of the algorithm
    Stemmer& operator=(const Stemmer&) = delete;
    ~Stemmer();

    // `word` is in search form. The view is valid until the next call, and as long as `word`.
    [[nodiscard]] std::string_view stem(std::string_view word);

  private:
    struct Delete {
        void operator()(sb_stemmer* stemmer) const noexcept;
    };
    std::unique_ptr<sb_stemmer, Delete> m_stemmer;
};

// Writes a lexicon of the stems of the words of another, whose numbers are its "texts".
VELTRA_HOST_API void writeStems(const Lexicon& words, ImageWriter& writer,
                                std::uint32_t firstSection);

// The words of a text in its order, in search form: runs of letters and digits, with the apostrophe
// and what follows it left out ("Python's" is python). Text without spaces between its words, such
// as Japanese, is divided by the dictionary of ICU (Unicode Standard Annex 29).
[[nodiscard]] VELTRA_HOST_API std::vector<std::string> wordsOf(std::u16string_view text);

// Whether the word says nothing of what is asked: an article, a pronoun, "how", "to", "do".
[[nodiscard]] VELTRA_HOST_API bool isStopWord(std::string_view word) noexcept;

}  // namespace reference::docimage
