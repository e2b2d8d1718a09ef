#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "BuiltTree.hpp"
#include "sphinx/ImportTree.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using tests::BuiltTree;
using tests::described;

constexpr std::size_t pageCount = 60;

// Sixty pages of a class with a method, every seventh of them missing.
void fill(BuiltTree& tree) {
    for (std::size_t each = 0; each < pageCount; ++each) {
        const std::string name = "pkg.C" + std::to_string(each);
        const std::string page = "ref/" + name + ".html";
        tree.object(name, "py:class", page + "#$").object(name + ".m", "py:method", page + "#$");
        if (each % 7 != 0)
            tree.page(page, described("py", "class", name, "C()",
                                      "<p>Class.</p>" + described("py", "method", name + ".m",
                                                                  "m()", "<p>Method.</p>")));
    }
}

TEST(ImportConcurrencyTest, DoesNotChangeTheResult) {
    BuiltTree tree;
    fill(tree);
    const ImportResult one = tree.import();
    for (const unsigned threads : {0U, 2U, 8U, 100U}) {
        ImportOptions options = tree.options();
        options.threads = threads;
        const ImportResult many = importTree(options);
        EXPECT_TRUE(many.documentation == one.documentation) << threads;
        EXPECT_EQ(many.report.faults, one.report.faults) << threads;
        EXPECT_EQ(many.report.undescribed, one.report.undescribed) << threads;
    }
}

TEST(ImportConcurrencyTest, ReportsProgressPageByPage) {
    BuiltTree tree;
    fill(tree);
    static_cast<void>(tree.import());
    ImportOptions options = tree.options();
    options.threads = 4;
    std::vector<std::size_t> calls;
    options.progress = [&](std::size_t done, std::size_t total) {
        EXPECT_EQ(total, pageCount);
        calls.push_back(done);
    };
    static_cast<void>(importTree(options));
    ASSERT_EQ(calls.size(), pageCount);
    for (std::size_t each = 0; each < pageCount; ++each)
        EXPECT_EQ(calls[each], each + 1);
}

TEST(ImportConcurrencyTest, HandsOnWhatProgressThrows) {
    BuiltTree tree;
    fill(tree);
    static_cast<void>(tree.import());
    ImportOptions options = tree.options();
    options.threads = 4;
    options.progress = [](std::size_t, std::size_t) { throw std::logic_error("enough"); };
    EXPECT_THROW(static_cast<void>(importTree(options)), std::logic_error);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
