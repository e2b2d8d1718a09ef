#include <gtest/gtest.h>

#include "docset/Fault.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docset::Fault;

TEST(FaultTest, IsWrittenWithWhatIsKnownOfIt) {
    const std::string problem = "It is wrong.";
    EXPECT_EQ((Fault{.file = "a.json", .problem = problem}).toString(), "a.json: It is wrong.");
    EXPECT_EQ((Fault{.file = "a.json", .line = 3, .column = 14, .problem = problem}).toString(),
              "a.json:3:14: It is wrong.");
    EXPECT_EQ((Fault{.file = "a.json", .field = "locales[0]", .problem = problem}).toString(),
              "a.json: locales[0]: It is wrong.");
    EXPECT_EQ(
        (Fault{.file = "a.json", .line = 3, .column = 14, .field = "title", .problem = problem})
            .toString(),
        "a.json:3:14: title: It is wrong.");
}

TEST(FaultTest, IsOneLineWhateverStandsInIt) {
    EXPECT_EQ((Fault{.file = "a\nb.json", .field = "x\x1B[2J", .problem = "\x7F\r ü ~"}).toString(),
              R"(a\u000ab.json: x\u001b[2J: \u007f\u000d ü ~)");
}

TEST(FaultTest, WantOfMemoryMayPass) {
    const Fault fault = Fault::outOfMemory("a.json");
    EXPECT_EQ(fault.toString(), "a.json: There is not enough memory to read the file.");
    EXPECT_TRUE(fault.mayPass);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
