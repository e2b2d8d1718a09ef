#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "vref/ProgressBar.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

TEST(ProgressBarTest, ElsewhereThanOnATerminalWritesALineEachTenth) {
    std::ostringstream out;
    const Terminal terminal(false, false, 80);
    {
        ProgressBar bar(out, terminal, "work");
        for (std::size_t done = 0; done <= 20; ++done)
            bar.update(done, 20);
    }
    std::string expected;
    for (std::size_t done = 2; done <= 20; done += 2)
        expected += "work: " + std::to_string(done) + " of 20\n";
    EXPECT_EQ(out.str(), expected);
}

TEST(ProgressBarTest, OnATerminalDrawsOverItselfAndTidiesUp) {
    std::ostringstream out;
    const Terminal terminal(true, false, 40);
    {
        ProgressBar bar(out, terminal, "work");
        bar.update(0, 10);
        bar.update(10, 10);
    }
    EXPECT_EQ(out.str(), "\rwork [" + std::string(27, ' ') + "] 0/10\033[K" + "\rwork [" +
                             std::string(26, '=') + "] 10/10\033[K" + "\r\033[K");
}

TEST(ProgressBarTest, WithoutWorkSaysNothing) {
    std::ostringstream out;
    const Terminal terminal(true, false, 40);
    {
        ProgressBar bar(out, terminal, "work");
        bar.update(0, 0);
    }
    EXPECT_EQ(out.str(), "");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
