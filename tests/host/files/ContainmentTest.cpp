// What can be reached below a folder, by both ways of resolving a path, and that nothing else can.
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <string>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gmock/gmock.h>

#include "files/Folder.hpp"
#include "files/openBeneath.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace fs = std::filesystem;
using files::Descriptor;
using files::Folder;
using files::Resolver;

std::string contentOf(const Descriptor& file) {
    std::string bytes(64, '\0');
    const ::ssize_t size = ::read(file.number(), bytes.data(), bytes.size());
    bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return bytes;
}

// What opening `path` below `root` gives: the file's content, or the error in angle brackets.
std::string opened(const fs::path& root, const std::string& path, Resolver resolver) {
    const Descriptor folder(::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    std::error_code error;
    const Descriptor file = files::openBeneath(folder.number(), path, resolver, error);
    if (file.isOpen())
        return contentOf(file);
    return error == std::errc::cross_device_link ? "<leads out>" : "<" + error.message() + ">";
}

class ContainmentTest : public testing::TestWithParam<Resolver> {
  protected:
    ContainmentTest() {
        outer.write("root/file", "file");
        outer.write("root/a/b/deep", "deep");
        outer.write("root-namesake/file", "namesake");
        outer.write("secret", "secret");
        fs::create_directory_symlink(outer.path() / "root", outer.path() / "alias");
        fs::create_directory_symlink("root/a", outer.path() / "alias-of-a");
    }

    void link(const std::string& name, const fs::path& target) const {
        fs::create_symlink(target, root / name);
    }

    [[nodiscard]] std::string open(const std::string& path) const {
        return opened(root, path, GetParam());
    }

    TempFolder outer;
    fs::path root = outer.path() / "root";
};

TEST_P(ContainmentTest, ALinkMayLeadAnywhereBelowTheFolder) {
    struct Row {
        const char* name;
        fs::path target;
        const char* path;
        const char* content;
    };
    const std::vector<Row> rows = {
        {"to-file", "file", "to-file", "file"},
        {"to-folder", "a", "to-folder/b/deep", "deep"},
        {"a/up", "../file", "a/up", "file"},
        {"a/b/up-and-down", "../../a/b/deep", "a/b/up-and-down", "deep"},
        {"a/b/to-link", "../../to-file", "a/b/to-link", "file"},
        {"absolute", root / "file", "absolute", "file"},
        {"absolute-folder", root / "a/b", "absolute-folder/deep", "deep"},
        {"out-and-in", "../root/file", "out-and-in", "file"},
        {"a/out-and-in", "../../root/a/b/deep", "a/out-and-in", "deep"},
        {"by-alias", outer.path() / "alias/a/b/deep", "by-alias", "deep"},
        {"by-inner-alias", "../alias-of-a/b/deep", "by-inner-alias", "deep"},
        {"to-root", root, "to-root/file", "file"},
        {"dots", "./a/.//b/../b/deep", "dots", "deep"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        link(row.name, row.target);
        EXPECT_EQ(open(row.path), row.content);
    }
    EXPECT_EQ(open("file"), "file");
    EXPECT_EQ(open("a/b/deep"), "deep");
    EXPECT_EQ(open("a/b/../../file"), "file");
}

TEST_P(ContainmentTest, NothingOutsideIsOpened) {
    struct Row {
        const char* name;
        fs::path target;
        const char* path;
    };
    const std::vector<Row> rows = {
        {"to-parent", "..", "to-parent/secret"},
        {"to-secret", "../secret", "to-secret"},
        {"absolute", outer.path() / "secret", "absolute"},
        {"namesake", outer.path() / "root-namesake/file", "namesake"},
        {"namesake-folder", "../root-namesake", "namesake-folder/file"},
        {"a/up", "../../secret", "a/up"},
        {"a/b/link", "../../to-secret", "a/b/link"},
        {"in-and-out", outer.path() / "alias/../secret", "in-and-out"},
        {"alias-and-out", "../alias-of-a/../../secret", "alias-and-out"},
        {"device", "/dev/zero", "device"},
        {"process", "/proc/self/root/etc/passwd", "process"},
        {"nowhere", "../nowhere", "nowhere"},
        {"top", "/", "top/etc/passwd"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        link(row.name, row.target);
        EXPECT_EQ(open(row.path), "<leads out>");
    }
    for (const char* path : {"..", "../secret", "a/../../secret", "/etc/passwd", "/"}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(open(path), "<leads out>");
    }
}

TEST_P(ContainmentTest, SaysWhatIsWrongWithWhatLiesWithin) {
    link("circle", "circle");
    link("to-nothing", "nothing");
    link("one", "two");
    link("two", "one");
    const auto named = [](std::errc code) {
        return "<" + std::make_error_code(code).message() + ">";
    };
    EXPECT_EQ(open("nothing"), named(std::errc::no_such_file_or_directory));
    EXPECT_EQ(open("nothing/file"), named(std::errc::no_such_file_or_directory));
    EXPECT_EQ(open("to-nothing"), named(std::errc::no_such_file_or_directory));
    EXPECT_EQ(open(""), named(std::errc::no_such_file_or_directory));
    EXPECT_EQ(open("file/below"), named(std::errc::not_a_directory));
    EXPECT_EQ(open("file/"), named(std::errc::not_a_directory));
    EXPECT_EQ(open("circle"), named(std::errc::too_many_symbolic_link_levels));
    EXPECT_EQ(open("one"), named(std::errc::too_many_symbolic_link_levels));
    EXPECT_EQ(open(std::string(300, 'x')), named(std::errc::filename_too_long));
    EXPECT_EQ(open(std::string("a\0b", 3)), named(std::errc::invalid_argument));
}

TEST_P(ContainmentTest, AManyTimesLinkedPathEnds) {
    link("level0", "file");
    for (int level = 1; level < 30; ++level)
        link("level" + std::to_string(level), "level" + std::to_string(level - 1));
    EXPECT_EQ(open("level29"), "file");
    for (int level = 30; level < 60; ++level)
        link("level" + std::to_string(level), "level" + std::to_string(level - 1));
    EXPECT_EQ(open("level59"),
              "<" + std::make_error_code(std::errc::too_many_symbolic_link_levels).message() + ">");
}

TEST_P(ContainmentTest, DoesNotWaitForAPipe) {
    ASSERT_EQ(::mkfifo((root / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(open("pipe"), "");
}

// While a name is read, it is switched back and forth between a sound file and one that leads out.
TEST_P(ContainmentTest, ARaceWithWhoeverSwapsFoldersAndLinksReadsNothingOutside) {
    outer.write("outside/deep", "secret");
    fs::create_directory(root / "real");
    outer.write("root/real/deep", "inside");
    link("sound", "real");
    link("bad", "../outside");
    fs::create_directory(root / "swapped");
    outer.write("root/swapped/deep", "inside");
    fs::create_symlink("../../secret", root / "swapped-file-link");
    std::atomic<bool> done{false};
    std::thread swapper([&] {
        const int folder = ::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        const auto exchange = [&](const char* one, const char* other) {
            ::syscall(SYS_renameat2, folder, one, folder, other, 2U /* RENAME_EXCHANGE */);
        };
        while (!done) {
            exchange("sound", "bad");      // a link and a link
            exchange("swapped", "sound");  // a folder and a link
            exchange("swapped-file-link", "real/deep");
        }
        ::close(folder);
    });
    constexpr int rounds = 5000;
    int inside = 0;
    const Descriptor folder(::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int round = 0; round < rounds; ++round)
        for (const char* path : {"sound/deep", "swapped/deep", "bad/deep", "real/deep"}) {
            std::error_code error;
            const Descriptor file = files::openBeneath(folder.number(), path, GetParam(), error);
            const std::string content = file.isOpen() ? contentOf(file) : "";
            EXPECT_NE(content, "secret") << path;
            if (content == "inside")
                ++inside;
        }
    done = true;
    swapper.join();
    EXPECT_GT(inside, 0);
}

INSTANTIATE_TEST_SUITE_P(Resolvers, ContainmentTest,
                         testing::Values(Resolver::System, Resolver::ByHand),
                         [](const auto& resolver) {
                             return resolver.param == Resolver::System ? "System" : "ByHand";
                         });

// Makes openat2 fail for the rest of this process, as an older kernel or a container's filter does.
bool refuseOpenat2(int number) {
    ::sock_filter code[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(::seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(number)),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const ::sock_fprog program = {.len = 4, .filter = code};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST(ContainmentFallbackTest, WorksWhereTheSystemCallIsMissingOrForbidden) {
    const TempFolder root;
    root.write("a/file", "file");
    fs::create_symlink("a/file", root.path() / "link");
    fs::create_symlink("/etc/passwd", root.path() / "out");
    for (const int number : {ENOSYS, EPERM}) {
        SCOPED_TRACE(number);
        const ::pid_t child = ::fork();
        if (child == 0) {
            const bool refused = refuseOpenat2(number) &&
                                 ::syscall(SYS_openat2, -1, "", nullptr, 0) == -1 &&
                                 errno == number;
            const bool sound = opened(root.path(), "link", Resolver::System) == "file" &&
                               opened(root.path(), "out", Resolver::System) == "<leads out>";
            ::_exit(!refused ? 2 : sound ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 0) << "2: the filter could not be set; 1: a wrong answer";
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
