// Runs a target once for each of the files that are named, or that lie in folders that are named.
#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "FuzzTarget.hpp"
#include "support/WholeFiles.hpp"

namespace {

namespace fs = std::filesystem;
using reference::fuzz::FuzzTarget;

std::vector<fs::path> filesOf(const std::vector<std::string>& names) {
    std::vector<fs::path> files;
    for (const auto& name : names) {
        if (!fs::is_directory(name)) {
            files.emplace_back(name);
            continue;
        }
        for (const auto& entry : fs::directory_iterator(name))
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

// What is wrong; empty: nothing.
std::string problemWith(const FuzzTarget& target, const std::string& content) {
    // On a heap block of just this size, so that a sanitizer sees a read beyond it.
    const auto input = std::make_unique<char[]>(content.size());
    std::ranges::copy(content, input.get());
    try {
        target.run({input.get(), content.size()});
        return {};
    } catch (const reference::fuzz::Finding& finding) {
        return finding.what;
    } catch (const std::exception& error) {
        return std::string("An exception was let out: ") + error.what();
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto& targets = FuzzTarget::all();
    const auto target = std::ranges::find_if(targets, [&](const FuzzTarget* one) {
        return !arguments.empty() && arguments.front() == one->name();
    });
    if (target == targets.end()) {
        std::cerr << "usage: fuzz_replay TARGET FILE-OR-FOLDER...\nThe targets are:";
        for (const auto* const one : targets)
            std::cerr << ' ' << one->name();
        std::cerr << '\n';
        return 2;
    }
    const auto files = filesOf({arguments.begin() + 1, arguments.end()});
    int findings = 0;
    for (const auto& file : files) {
        if (!fs::is_regular_file(file)) {
            std::cerr << file.string() << ": This is not a file.\n";
            return 2;
        }
        const std::string problem = problemWith(**target, reference::tests::contentOf(file));
        if (!problem.empty()) {
            std::cerr << file.string() << ": " << problem << '\n';
            ++findings;
        }
    }
    std::cerr << files.size() << " inputs, " << findings << " findings\n";
    // A corpus that is not there would prove nothing.
    return files.empty() ? 2 : (findings == 0 ? 0 : 1);
}
