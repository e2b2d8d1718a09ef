#include "measure/memory.hpp"

#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include <boost/json/object.hpp>

#include "docparser/DocResourceParser.hpp"
#include "docparser/FileDocSource.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"

namespace reference::bench {
namespace {

// What the system says of this process: memory of its own, and of files that it maps.
boost::json::object residentMemory(const char* when, std::ostream& out) {
    boost::json::object row{{"when", when}};
    std::ifstream status("/proc/self/status");
    std::string line;
    out << when;
    while (std::getline(status, line))
        for (const std::string name : {"VmRSS", "RssAnon", "RssFile"})
            if (line.starts_with(name + ":")) {
                const long kilobytes = std::stol(line.substr(name.size() + 1));
                out << "  " << name << ' ' << kilobytes / 1024 << " MiB";
                row[name] = kilobytes;
            }
    out << std::endl;
    if (row.size() != 4)
        throw std::runtime_error("/proc/self/status does not tell the resident memory.");
    return row;
}

}  // namespace

boost::json::array measureMemory(const std::filesystem::path& set, std::ostream& out) {
    using cache_manager::ReferenceCacheManager;
    docparser::DocResourceParser::setSource(std::make_shared<docparser::FileDocSource>(
        [set] { return docparser::DocumentationLocation{.docRoot = set}; }));
    boost::json::array rows;
    rows.push_back(residentMemory("nothing loaded", out));
    ReferenceCacheManager::PopulateLookupCaches();
    rows.push_back(residentMemory("lookups loaded", out));
    ReferenceCacheManager::PopulateResourceCache();
    rows.push_back(residentMemory("all pages loaded", out));
    return rows;
}

}  // namespace reference::bench
