// What a set is after its publisher was stopped, and after several published at once.
#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gmock/gmock.h>

#include "docset/Manifest.hpp"
#include "docset/publish.hpp"
#include "docset/validate.hpp"
#include "fl/i18n/utf.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using docset::publishProduct;

constexpr std::size_t functions = 500;

// Publishes in a process of its own, which ends with status 0 when that has succeeded.
::pid_t publishInChild(const fs::path& root, const docset::ProductDocumentation& product) {
    const ::pid_t child = ::fork();
    if (child != 0)
        return child;
    try {
        publishProduct(root, "en_US", product);
    } catch (...) {
        ::_exit(1);
    }
    ::_exit(0);
}

// Waits for a child and tells whether it was killed; fails the test when it failed by itself.
bool wasKilled(::pid_t child) {
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    if (WIFSIGNALED(status))
        return true;
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the publisher failed";
    return false;
}

// How long a publication of `product` takes when nobody stops it.
std::chrono::microseconds timeToPublish(const docset::ProductDocumentation& product) {
    const TempFolder root;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(wasKilled(publishInChild(root.path(), product)));
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                 start);
}

TEST(PublishKillTest, AReaderFindsTheOldProductOrTheNewOneWhole) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    constexpr int rounds = 100;
    const TempFolder root;
    publishProduct(root.path(), "en_US", makeProduct(u"neighbour"));
    publishProduct(root.path(), "en_US", makeProduct(u"big", u"start", functions));
    const auto longest = timeToPublish(makeProduct(u"big", u"timed", functions)).count() * 5 / 4;
    std::uniform_int_distribution<std::chrono::microseconds::rep> delays(0, longest);

    std::string old = "start";
    int kills = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::string next = "edition " + std::to_string(round);
        const ::pid_t child =
            publishInChild(root.path(), makeProduct(u"big", fl::i18n::toUtf16(next), functions));
        const std::chrono::microseconds delay(delays(random));
        std::this_thread::sleep_for(delay);
        ::kill(child, SIGKILL);
        const bool killed = wasKilled(child);
        kills += killed ? 1 : 0;

        SCOPED_TRACE(next + ", killed after " + std::to_string(delay.count()) + " us");
        ASSERT_EQ(dump(docset::validate(root.path()).faults), "");
        const auto product = readProduct(root.path(), u"big");
        ASSERT_TRUE(product);
        const std::string found = editionOf(*product);
        ASSERT_TRUE(found == next || (killed && found == old)) << found << " after " << old;
        ASSERT_EQ(*product, makeProduct(u"big", fl::i18n::toUtf16(found), functions));
        ASSERT_EQ(readProduct(root.path(), u"neighbour"), makeProduct(u"neighbour"));
        old = found;
    }
    EXPECT_GT(kills, 0) << "no publisher was stopped in time";
}

TEST(PublishKillTest, AFirstPublicationThatWasStoppedMayBeRepeated) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto product = makeProduct(u"big", u"first", functions);
    const auto longest = timeToPublish(product).count();
    std::uniform_int_distribution<std::chrono::microseconds::rep> delays(0, longest);
    for (int round = 0; round < 25; ++round) {
        const TempFolder root;
        const ::pid_t child = publishInChild(root.path(), product);
        const std::chrono::microseconds delay(delays(random));
        std::this_thread::sleep_for(delay);
        ::kill(child, SIGKILL);
        static_cast<void>(wasKilled(child));
        SCOPED_TRACE("killed after " + std::to_string(delay.count()) + " us");
        if (fs::exists(root.path() / manifestPath)) {
            ASSERT_EQ(readProduct(root.path(), u"big"), product);
        }
        ASSERT_NO_THROW(publishProduct(root.path(), "en_US", makeProduct(u"big", u"again")));
        ASSERT_EQ(readProduct(root.path(), u"big"), makeProduct(u"big", u"again"));
    }
}

std::u16string productName(int number) {
    return u"product" + fl::i18n::toUtf16(std::to_string(number));
}

void expectAllThere(const fs::path& root, int count) {
    EXPECT_EQ(dump(docset::validate(root).faults), "");
    for (int number = 0; number < count; ++number)
        EXPECT_EQ(readProduct(root, productName(number)), makeProduct(productName(number), u"last"))
            << number;
}

TEST(PublishConcurrencyTest, ThreadsThatPublishDifferentProductsAllSucceed) {
    const TempFolder root;
    constexpr int count = 4;
    std::vector<std::thread> threads;
    threads.reserve(count);
    for (int number = 0; number < count; ++number)
        threads.emplace_back([&root, number] {
            for (const char16_t* edition : {u"1", u"2", u"3", u"last"})
                EXPECT_NO_THROW(publishProduct(root.path(), "en_US",
                                               makeProduct(productName(number), edition)));
        });
    for (auto& thread : threads)
        thread.join();
    expectAllThere(root.path(), count);
}

TEST(PublishConcurrencyTest, ProcessesThatPublishDifferentProductsAllSucceed) {
    for (int round = 0; round < 10; ++round) {
        const TempFolder root;
        constexpr int count = 4;
        std::vector<::pid_t> children;
        children.reserve(count);
        for (int number = 0; number < count; ++number)
            children.push_back(
                publishInChild(root.path(), makeProduct(productName(number), u"last")));
        for (const ::pid_t child : children)
            EXPECT_FALSE(wasKilled(child));
        expectAllThere(root.path(), count);
    }
}

TEST(PublishConcurrencyTest, AReaderFindsEachManifestWholeWhileTheSetGrows) {
    const TempFolder root;
    publishProduct(root.path(), "en_US", makeProduct(productName(0)));
    std::atomic<bool> done{false};
    std::atomic<int> broken{0};
    std::vector<std::thread> readers;
    readers.reserve(2);
    for (int reader = 0; reader < 2; ++reader)
        readers.emplace_back([&] {
            std::size_t before = 1;
            while (!done) {
                const auto manifest =
                    docset::readManifest(root.path(), [&](const docset::Fault&) { ++broken; });
                if (!manifest || manifest->products.size() < before)
                    ++broken;
                else
                    before = manifest->products.size();
            }
        });
    for (int number = 1; number < 80; ++number)
        publishProduct(root.path(), "en_US", makeProduct(productName(number), u"last", 0));
    done = true;
    for (auto& reader : readers)
        reader.join();
    EXPECT_EQ(broken, 0);
}

TEST(PublishConcurrencyTest, AReaderNeverSeesASetInTheMaking) {
    const TempFolder root;
    publishProduct(root.path(), "en_US", makeProduct(u"demo", u"0", 20));
    std::thread publisher([&root] {
        for (int edition = 1; edition < 30; ++edition)
            publishProduct(root.path(), "en_US",
                           makeProduct(u"demo", fl::i18n::toUtf16(std::to_string(edition)), 20));
    });
    // A reader that reads the manifest again may still lose its files to the second update after
    // it.
    int read = 0;
    while (read < 30) {
        docset::ValidationReport report = docset::validate(root.path());
        if (report.faults.empty()) {
            EXPECT_EQ(report.entities, 22U);
            ++read;
        }
        for (const auto& fault : report.faults)
            EXPECT_EQ(fault.line, 0U) << "what is read is sound: " << fault.toString();
    }
    publisher.join();
    EXPECT_EQ(readProduct(root.path(), u"demo"), makeProduct(u"demo", u"29", 20));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
