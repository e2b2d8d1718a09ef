// What is too large for a reader: refused with its measure, and nothing else is lost.
#include <cstddef>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>

#include "docset/ContainedFile.hpp"
#include "docset/JsonDocument.hpp"
#include "docset/Manifest.hpp"
#include "docset/ProductFileReader.hpp"
#include "docset/publish.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docset::Fault;
using docset::readLookupFile;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(LimitsTest, AFileIsReadUpToItsSize) {
    const TempFolder root;
    writeSet(root, soundSet());
    FaultList faults;
    // A hole: it takes no room on the disk.
    std::filesystem::resize_file(root.path() / lookupPath, docset::maxFileSize + 1);
    EXPECT_FALSE(readLookupFile(root.path(), lookupPath, faults.handler()));
    EXPECT_THAT(faults.all(),
                ElementsAre(Field(&Fault::problem, "The file is too large; at most " +
                                                       std::to_string(docset::maxFileSize) +
                                                       " bytes are read.")));
    EXPECT_FALSE(faults.all().front().mayPass);
}

// A number takes two bytes in the file and sixteen in memory.
TEST(LimitsTest, TheValuesOfAFileMayTakeSoMuchMemory) {
    std::string text = "[0";
    const std::size_t count = docset::maxDocumentMemory / 16;
    text.reserve(2 * count + 3);
    for (std::size_t number = 0; number < count; ++number)
        text += ",0";
    text += "]";
    const TempFolder root;
    root.write(lookupPath, text);
    FaultList faults;
    EXPECT_FALSE(readLookupFile(root.path(), lookupPath, faults.handler()));
    EXPECT_THAT(faults.all(),
                ElementsAre(Field(&Fault::problem, HasSubstr("take more than 1024 MiB"))));
    EXPECT_FALSE(faults.all().front().mayPass) << "it is as large at the next try";
}

TEST(LimitsTest, ASetHasSoManyLocales) {
    for (const std::size_t count : {1000U, 1001U, 1500U}) {
        std::string locales = "\"en_US\"";
        for (std::size_t number = 1; number < count; ++number)
            locales += ", \"l" + std::to_string(number) + "\"";
        const TempFolder root;
        root.write(manifestPath, replaced(soundSet().manifest, "\"en_US\", \"ja_JP\"", locales));
        FaultList faults;
        const auto manifest = docset::readManifest(root.path(), faults.handler());
        if (count > 1000)
            EXPECT_THAT(faults.all(), ElementsAre(Field(&Fault::problem, HasSubstr("up to 1000"))));
        else
            EXPECT_THAT(faults.all(), IsEmpty());
        ASSERT_TRUE(manifest);
        EXPECT_THAT(manifest->locales, SizeIs(1000));
        EXPECT_EQ(manifest->locales.back(), "l999");
        EXPECT_THAT(manifest->products, SizeIs(1));
    }
}

TEST(LimitsTest, ALocaleHasSoManyCharacters) {
    std::string ofFourBytes;
    for (int number = 0; number < 50; ++number)
        ofFourBytes += "\xF0\x9D\x84\x9E";
    for (const std::string& longest : {std::string(50, 'l'), ofFourBytes})
        for (const bool isTooLong : {false, true}) {
            const std::string locale = longest + (isTooLong ? "l" : "");
            const TempFolder root;
            root.write(manifestPath,
                       replaced(soundSet().manifest, "\"ja_JP\"", "\"" + locale + "\""));
            FaultList faults;
            const auto manifest = docset::readManifest(root.path(), faults.handler());
            ASSERT_TRUE(manifest);
            const auto product = makeProduct(u"other");
            if (isTooLong) {
                EXPECT_THAT(faults.all(), ElementsAre(Field(&Fault::problem,
                                                            HasSubstr("more than 50 characters"))));
                EXPECT_THAT(manifest->locales, ElementsAre("en_US"));
                EXPECT_THROW(docset::publishProduct(root.path(), locale, product),
                             docset::PublishError);
            } else {
                EXPECT_THAT(faults.all(), IsEmpty());
                EXPECT_THAT(manifest->locales, ElementsAre("en_US", locale));
                EXPECT_NO_THROW(docset::publishProduct(root.path(), locale, product));
            }
        }
}

TEST(LimitsTest, SoManyFaultsOfAFileHaveAPlace) {
    const TempFolder root;
    std::string products;
    for (int number = 0; number < 150; ++number)
        products += "7, ";
    root.write(manifestPath,
               replaced(soundSet().manifest, "\"products\": [", "\"products\": [" + products));
    FaultList faults;
    const auto manifest = docset::readManifest(root.path(), faults.handler());
    ASSERT_THAT(faults.all(), SizeIs(150));
    for (std::size_t number = 0; number < faults.all().size(); ++number) {
        const Fault& fault = faults.all()[number];
        EXPECT_EQ(fault.field, "products[" + std::to_string(number) + "]");
        EXPECT_EQ(fault.line != 0, number < 100) << number;
    }
    ASSERT_TRUE(manifest);
    EXPECT_THAT(manifest->products, SizeIs(1));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
