#include <cstddef>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "docset/JsonText.hpp"
#include "fl/i18n/utf.hpp"
#include "foundation/core/TextStream.hpp"
#include "foundation/core/context/ContextRegistry.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "vref/Commands.hpp"
#include "vref/Counted.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ProductFigures.hpp"
#include "vref/Table.hpp"
#include "vref/Terminal.hpp"

namespace reference::tools {
namespace {

namespace json = boost::json;
using cache_manager::ReferenceCacheManager;
using foundation::log::LogRecord;

constexpr std::string_view startupChannel = "referenceApi::startup";

struct Record {
    int severity;
    int depth;
    std::string text;
};

// The records of start-up's channel, while this lives; records of other channels go where the
// tool's messages go.
class StartupLog {
  public:
    explicit StartupLog(int severity) {
        using foundation::core::context::ContextRegistry;
        const auto setting =
            settings::in_veltra::getSettingsRoot(ContextRegistry::getCurrentContextId())
                ->getSettingsByFullName(settings::in_veltra::logSetting);
        const auto levels = setting->get<std::string>();
        setting->setValue((levels.empty() ? "docparser=4" : levels) + "," +
                          std::string(startupChannel) + "=" + std::to_string(severity));
        foundation::log::setLogSink([this](const LogRecord& record) {
            if (record.channel == startupChannel)
                m_records.push_back({record.severity, record.depth, std::string(record.text)});
            else
                reportToStandardError(std::string(record.text));
        });
    }
    StartupLog(const StartupLog&) = delete;  // the sink refers to it
    StartupLog& operator=(const StartupLog&) = delete;
    ~StartupLog() { foundation::log::setLogSink(nullptr); }

    [[nodiscard]] const std::vector<Record>& records() const noexcept { return m_records; }

  private:
    std::vector<Record> m_records;
};

// The memory that the process has in use, in bytes; 0 if the system does not say.
std::size_t residentMemory() {
    // Sizes in pages: the whole, then what is resident (proc(5)).
    std::ifstream file("/proc/self/statm");
    std::size_t whole = 0;
    std::size_t resident = 0;
    file >> whole >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

struct LoadedProduct {
    std::string product;
    bool installed = false;
    std::size_t entities = 0;
    // Nothing for a product whose pages start-up leaves for later.
    std::optional<std::size_t> pages;
};

struct Loaded {
    std::vector<LoadedProduct> rows;
    std::size_t installed = 0;
    std::size_t entities = 0;
    std::size_t pages = 0;
    std::size_t memory = 0;  // in bytes
};

Loaded whatIsLoaded(std::size_t memoryBefore) {
    Loaded loaded;
    const std::size_t memory = residentMemory();
    loaded.memory = memory > memoryBefore ? memory - memoryBefore : 0;
    const auto resources = ReferenceCacheManager::GetResourceCache();
    for (const bool installed : {true, false}) {
        const auto lookups = installed ? ReferenceCacheManager::GetLookupCache()
                                       : ReferenceCacheManager::GetUninstalledLookupCache();
        for (const auto& [name, lookup] : *lookups) {
            LoadedProduct row{.product = fl::i18n::toUtf8(name),
                              .installed = installed,
                              .entities = countEntities(lookup)};
            if (const auto resource = resources->find(name); resource != resources->end())
                row.pages = countPages(*resource->second);
            loaded.installed += installed ? 1 : 0;
            loaded.entities += row.entities;
            loaded.pages += row.pages.value_or(0);
            loaded.rows.push_back(std::move(row));
        }
    }
    return loaded;
}

std::string megabytes(std::size_t bytes) {
    foundation::core::TextStream text;
    text << std::fixed << std::setprecision(1) << static_cast<double>(bytes) / 1e6 << " MB";
    return text.str();
}

void writeText(std::ostream& out, const Terminal& terminal, const std::vector<Record>& records,
               const Loaded& loaded) {
    for (const auto& record : records)
        out << std::string(static_cast<std::size_t>(record.depth) * 2, ' ') << '[' << startupChannel
            << ' ' << record.severity << "] " << printableLine(record.text) << '\n';
    out << '\n';
    Table table({{"PRODUCT", Table::Align::Left},
                 {"ENTITIES", Table::Align::Right},
                 {"PAGES", Table::Align::Right},
                 {"", Table::Align::Left}});
    for (const auto& row : loaded.rows)
        table.add({{row.product, Style::Name},
                   {std::to_string(row.entities)},
                   {row.pages ? std::to_string(*row.pages) : "-"},
                   {!row.installed ? "not installed"
                    : row.pages    ? ""
                                   : "pages are loaded when they are asked for"}});
    table.write(out, terminal);
    out << "\n"
        << counted(loaded.rows.size(), "product") << ", " << loaded.installed
        << " of them installed; " << counted(loaded.entities, "entity", "entities") << "; "
        << counted(loaded.pages, "page") << "; " << megabytes(loaded.memory) << " of memory\n";
}

void writeJson(std::ostream& out, const std::vector<Record>& records, const Loaded& loaded) {
    json::array log;
    for (const auto& record : records)
        log.push_back(json::object{{"severity", record.severity},
                                   {"depth", record.depth},
                                   {"text", wellFormed(record.text)}});
    json::array products;
    for (const auto& row : loaded.rows)
        products.push_back(
            json::object{{"product", row.product},
                         {"installed", row.installed},
                         {"entities", row.entities},
                         {"pages", row.pages ? json::value(*row.pages) : json::value(nullptr)}});
    docset::writeJson(out, json::object{{"log", std::move(log)},
                                        {"products", std::move(products)},
                                        {"entities", loaded.entities},
                                        {"pages", loaded.pages},
                                        {"memoryBytes", loaded.memory}});
    out << '\n';
}

}  // namespace

ExitStatus warm(const WarmOptions& options, const Configuration& configuration) {
    const Documentation documentation(configuration.documentation());
    const StartupLog log(options.trace ? foundation::log::Trace : foundation::log::Information);
    const std::size_t memoryBefore = residentMemory();
    ReferenceCacheManager::PerformStartupOperations();
    const Loaded loaded = whatIsLoaded(memoryBefore);
    if (options.json)
        writeJson(std::cout, log.records(), loaded);
    else
        writeText(std::cout, Terminal::ofStandardOutput(configuration.colours.value), log.records(),
                  loaded);
    const bool isWhole = loaded.rows.size() == documentation.products().size() &&
                         documentation.unreadableFiles() == 0;
    return isWhole ? Success : Incomplete;
}

}  // namespace reference::tools
