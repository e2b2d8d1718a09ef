#include "reference/ask/nearWords.hpp"

#include <algorithm>
#include <array>
#include <span>
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
    // In the first `limitedRows` rows, one slip less is admitted.
    SlipTable(std::string_view wanted, std::uint32_t admitted, std::size_t limitedRows = 0)
        : m_wanted(wanted), m_admitted(admitted), m_limitedRows(limitedRows) {
        for (std::size_t column = 0; column <= wanted.size(); ++column)
            m_rows[0][column] = static_cast<std::uint8_t>(std::min(column, most + 1));
    }

    // Fills row `row` for a word whose letter before it is `letter` and whose one before that is
    // `previous`. Returns whether a word that goes on from here can still be near.
    bool fill(std::size_t row, char letter, char previous) {
        // A row has a column for each letter of the longest word that is admitted, so that only
        // rows are checked: this is what spelling spends its time in.
        std::uint8_t* const now = m_rows[row].data();
        const std::uint8_t* const before = m_rows[row - 1].data();
        const char* const letters = m_wanted.data();
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
                const char wanted = letters[column - 1];
                unsigned slips = before[column - 1] + (wanted == letter ? 0U : 1U);
                if (column < row + m_admitted)
                    slips = std::min(slips, before[column] + 1U);
                if (column > first)
                    slips = std::min(slips, now[column - 1] + 1U);
                if (row > 1 && column > 1 && wanted == previous && letters[column - 2] == letter)
                    slips = std::min(slips, m_rows[row - 2][column - 2] + 1U);
                now[column] = static_cast<std::uint8_t>(std::min<unsigned>(slips, tooMany));
            }
            best = std::min(best, now[column]);
        }
        if (last < m_wanted.size())
            now[last + 1] = tooMany;
        // Two letters that are exchanged with the next may count less in the row after it.
        return best <= admittedIn(row) || (row > 1 && wasOpen(row - 1));
    }

    // The slips for a word of `length` letters, all of whose rows are filled.
    [[nodiscard]] std::uint32_t slips(std::size_t length) const {
        const std::size_t apart =
            length > m_wanted.size() ? length - m_wanted.size() : m_wanted.size() - length;
        return apart > m_admitted ? m_admitted + 1 : m_rows[length][m_wanted.size()];
    }

  private:
    [[nodiscard]] std::uint32_t admittedIn(std::size_t row) const noexcept {
        return row <= m_limitedRows ? m_admitted - 1 : m_admitted;
    }
    // Whether the row has a number that an exchange may go on from.
    [[nodiscard]] bool wasOpen(std::size_t row) const {
        const std::size_t first = row > m_admitted ? row - m_admitted : 0;
        const std::size_t last = std::min(m_wanted.size(), row + m_admitted);
        for (std::size_t column = first; column <= last; ++column)
            if (m_rows[row][column] < admittedIn(row + 1))
                return true;
        return false;
    }

    const std::string_view m_wanted;
    const std::uint32_t m_admitted;
    const std::size_t m_limitedRows;
    std::array<std::array<std::uint8_t, longestWord + most + 2>, longestWord + most + 2> m_rows;
};

// The words of a lexicon in their order, read from the first letter to the last.
class Forward {
  public:
    explicit Forward(const docimage::Lexicon& lexicon) : m_lexicon(lexicon) {}

    [[nodiscard]] std::size_t size() const { return m_lexicon.wordCount(); }
    [[nodiscard]] std::uint32_t number(std::size_t at) const {
        return static_cast<std::uint32_t>(at);
    }
    [[nodiscard]] std::string_view word(std::size_t at) const { return m_lexicon.word(at); }
    static char letter(std::string_view word, std::size_t at) { return word[at]; }
    // Whether the two agree in so many letters; `word` may be shorter.
    static bool agree(std::string_view word, std::string_view other, std::size_t letters) {
        return word.starts_with(other.substr(0, letters));
    }

  private:
    const docimage::Lexicon& m_lexicon;
};

// The same in the order of their ends, read from the last letter to the first.
class Backward {
  public:
    explicit Backward(const docimage::Lexicon& lexicon)
        : m_lexicon(lexicon), m_order(lexicon.byEnds()) {}

    [[nodiscard]] std::size_t size() const { return m_order.size(); }
    [[nodiscard]] std::uint32_t number(std::size_t at) const { return m_order[at]; }
    [[nodiscard]] std::string_view word(std::size_t at) const {
        return m_lexicon.word(m_order[at]);
    }
    static char letter(std::string_view word, std::size_t at) { return word[word.size() - 1 - at]; }
    static bool agree(std::string_view word, std::string_view other, std::size_t letters) {
        return word.ends_with(other.substr(other.size() - letters));
    }

  private:
    const docimage::Lexicon& m_lexicon;
    const std::span<const std::uint32_t> m_order;
};

// The first word from `from` on that does not agree with the one there in so many letters, in steps
// that double.
template <typename Order>
std::size_t passOver(const Order& order, std::size_t from, std::size_t letters) {
    const std::string_view word = order.word(from);
    std::size_t step = 1;
    std::size_t low = from;
    std::size_t high = from + step;
    while (high < order.size() && Order::agree(order.word(high), word, letters)) {
        low = high;
        step *= 2;
        high += step;
    }
    high = std::min(high, order.size());
    while (low + 1 < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (Order::agree(order.word(middle), word, letters))
            low = middle;
        else
            high = middle;
    }
    return high;
}

// Those with a common beginning stand together: once a beginning has too many slips, all of them
// are passed over.
template <typename Order>
void addNear(const Order& order, SlipTable& table, std::size_t length, std::uint32_t admitted,
             std::vector<NearWord>& near) {
    std::string_view before;
    std::size_t filled = 0;
    for (std::size_t at = 0; at < order.size();) {
        const std::string_view text = order.word(at);
        std::size_t common = 0;
        while (common < std::min({filled, before.size(), text.size()}) &&
               Order::letter(before, common) == Order::letter(text, common))
            ++common;
        filled = common;
        before = text;
        const std::size_t longest = std::min(text.size(), length + admitted);
        bool isOpen = true;
        while (isOpen && filled < longest) {
            ++filled;
            isOpen = table.fill(filled, Order::letter(text, filled - 1),
                                filled > 1 ? Order::letter(text, filled - 2) : '\0');
        }
        if (!isOpen || text.size() > longest) {
            // What begins like this is too far away, or too long.
            at = passOver(order, at, isOpen ? longest + 1 : filled);
            filled = isOpen ? filled : filled - 1;
            continue;
        }
        if (const std::uint32_t slips = table.slips(text.size()); slips > 0 && slips <= admitted)
            near.push_back({.word = order.number(at), .slips = slips});
        ++at;
    }
}

}  // namespace

// If a word is near, then one of its halves has a slip less than it has altogether, and most words
// are passed over after a few letters of that half. So they are gone through twice, from their
// beginnings and from their ends. The letters in the middle belong to no half, because two that are
// exchanged there would be a slip in both.
std::vector<NearWord> nearWords(const docimage::Lexicon& lexicon, std::string_view word,
                                std::uint32_t admitted) {
    std::vector<NearWord> near;
    admitted = std::min<std::uint32_t>(admitted, most);
    if (admitted == 0 || word.empty() || word.size() > longestWord)
        return near;
    // Letters of a half that may be missing from a word are not counted.
    const auto rowsOf = [admitted](std::size_t half) {
        return half > admitted ? half - admitted : 0;
    };
    const std::size_t half = word.size() / 2;
    if (lexicon.byEnds().empty()) {
        SlipTable table(word, admitted);
        addNear(Forward(lexicon), table, word.size(), admitted, near);
        return near;
    }
    SlipTable table(word, admitted, rowsOf(half));
    addNear(Forward(lexicon), table, word.size(), admitted, near);
    const std::string reversed(word.rbegin(), word.rend());
    SlipTable reversedTable(reversed, admitted, rowsOf(word.size() - half));
    addNear(Backward(lexicon), reversedTable, word.size(), admitted, near);
    std::ranges::sort(near, {}, &NearWord::word);
    near.erase(std::unique(near.begin(), near.end(),
                           [](const NearWord& a, const NearWord& b) { return a.word == b.word; }),
               near.end());
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
