#include "reference/ask/nearWords.hpp"

#include <algorithm>
#include <array>
#include <string>

namespace reference::ask {
namespace {

// Longer words are not compared: no identifier that anybody types is as long.
constexpr std::size_t longestWord = 64;
constexpr std::size_t most = 2;

// The table of slips between the wanted word, whose beginnings are the columns, and the beginnings
// of another, which are the rows. Rows are added and taken back, so that words with a common
// beginning share its rows. Only the columns that can hold an admitted number are filled.
class SlipTable {
  public:
    SlipTable(std::string_view wanted, std::uint32_t admitted)
        : m_wanted(wanted), m_admitted(admitted) {
        for (std::size_t column = 0; column <= wanted.size(); ++column)
            m_rows[0][column] = static_cast<std::uint8_t>(std::min(column, most + 1));
    }

    // Fills row `row` for a word whose letter before it is `letter` and whose one before that is
    // `previous`. Returns whether a word that goes on from here can still be near.
    bool fill(std::size_t row, char letter, char previous) {
        auto& now = m_rows[row];
        const auto& before = m_rows[row - 1];
        const std::size_t first = row > m_admitted ? row - m_admitted : 0;
        const std::size_t last = std::min(m_wanted.size(), row + m_admitted);
        constexpr std::uint8_t tooMany = most + 1;
        std::uint8_t best = tooMany;
        if (first > 0)
            now[first - 1] = tooMany;
        for (std::size_t column = first; column <= last; ++column) {
            if (column == 0) {
                now[0] = static_cast<std::uint8_t>(std::min<std::size_t>(row, tooMany));
            } else {
                const char wanted = m_wanted[column - 1];
                unsigned slips = before[column - 1] + (wanted == letter ? 0U : 1U);
                if (column < row + m_admitted)
                    slips = std::min(slips, before[column] + 1U);
                if (column > first)
                    slips = std::min(slips, now[column - 1] + 1U);
                if (row > 1 && column > 1 && wanted == previous && m_wanted[column - 2] == letter)
                    slips = std::min(slips, m_rows[row - 2][column - 2] + 1U);
                now[column] = static_cast<std::uint8_t>(std::min<unsigned>(slips, tooMany));
            }
            best = std::min(best, now[column]);
        }
        if (last < m_wanted.size())
            now[last + 1] = tooMany;
        // Two letters that are exchanged with the next may count less in the row after it.
        return best <= m_admitted || (row > 1 && wasOpen(row - 1));
    }

    // The slips for a word of `length` letters, all of whose rows are filled.
    [[nodiscard]] std::uint32_t slips(std::size_t length) const {
        const std::size_t apart =
            length > m_wanted.size() ? length - m_wanted.size() : m_wanted.size() - length;
        return apart > m_admitted ? m_admitted + 1 : m_rows[length][m_wanted.size()];
    }

  private:
    // Whether the row has a number that an exchange may go on from.
    [[nodiscard]] bool wasOpen(std::size_t row) const {
        const std::size_t first = row > m_admitted ? row - m_admitted : 0;
        const std::size_t last = std::min(m_wanted.size(), row + m_admitted);
        for (std::size_t column = first; column <= last; ++column)
            if (m_rows[row][column] < m_admitted)
                return true;
        return false;
    }

    const std::string_view m_wanted;
    const std::uint32_t m_admitted;
    std::array<std::array<std::uint8_t, longestWord + most + 2>, longestWord + most + 2> m_rows;
};

std::size_t commonBeginning(std::string_view a, std::string_view b) {
    const std::size_t size = std::min(a.size(), b.size());
    std::size_t at = 0;
    while (at < size && a[at] == b[at])
        ++at;
    return at;
}

// The first text from `from` on that does not begin with `beginning`, in steps that double.
std::size_t passOver(const docimage::Lexicon& lexicon, std::size_t from,
                     std::string_view beginning) {
    std::size_t step = 1;
    std::size_t low = from;
    std::size_t high = from + step;
    while (high < lexicon.wordCount() && lexicon.word(high).starts_with(beginning)) {
        low = high;
        step *= 2;
        high += step;
    }
    high = std::min(high, lexicon.wordCount());
    while (low + 1 < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (lexicon.word(middle).starts_with(beginning))
            low = middle;
        else
            high = middle;
    }
    return high;
}

}  // namespace

// The words are sorted, so that those with a common beginning stand together: once a beginning has
// too many slips, all of them are passed over.
std::vector<NearWord> nearWords(const docimage::Lexicon& lexicon, std::string_view word,
                                std::uint32_t admitted) {
    std::vector<NearWord> near;
    admitted = std::min<std::uint32_t>(admitted, most);
    if (admitted == 0 || word.empty() || word.size() > longestWord)
        return near;
    SlipTable table(word, admitted);
    std::string_view before;
    std::size_t filled = 0;
    for (std::size_t number = 0; number < lexicon.wordCount();) {
        const std::string_view text = lexicon.word(number);
        filled = std::min(filled, commonBeginning(before, text));
        before = text;
        const std::size_t length = std::min(text.size(), word.size() + admitted);
        bool isOpen = true;
        while (isOpen && filled < length) {
            ++filled;
            isOpen = table.fill(filled, text[filled - 1], filled > 1 ? text[filled - 2] : '\0');
        }
        if (!isOpen || text.size() > length) {
            // What begins like this is too far away, or too long.
            number = passOver(lexicon, number, text.substr(0, isOpen ? length + 1 : filled));
            filled = isOpen ? filled : filled - 1;
            continue;
        }
        if (const std::uint32_t slips = table.slips(text.size()); slips > 0 && slips <= admitted)
            near.push_back({.word = static_cast<std::uint32_t>(number), .slips = slips});
        ++number;
    }
    return near;
}

std::uint32_t slipsBetween(std::string_view a, std::string_view b, std::uint32_t admitted) {
    admitted = std::min<std::uint32_t>(admitted, most);
    if (a == b)
        return 0;
    if (admitted == 0 || a.empty() || a.size() > longestWord || b.size() > a.size() + admitted ||
        a.size() > b.size() + admitted)
        return admitted + 1;
    SlipTable table(a, admitted);
    for (std::size_t row = 1; row <= b.size(); ++row)
        if (!table.fill(row, b[row - 1], row > 1 ? b[row - 2] : '\0'))
            return admitted + 1;
    return std::min(table.slips(b.size()), admitted + 1);
}

}  // namespace reference::ask
