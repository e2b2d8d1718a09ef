#include <filesystem>
#include <functional>
#include <string>

#include <gmock/gmock.h>

#include "docset/publish.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using docset::publishProduct;
using docset::requirePublishable;

// Why the call is refused; empty when it is not.
std::string refusal(const std::function<void()>& call) {
    try {
        call();
        return {};
    } catch (const docset::PublishError& error) {
        return error.what();
    }
}

TEST(RequirePublishableTest, AdmitsNewSetsAndSoundOnesAndMakesNothing) {
    const TempFolder folder;
    fs::create_directory(folder.path() / "empty");
    for (const char* name : {"empty", "missing", "deep/er/missing"})
        EXPECT_NO_THROW(requirePublishable(folder.path() / name, "en_US", u"demo")) << name;
    EXPECT_TRUE(fs::is_empty(folder.path() / "empty"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);

    publishProduct(folder.path() / "set", "en_US", makeProduct(u"demo"));
    EXPECT_NO_THROW(requirePublishable(folder.path() / "set", "ja_JP", u"other"));
}

TEST(RequirePublishableTest, RefusesWhatPublishingRefusesInTheSameWords) {
    const TempFolder folder;
    folder.write("file", "text");
    folder.write("letters/letter.txt", "Dear aunt");
    folder.write("faulty/documentation-set.json", "{");
    struct Row {
        std::string root;
        std::string locale;
        std::u16string shortName;
    };
    const Row rows[] = {
        {"letters", "en_US", u"demo"}, {"faulty", "en_US", u"demo"}, {"new", "..", u"demo"},
        {"new", "en/US", u"demo"},     {"new", "en_US", u""},
    };
    for (const auto& row : rows) {
        const fs::path root = folder.path() / row.root;
        const std::string early =
            refusal([&] { requirePublishable(root, row.locale, row.shortName); });
        EXPECT_NE(early, "") << root;
        EXPECT_EQ(early,
                  refusal([&] { publishProduct(root, row.locale, makeProduct(row.shortName)); }));
    }
    for (const char* name : {"file", "file/below", "file/deep/er"})
        EXPECT_THAT(refusal([&] { requirePublishable(folder.path() / name, "en_US", u"demo"); }),
                    testing::HasSubstr("is no folder"))
            << name;
    EXPECT_FALSE(fs::exists(folder.path() / "new"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
