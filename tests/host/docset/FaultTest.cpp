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

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
