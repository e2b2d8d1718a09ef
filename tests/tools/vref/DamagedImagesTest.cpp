// The tool over a documentation set whose images are damaged says what it says over a sound one.
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "RunningTool.hpp"
#include "docset/publish.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"
#include "support/WholeFiles.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using property::RefEntityType;
using testing::HasSubstr;
using testing::IsEmpty;

// Everything but the headers and the first blocks, which are looked at when an image is opened.
void damageImages(const fs::path& root) {
    for (const auto& entry : fs::recursive_directory_iterator(root))
        if (entry.path().extension() == ".image")
            damageFrom(8192, entry.path());
}

TEST(DamagedImagesTest, EveryCommandAnswersFromTheFiles) {
    const TempFolder folder;
    ProductBuilder product(u"p");
    product.classWith(u"geo.Shape", u"geo", u"Shape.html", {{u"Size", {u"Width", u"Height"}}})
        .entity(u"fit", RefEntityType::Function, u"fit.html", u"Fits a curve");
    for (char16_t letter = u'a'; letter <= u'z'; ++letter)
        for (char16_t other = u'a'; other <= u'z'; ++other)
            product.entity(std::u16string{u'g', letter, other}, RefEntityType::Function,
                           std::u16string{letter, other}, std::u16string{u'G', other});
    docset::publishProduct(folder.path(), "en_US", product.build());
    const std::string root = folder.path().string();
    const std::vector<std::vector<std::string>> commands = {
        {"find", "fit", "--doc-root", root},
        {"find", "--search", "text", "curve", "--doc-root", root},
        {"find", "--search", "page", "Shape.html", "--doc-root", root},
        {"show", "Shape", "--doc-root", root},
        {"products", "--doc-root", root}};
    std::vector<std::string> outputs;
    for (const auto& command : commands) {
        const ToolRun run = runTool(command);
        EXPECT_EQ(run.status, 0) << run.messages;
        EXPECT_THAT(run.messages, IsEmpty());
        outputs.push_back(run.output);
    }
    damageImages(folder.path());
    for (std::size_t at = 0; at < commands.size(); ++at) {
        const ToolRun run = runTool(commands[at]);
        EXPECT_EQ(run.status, 0) << run.messages;
        EXPECT_EQ(run.output, outputs[at]);
        EXPECT_THAT(run.messages, HasSubstr("The image is damaged in its block"));
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
