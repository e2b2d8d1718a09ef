// What people and programs send takes time that grows as it does, not with the square of its size.
#include <chrono>
#include <cstddef>
#include <fcntl.h>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "files/Descriptor.hpp"
#include "support/Growth.hpp"
#include "support/TempFolder.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/LineReader.hpp"

namespace reference::tools {
namespace VELTRA_TEST_FILE {

using tests::growsLinearly;

std::string repeated(std::string_view piece, std::size_t times) {
    std::string text;
    for (std::size_t each = 0; each < times; ++each)
        text += piece;
    return text;
}

TEST(LineGrowthTest, DividingALineIsLinear) {
    for (const std::string_view piece : {"a ", "\"", "\"a\" ", "\\\"", "-=\"", "=", " ", "a"}) {
        SCOPED_TRACE(piece);
        EXPECT_TRUE(growsLinearly(
            [&](std::size_t size) { static_cast<void>(splitLine(repeated(piece, size))); }));
        EXPECT_TRUE(growsLinearly(
            [&](std::size_t size) { static_cast<void>(splitLine("\"" + repeated(piece, size))); }));
    }
}

TEST(LineGrowthTest, FindingTheNameInPastedCodeIsLinear) {
    for (const std::string_view piece : {"a ", "=", "(", ">>>", " ", "."}) {
        SCOPED_TRACE(piece);
        EXPECT_TRUE(growsLinearly(
            [&](std::size_t size) { static_cast<void>(nameInPastedCode(repeated(piece, size))); }));
    }
}

TEST(LineGrowthTest, ReadingLinesIsLinear) {
    for (const std::string_view piece : {"\n", "a\n", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"}) {
        SCOPED_TRACE(piece);
        EXPECT_TRUE(growsLinearly(
            [&](std::size_t size) {
                const tests::TempFolder folder;
                folder.write("lines", repeated(piece, size));
                const files::Descriptor file(
                    ::open((folder.path() / "lines").c_str(), O_RDONLY | O_CLOEXEC));
                LineReader reader(file.number());
                while (reader.next(std::chrono::milliseconds(0)).state !=
                       LineReader::State::AtTheEnd) {
                }
            },
            {.smallest = 10'000, .largest = 400'000}));
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tools
