#include "sphinx/HtmlDocument.hpp"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <new>
#include <string>
#include <unordered_map>
#include <vector>

#include <gumbo.h>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {

// A stack of blocks that the parser allocates from. Blocks are not freed one by one: the parser
// frees a tree recursively, and a hostile page could make that overflow the call stack.
class HtmlArena::Storage {
  public:
    // With room to note as many blocks as there may be, so that noting one cannot fail.
    Storage() { m_blocks.reserve(maxSize / blockSize); }

    void* allocate(std::size_t size) {
        if (++m_allocations % 4096 == 0 && processorSeconds() > m_deadline)
            leave("Its elements are put together in a way that would take too long to parse.");
        constexpr std::size_t alignment = alignof(std::max_align_t);
        size = (size + alignment - 1) / alignment * alignment;
        while (m_current < m_blocks.size() && m_blocks[m_current].size - m_used < size) {
            ++m_current;
            m_used = 0;
        }
        if (m_current == m_blocks.size())
            addBlock(std::max(size, blockSize));
        std::byte* place = m_blocks[m_current].bytes.get() + m_used;
        m_used += size;
        return place;
    }

    // Makes all of the storage free for the next page, a text of that many bytes; most of the
    // memory is kept.
    void reset(std::size_t textSize = 0) {
        std::size_t kept = 0;
        std::size_t total = 0;
        while (kept < m_blocks.size() && total + m_blocks[kept].size <= keptSize)
            total += m_blocks[kept++].size;
        m_blocks.resize(kept);
        m_total = total;
        m_current = 0;
        m_used = 0;
        m_allocations = 0;
        m_deadline =
            processorSeconds() + leastSeconds + secondsForByte * static_cast<double>(textSize);
    }

    [[nodiscard]] std::jmp_buf& wayOut() noexcept { return m_wayOut; }

    // Why the way out was taken; null: the system has no more memory.
    [[nodiscard]] const char* problem() const noexcept { return m_problem; }

  private:
    struct Block {
        std::unique_ptr<std::byte[]> bytes;
        std::size_t size = 0;
    };
    static constexpr std::size_t blockSize = std::size_t{1} << 20U;
    static constexpr std::size_t keptSize = std::size_t{32} << 20U;
    static constexpr std::size_t maxSize = std::size_t{512} << 20U;
    // What makes the parser slow is found beforehand; this is for what was not thought of. It is
    // some fifty times what a page takes.
    static constexpr double leastSeconds = 5;
    static constexpr double secondsForByte = 2e-6;

    static double processorSeconds() {
        std::timespec now{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
    }

    // The parser, a C library, cannot handle a failed allocation, and no exception may pass through
    // it. Everything that it holds at this point lives in this storage.
    [[noreturn]] void leave(const char* problem) {
        m_problem = problem;
        std::longjmp(m_wayOut, 1);  // NOLINT(cert-err52-cpp)
    }

    void addBlock(std::size_t size) {
        if (size > maxSize - m_total)
            leave("Its tree would take more than 512 MiB of memory.");
        auto* const bytes = new (std::nothrow) std::byte[size];
        if (bytes == nullptr)
            leave(nullptr);
        m_blocks.push_back({std::unique_ptr<std::byte[]>(bytes), size});
        m_total += size;
    }

    std::vector<Block> m_blocks;
    std::size_t m_current = 0;
    std::size_t m_used = 0;
    std::size_t m_total = 0;
    std::size_t m_allocations = 0;
    double m_deadline = 0;
    const char* m_problem = "";
    std::jmp_buf m_wayOut{};
};

HtmlArena::HtmlArena() : m_storage(std::make_unique<Storage>()) {}
HtmlArena::~HtmlArena() = default;

namespace {

// Elements that have no end tag or whose end tag may be left out; the latter can be nested in one
// another only with other elements in between.
constexpr std::array uncountedTags = std::to_array<std::string_view>({
    "area",  "base",   "body", "br",    "col",  "colgroup", "dd",     "dt",
    "embed", "head",   "hr",   "html",  "img",  "input",    "li",     "link",
    "meta",  "option", "p",    "param", "path", "rect",     "source", "tbody",
    "td",    "tfoot",  "th",   "thead", "tr",   "track",    "use",    "wbr",
});

// Elements that stay in force when those around them end: only their own end tags take them back.
constexpr std::array formattingTags =
    std::to_array<std::string_view>({"a", "b", "big", "code", "em", "font", "i", "nobr", "s",
                                     "small", "strike", "strong", "tt", "u"});

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

// The elements that are open at one place of a page, as far as its tags tell.
class OpenElements {
  public:
    void open(const std::string& tag) {
        ++m_counts[tag];
        if (isFormatting(tag))
            ++m_formatting;
        else
            m_stack.push_back(tag);
    }

    // Ends all that was opened within the element, too. A stray end tag ends nothing.
    void close(const std::string& tag) {
        const auto found = m_counts.find(tag);
        if (found == m_counts.end() || found->second == 0)
            return;
        if (isFormatting(tag)) {
            --found->second;
            --m_formatting;
            return;
        }
        for (bool isReached = false; !isReached; m_stack.pop_back()) {
            --m_counts[m_stack.back()];
            isReached = m_stack.back() == tag;
        }
    }

    [[nodiscard]] std::size_t depth() const noexcept { return m_stack.size() + m_formatting; }

  private:
    static bool isFormatting(std::string_view tag) {
        return std::ranges::binary_search(formattingTags, tag);
    }

    std::vector<std::string> m_stack;
    std::size_t m_formatting = 0;
    std::unordered_map<std::string, std::size_t> m_counts;
};

std::string tooDeep() {
    return "Its elements stand more than " + std::to_string(HtmlDocument::maxDepth) +
           " deep within one another.";
}

// Where a tag ends and what of it counts.
struct TagEnd {
    std::size_t at = 0;  // the place of its '>', or the end of the text
    int attributes = 0;
    bool isComplete = false;  // "<br/>"
};

// `at`: where the tag's name ends. As HTML tokenizes tags: a value in quotes may hold anything.
TagEnd readTag(std::string_view text, std::size_t at) {
    constexpr std::string_view dividers = " \t\n\f\r/";
    TagEnd tag;
    while (at < text.size() && text[at] != '>') {
        if (dividers.find(text[at]) != std::string_view::npos) {
            ++at;
            continue;
        }
        ++tag.attributes;
        at = std::min(text.find_first_of(" \t\n\f\r/>=", at + 1), text.size());
        const std::size_t sign = text.find_first_not_of(" \t\n\f\r", at);
        if (sign == std::string_view::npos || text[sign] != '=')
            continue;
        at = std::min(text.find_first_not_of(" \t\n\f\r", sign + 1), text.size());
        if (at < text.size() && (text[at] == '"' || text[at] == '\''))
            at = std::min(text.find(text[at], at + 1), text.size() - 1) + 1;
        else
            at = std::min(text.find_first_of(" \t\n\f\r>", at), text.size());
    }
    tag.at = at;
    tag.isComplete = at > 0 && at < text.size() && text[at - 1] == '/';
    return tag;
}

// Where the text goes on after an element whose content is no markup.
std::size_t pastRawText(std::string_view text, std::size_t at, const std::string& tag) {
    for (at = text.find("</", at); at != std::string_view::npos; at = text.find("</", at + 2))
        if (lowered(text.substr(at + 2, tag.size())) == tag)
            return at;
    return text.size();
}

// Throws HtmlError where the parser would take too long for the text. It needs time that grows with
// the square of the depth, and of the number of attributes of one element, so both have to be found
// before parsing.
void requireQuickToParse(std::string_view text) {
    OpenElements elements;
    for (std::size_t at = text.find('<'); at < text.size(); at = text.find('<', at)) {
        if (text.substr(at).starts_with("<!--")) {
            at = std::min(text.find("-->", at + 4), text.size());
            continue;
        }
        ++at;
        const bool isEnd = at < text.size() && text[at] == '/';
        const std::size_t begin = at + (isEnd ? 1 : 0);
        std::size_t end = begin;
        while (end < text.size() && isNameCharacter(text[end]))
            ++end;
        if (end == begin)
            continue;
        const std::string name = lowered(text.substr(begin, end - begin));
        const TagEnd tag = readTag(text, end);
        at = tag.at;
        if (tag.attributes > HtmlDocument::maxAttributes)
            throw HtmlError("An element has more than " +
                            std::to_string(HtmlDocument::maxAttributes) + " attributes.");
        if (!isEnd && (name == "script" || name == "style"))
            at = pastRawText(text, at, name);
        if (tag.isComplete || std::ranges::binary_search(uncountedTags, name))
            continue;
        if (isEnd)
            elements.close(name);
        else
            elements.open(name);
        if (elements.depth() > static_cast<std::size_t>(HtmlDocument::maxDepth))
            throw HtmlError(tooDeep());
    }
}

// How many nodes the tree has. Throws HtmlError where it is deeper than `limit`.
std::size_t countNodes(Node root, int limit) {
    std::size_t count = 0;
    int depth = 0;
    for (Node node = root; node;) {
        ++count;
        if (const Node child = node.firstChild()) {
            if (++depth > limit)
                throw HtmlError(tooDeep());
            node = child;
            continue;
        }
        while (node && node != root && !node.nextSibling()) {
            node = node.parent();
            --depth;
        }
        node = node == root ? Node() : node.nextSibling();
    }
    return count;
}

// In a function of its own, without objects that have destructors, because a jump must not skip
// these. Null where the tree would be too large.
GumboOutput* parseWithin(const GumboOptions& options, std::jmp_buf& wayOut, const char* text,
                         std::size_t length) {
    if (setjmp(wayOut) != 0)  // NOLINT(cert-err52-cpp)
        return nullptr;
    return gumbo_parse_with_options(&options, text, length);
}

}  // namespace

HtmlDocument::HtmlDocument(HtmlArena& arena, std::string_view text) : m_arena(arena) {
    requireQuickToParse(text);
    m_arena.m_storage->reset(text.size());
    GumboOptions options = kGumboDefaultOptions;
    options.userdata = m_arena.m_storage.get();
    options.allocator = [](void* storage, std::size_t size) {
        return static_cast<HtmlArena::Storage*>(storage)->allocate(size);
    };
    options.deallocator = [](void*, void*) {};
    options.max_errors = 0;
    const GumboOutput* output =
        parseWithin(options, m_arena.m_storage->wayOut(), text.data(), text.size());
    if (output == nullptr) {
        const char* const problem = m_arena.m_storage->problem();
        m_arena.m_storage->reset();
        if (problem == nullptr)
            throw std::bad_alloc();
        throw HtmlError(problem);
    }
    m_root = Node(output->root);
    m_steps.emplace(countNodes(m_root, maxDepth) * maxStepsForNode);
}

HtmlDocument::~HtmlDocument() {
    m_arena.m_storage->reset();
}

}  // namespace reference::importers::sphinx
