// What an import gives where an allocation fails.
#include <exception>
#include <new>

#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/ImportTree.hpp"
#include "support/LiveAllocations.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using importers::sphinx::importTree;

// A page that is left out for want of memory would be missing for good, and without a fault of its
// own.
TEST(ImportMemoryTest, IsWholeOrEndsWhicheverAllocationFails) {
    BuiltTree tree;
    tree.object("f", "py:function", "f.html#f")
        .object("g", "py:function", "g.html#g")
        .page("f.html", described("py", "function", "f", "f(x)", "<p>The first.</p>"))
        .page("g.html", described("py", "function", "g", "g(x)", "<p>The second.</p>"));
    const auto right = tree.import().documentation;
    auto options = tree.options();
    options.threads = 1;
    long ended = 0;
    bool reached = true;
    for (long number = 1; reached; ++number) {
        const FailingAllocation failing(number);
        try {
            const auto result = importTree(options);
            reached = FailingAllocation::hasFailed();
            ASSERT_EQ(result.documentation, right) << "where allocation " << number << " fails";
        } catch (const std::bad_alloc&) {
            ++ended;
        }
    }
    EXPECT_GT(ended, 100);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
