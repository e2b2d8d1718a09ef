#include "measure/memory.hpp"

#include <array>
#include <fstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include <boost/json/object.hpp>

#include "engines/Delivery.hpp"
#include "engines/LibraryEngine.hpp"
#include "fl/i18n/utf.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::bench {
namespace {

using cache_manager::ReferenceCacheManager;

// The numbers of the lines that begin with these names, in kilobytes.
template <std::size_t Count>
boost::json::object kilobytesIn(const std::string& file,
                                const std::array<const char*, Count>& names) {
    boost::json::object row;
    std::ifstream lines(file);
    std::string line;
    while (std::getline(lines, line))
        for (const char* const name : names)
            if (const std::string begin = std::string(name) + ':'; line.starts_with(begin))
                row[name] = std::stol(line.substr(begin.size()));
    if (row.size() != Count)
        throw std::runtime_error(file + " does not tell the memory.");
    return row;
}

void print(const boost::json::object& row, std::ostream& out) {
    for (const auto& [name, value] : row)
        out << ' ' << std::string_view(name) << ' ' << value;
    out << std::endl;
}

// What the system says of this process: memory of its own, and of files that it maps.
boost::json::object residentMemory(const char* when, std::ostream& out) {
    auto row = kilobytesIn("/proc/self/status", std::array{"VmRSS", "RssAnon", "RssFile"});
    out << when << ':';
    print(row, out);
    row["when"] = when;
    return row;
}

void ask(Ask kind, const std::u16string& text) {
    Delivery delivery(Delivery::Mode::Timed);
    LibraryEngine().answer(kind, {.text = text, .utf8 = fl::i18n::toUtf8(text), .folded = {}},
                           delivery);
}

// With answers of thousands of records.
void askForNames() {
    for (const auto kind : {Ask::ExactHrefs, Ask::AnyCaseHrefs, Ask::LastComponentHrefs})
        ask(kind, u"get");
    ask(Ask::PartHrefs, u"return");
}
void askForTexts() {
    ask(Ask::TextResults, u"return");
}

// Another process that has asked the same, until the object is destroyed.
class Companion {
  public:
    explicit Companion(const std::filesystem::path& set) {
        if (::pipe(m_ready.data()) != 0 || ::pipe(m_end.data()) != 0)
            throw std::runtime_error("There are no pipes left.");
        m_process = ::fork();
        if (m_process < 0)
            throw std::runtime_error("There can be no other process.");
        if (m_process > 0)
            return;
        ::close(m_end[1]);
        loadLibrary(set);
        askForNames();
        askForTexts();
        char byte = 0;
        const bool isTold = ::write(m_ready[1], &byte, 1) == 1 && ::read(m_end[0], &byte, 1) == 0;
        ::_exit(isTold ? 0 : 1);
    }
    Companion(const Companion&) = delete;  // there is one process
    Companion& operator=(const Companion&) = delete;
    ~Companion() {
        ::close(m_end[1]);
        ::waitpid(m_process, nullptr, 0);
    }

    void wait() const {
        ::close(m_ready[1]);
        char byte = 0;
        if (::read(m_ready[0], &byte, 1) != 1)
            throw std::runtime_error("The other process failed.");
    }

    [[nodiscard]] std::string name() const { return std::to_string(m_process); }

  private:
    std::array<int, 2> m_ready{};
    std::array<int, 2> m_end{};
    pid_t m_process = 0;
};

// A page that two processes have counts half for each in the proportional set size.
boost::json::object sharedMemory(const std::string& process, std::ostream& out) {
    auto row = kilobytesIn("/proc/" + process + "/smaps_rollup",
                           std::array{"Rss", "Pss", "Private_Clean", "Private_Dirty"});
    out << "of two:";
    print(row, out);
    return row;
}

}  // namespace

boost::json::object measureMemory(const std::filesystem::path& set, std::ostream& out) {
    const Companion companion(set);
    boost::json::array rows;
    rows.push_back(residentMemory("nothing loaded", out));
    openLibrary(set);
    ReferenceCacheManager::PopulateLookupCaches();
    rows.push_back(residentMemory("lookups loaded", out));
    askForNames();
    rows.push_back(residentMemory("names and parts asked for", out));
    ReferenceCacheManager::PopulateResourceCache();
    rows.push_back(residentMemory("all pages loaded", out));
    askForTexts();
    rows.push_back(residentMemory("texts asked for", out));
    companion.wait();
    return {{"memory", std::move(rows)},
            {"shared", {sharedMemory("self", out), sharedMemory(companion.name(), out)}}};
}

}  // namespace reference::bench
