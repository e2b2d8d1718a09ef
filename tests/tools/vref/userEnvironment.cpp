// What the person who runs the tests has set for the tool does not reach the tool that they run.
#include <cstdlib>

#include <gtest/gtest.h>

namespace reference::tests {
namespace {

class UserEnvironment final : public ::testing::Environment {
  public:
    void SetUp() override {
        for (const char* variable :
             {"VELTRA_DOC_ROOT", "VELTRA_LOG", "NO_COLOR", "PAGER", "LESS", "HOME",
              "XDG_CONFIG_HOME", "LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"})
            ::unsetenv(variable);
    }
};

// googletest owns and deletes it.
const auto* const registered = ::testing::AddGlobalTestEnvironment(new UserEnvironment);

}  // namespace
}  // namespace reference::tests
