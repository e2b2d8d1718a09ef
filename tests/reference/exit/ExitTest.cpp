// What the library is to those who use it while the process exits.
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

struct Outcome {
    int status = 0;
    std::string output;
};

// Runs a program by the shell, with what it says taken to a file.
Outcome run(const std::string& command) {
    const TempFolder folder;
    const std::string file = (folder.path() / "output").string();
    Outcome outcome{.status = std::system((command + " >" + file + " 2>&1").c_str()), .output = {}};
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    outcome.output = text.str();
    if (outcome.output.size() > 4000)
        outcome.output.erase(0, outcome.output.size() - 4000);
    return outcome;
}

// A hundred exits: how far each thread has got when main() returns differs.
void exitManyTimes(const std::string& environment, const std::string& documentation) {
    for (int microseconds = 0; microseconds < 100 * 150; microseconds += 150) {
        const Outcome outcome = run(environment + " '" VELTRA_WORKING_THREADS "' '" +
                                    documentation + "' " + std::to_string(microseconds));
        ASSERT_EQ(outcome.status, 0) << "after " << microseconds << " microseconds of work\n"
                                     << outcome.output;
    }
}

TEST(ExitTest, ThreadsMayUseTheLibraryWhileTheProcessExits) {
    exitManyTimes("", "memory");
}

TEST(ExitTest, ThreadsMayReadDocumentationFromDiskAndLogWhileTheProcessExits) {
    exitManyTimes("VELTRA_LOG='*=32'", VELTRA_SHIPPED_SET);
}

TEST(ExitTest, AStaticObjectIsAnsweredRightlyByALibraryThatWasLoadedLater) {
    const Outcome outcome = run("'" VELTRA_ASK_AT_EXIT "' '" VELTRA_ASKED_AT_EXIT "'");
    EXPECT_EQ(outcome.status, 0) << outcome.output;
}

TEST(ExitTest, TheLibraryMayBeUnloadedAndLoadedAgain) {
    const Outcome outcome = run("'" VELTRA_ASK_AT_EXIT "' '" VELTRA_ASKED_AT_EXIT "' again");
    EXPECT_EQ(outcome.status, 0) << outcome.output;
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
