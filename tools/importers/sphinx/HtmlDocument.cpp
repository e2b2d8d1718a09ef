#include "sphinx/HtmlDocument.hpp"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include <gumbo.h>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {

// A stack of blocks that the parser allocates from. Blocks are not freed one by one: the parser
// frees a tree recursively, and a hostile page could make that overflow the call stack.
class HtmlArena::Storage {
  public:
    void* allocate(std::size_t size) {
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

    // Makes all of the storage free for the next page; most of the memory is kept.
    void reset() {
        std::size_t kept = 0;
        std::size_t total = 0;
        while (kept < m_blocks.size() && total + m_blocks[kept].size <= keptSize)
            total += m_blocks[kept++].size;
        m_blocks.resize(kept);
        m_total = total;
        m_current = 0;
        m_used = 0;
    }

    [[nodiscard]] std::jmp_buf& wayOut() noexcept { return m_wayOut; }

  private:
    struct Block {
        std::unique_ptr<std::byte[]> bytes;
        std::size_t size = 0;
    };
    static constexpr std::size_t blockSize = std::size_t{1} << 20U;
    static constexpr std::size_t keptSize = std::size_t{32} << 20U;
    static constexpr std::size_t maxSize = std::size_t{512} << 20U;

    void addBlock(std::size_t size) {
        // The parser, a C library, cannot handle a failed allocation, and no exception may pass
        // through it. Everything that it holds at this point lives in this storage.
        if (size > maxSize - m_total)
            std::longjmp(m_wayOut, 1);  // NOLINT(cert-err52-cpp)
        m_blocks.push_back({std::unique_ptr<std::byte[]>(new std::byte[size]), size});
        m_total += size;
    }

    std::vector<Block> m_blocks;
    std::size_t m_current = 0;
    std::size_t m_used = 0;
    std::size_t m_total = 0;
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

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

// Whether start tags outnumber end tags by more than `limit` anywhere. The parser needs time that
// grows with the square of the depth, so a page that is too deep has to be found before parsing.
bool looksDeeperThan(std::string_view text, int limit) {
    int depth = 0;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at)) {
        ++at;
        const bool isEnd = at < text.size() && text[at] == '/';
        const std::size_t begin = at + (isEnd ? 1 : 0);
        std::size_t end = begin;
        while (end < text.size() && isNameCharacter(text[end]))
            ++end;
        if (end == begin)
            continue;
        const std::size_t close = text.find('>', end);
        const bool isComplete = close != std::string_view::npos && text[close - 1] == '/';
        if (isComplete ||
            std::ranges::binary_search(uncountedTags, lowered(text.substr(begin, end - begin))))
            continue;
        depth = isEnd ? std::max(0, depth - 1) : depth + 1;
        if (depth > limit)
            return true;
    }
    return false;
}

bool isDeeperThan(Node root, int limit) {
    int depth = 0;
    for (Node node = root; node;) {
        if (const Node child = node.firstChild()) {
            if (++depth > limit)
                return true;
            node = child;
            continue;
        }
        while (node && node != root && !node.nextSibling()) {
            node = node.parent();
            --depth;
        }
        node = node == root ? Node() : node.nextSibling();
    }
    return false;
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
    const std::string depthProblem =
        "Its elements stand more than " + std::to_string(maxDepth) + " deep within one another.";
    if (looksDeeperThan(text, maxDepth))
        throw HtmlError(depthProblem);
    m_arena.m_storage->reset();
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
        m_arena.m_storage->reset();
        throw HtmlError("Its tree would take more than 512 MiB of memory.");
    }
    m_root = Node(output->root);
    if (isDeeperThan(m_root, maxDepth))
        throw HtmlError(depthProblem);
}

HtmlDocument::~HtmlDocument() {
    m_arena.m_storage->reset();
}

}  // namespace reference::importers::sphinx
