// Imports that are killed at any moment, under a running session and under fresh processes.
#include <chrono>
#include <csignal>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/process.hpp>
#include <gtest/gtest.h>

#include "BuiltGadgets.hpp"
#include "RunningSession.hpp"
#include "RunningTool.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
namespace process = boost::process;
using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr std::size_t functions = 120;

// The purpose that all results have; throws unless all are there and of one edition.
std::string editionOf(const json::array& results) {
    std::set<std::string> editions;
    for (const auto& result : results)
        editions.emplace(result.at("purpose").as_string());
    if (results.size() != functions || editions.size() != 1)
        throw std::runtime_error("of " + std::to_string(results.size()) + " results there are " +
                                 std::to_string(editions.size()) + " editions");
    return *editions.begin();
}

class WatchKillTest : public ::testing::Test {
  protected:
    WatchKillTest() {
        for (std::size_t edition = 0; edition < std::size(m_trees); ++edition)
            writeGadgets(m_trees[edition], static_cast<int>(functions), purposeOf(edition));
    }

    static std::string purposeOf(std::size_t edition) {
        return "Edition " + std::to_string(edition) + ".";
    }

    // Begins to import the edition in a process of its own.
    [[nodiscard]] process::child import(std::size_t edition) const {
        return process::child(process::exe = VELTRA_VREF,
                              process::args = {"import", "sphinx", m_trees[edition].path().string(),
                                               "--product", "gadgets", "--into", root()},
                              process::std_out > process::null, process::std_err > process::null);
    }

    [[nodiscard]] std::string editionFoundAnew() const {
        return editionOf(
            runTool({"find", "--all", "--product", "gadgets", "--json", "--doc-root", root()})
                .json());
    }

    [[nodiscard]] std::string root() const { return (m_set.path() / "set").string(); }

  private:
    TempFolder m_trees[2];
    TempFolder m_set;
};

TEST_F(WatchKillTest, SessionAndFreshProcessesFindTheOldProductOrTheNewOneWhole) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    constexpr int rounds = 60;

    const auto start = Clock::now();
    auto first = import(0);
    first.wait();
    ASSERT_EQ(first.exit_code(), 0);
    const auto longest = std::chrono::duration_cast<microseconds>(Clock::now() - start) * 5 / 4;
    std::uniform_int_distribution<microseconds::rep> delays(0, longest.count());

    RunningSession session({"--doc-root", root()});
    const auto ask = [&] {
        return editionOf(session.ask("--all --product gadgets").at("results").as_array());
    };
    std::string current = purposeOf(0);
    ASSERT_EQ(ask(), current);

    int kept = 0;
    int replaced = 0;
    for (int round = 1; round <= rounds; ++round) {
        const std::size_t edition = static_cast<std::size_t>(round) % 2;
        const std::string next = purposeOf(edition);
        const microseconds delay(delays(random));
        SCOPED_TRACE("round " + std::to_string(round) + ", killed after " +
                     std::to_string(delay.count()) + " us");
        const auto deadline = Clock::now() + delay;
        auto importer = import(edition);
        // Requests go on while the product is being replaced.
        do {
            const std::string meanwhile = ask();
            ASSERT_TRUE(meanwhile == current || meanwhile == next) << meanwhile;
        } while (Clock::now() < deadline);
        ::kill(importer.id(), SIGKILL);
        importer.wait();

        const std::string found = editionFoundAnew();
        ASSERT_TRUE(found == current || found == next) << found;
        EXPECT_EQ(ask(), found);
        ++(found == current && current != next ? kept : replaced);
        current = found;
    }
    EXPECT_GT(kept, 0) << "no import was stopped in time";
    EXPECT_GT(replaced, 0) << "no import came to its end";
    EXPECT_EQ(session.end(), 0);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
