#include "sphinx/ImportTree.hpp"

#include <algorithm>
#include <atomic>
#include <exception>
#include <optional>
#include <thread>
#include <utility>

#include "docset/hrefs.hpp"
#include "fl/i18n/utf.hpp"
#include "foundation/core/Mutex.hpp"
#include "sphinx/Assembly.hpp"
#include "sphinx/ExampleAliases.hpp"
#include "sphinx/Hrefs.hpp"
#include "sphinx/Inventory.hpp"
#include "sphinx/InventorySorting.hpp"
#include "sphinx/Kinds.hpp"
#include "sphinx/ModuleIndex.hpp"
#include "sphinx/PageReader.hpp"
#include "sphinx/SourceTree.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

using fl::i18n::toUtf16;
using foundation::core::Mutex;
using foundation::core::MutexLock;

constexpr const char* inventoryName = "objects.inv";
constexpr const char* moduleIndexName = "py-modindex.html";

SourceTree openTree(const ImportOptions& options) {
    if (options.shortName.empty())
        throw ImportError("The product has no short name; one is needed as its key.");
    try {
        return SourceTree(options.source);
    } catch (const PageError& error) {
        throw ImportError(error.what());
    }
}

Inventory readInventory(const SourceTree& tree, const ImportOptions& options) {
    const std::string file = (options.source / inventoryName).string();
    try {
        return parseInventory(tree.read(inventoryName));
    } catch (const PageError& error) {
        throw ImportError(file + ": " + error.what() +
                          " The source must be a folder of built pages with its inventory.");
    } catch (const std::runtime_error& error) {
        throw ImportError(file + ": " + error.what());
    }
}

// An object whose place is outside of the tree has no href that a documentation set could have.
void leaveOutPlacesOutside(Inventory& inventory) {
    constexpr std::size_t mostReported = 20;
    std::size_t count = 0;
    std::erase_if(inventory.objects, [&](const InventoryObject& object) {
        const auto reason = docset::whyNotAPage(toUtf16(hrefOf(object.page, object.anchor)));
        if (reason && ++count <= mostReported)
            inventory.faults.push_back("The place of \"" + object.name + "\" is none. " + *reason);
        return reason.has_value();
    });
    if (count > mostReported)
        inventory.faults.push_back("The places of " + std::to_string(count - mostReported) +
                                   " further objects are none.");
}

// One page that is to be read, and what was found.
struct PageTask {
    std::string page;
    std::vector<WantedObject> wanted;
    PageFacts facts;
};

std::vector<PageTask> pageTasks(const std::vector<InventoryObject>& objects) {
    std::map<std::string, std::vector<WantedObject>> wanted;
    for (std::size_t index = 0; index < objects.size(); ++index) {
        const InventoryObject& object = objects[index];
        wanted[object.page].push_back({index, object.anchor, object.role == "module"});
    }
    std::vector<PageTask> tasks;
    tasks.reserve(wanted.size());
    for (auto& [page, objectsOfPage] : wanted)
        tasks.push_back({page, std::move(objectsOfPage), {}});
    return tasks;
}

// A page that the system fails to read would be missing from the product without a fault of its
// own, so the import ends.
[[noreturn]] void giveUp(const std::string& page, const SystemFailure& failure) {
    throw ImportError(page + ": " + failure.what() +
                      " The import ends here, because it would lack this page; try again once the "
                      "cause is removed.");
}

void readTask(const SourceTree& tree, HtmlArena& arena, PageTask& task) {
    try {
        const std::string html = tree.read(task.page);
        task.facts = readPage(arena, html, task.page, task.wanted);
    } catch (const PageError& error) {
        task.facts.fault = error.what();
        task.facts.isMissing = true;
    } catch (const SystemFailure& failure) {
        giveUp(task.page, failure);
    }
}

// Hands the tasks out to threads. The first exception ends the work and is thrown to the caller.
class PageReaders {
  public:
    PageReaders(const SourceTree& tree, const ImportOptions& options, std::vector<PageTask>& tasks)
        : m_tree(tree), m_options(options), m_tasks(tasks) {}

    void run() {
        const unsigned wanted =
            m_options.threads != 0 ? m_options.threads : std::thread::hardware_concurrency();
        const std::size_t count = std::clamp<std::size_t>(wanted, 1, maxThreads);
        {
            std::vector<std::jthread> threads;
            try {
                for (std::size_t each = 1; each < std::min(count, m_tasks.size()); ++each)
                    threads.emplace_back([this] { work(); });
            } catch (const std::exception&) {
                // The pages are read by as many threads as could be started.
            }
            work();
        }
        const MutexLock lock(m_mutex);
        if (m_failure)
            std::rethrow_exception(m_failure);
    }

  private:
    static constexpr std::size_t maxThreads = 256;

    void work() {
        try {
            HtmlArena arena;
            for (std::size_t next = m_next++; next < m_tasks.size(); next = m_next++) {
                readTask(m_tree, arena, m_tasks[next]);
                const MutexLock lock(m_mutex);
                ++m_done;
                if (m_options.progress && !m_failure)
                    m_options.progress(m_done, m_tasks.size());
            }
        } catch (...) {
            const MutexLock lock(m_mutex);
            if (!m_failure)
                m_failure = std::current_exception();
            m_next = m_tasks.size();
        }
    }

    const SourceTree& m_tree;
    const ImportOptions& m_options;
    std::vector<PageTask>& m_tasks;
    std::atomic<std::size_t> m_next = 0;
    Mutex m_mutex;
    std::size_t m_done VELTRA_GUARDED_BY(m_mutex) = 0;
    std::exception_ptr m_failure VELTRA_GUARDED_BY(m_mutex);
};

// A tree without a module index, or with a broken one, has no summaries; the purposes of modules
// then come from their own descriptions.
std::map<std::string, std::string> readSummaries(const SourceTree& tree) {
    try {
        HtmlArena arena;
        return readModuleIndex(arena, tree.read(moduleIndexName));
    } catch (const PageError&) {
        return {};
    } catch (const HtmlError&) {
        return {};
    } catch (const SystemFailure& failure) {
        giveUp(moduleIndexName, failure);
    }
}

docset::ProductHeader headerOf(const ImportOptions& options, const Inventory& inventory) {
    const auto orElse = [](const std::u16string& text, const std::u16string& other) {
        return text.empty() ? other : text;
    };
    docset::ProductHeader header;
    header.shortName = options.shortName;
    header.displayName = orElse(options.displayName, toUtf16(inventory.project));
    header.helpFolder = orElse(options.helpFolder, options.shortName);
    header.version = orElse(options.version, toUtf16(inventory.version));
    return header;
}

}  // namespace

ImportResult importTree(const ImportOptions& options) {
    const SourceTree tree = openTree(options);
    Inventory inventory = readInventory(tree, options);

    leaveOutPlacesOutside(inventory);
    SortedInventory sorted = sortInventory(std::move(inventory.objects));
    Gathered gathered;
    gathered.helpFolder = headerOf(options, inventory).helpFolder;
    gathered.objects = std::move(sorted.objects);
    gathered.furtherNames = std::move(sorted.furtherNames);
    std::vector<PageTask> tasks = pageTasks(gathered.objects);
    PageReaders(tree, options, tasks).run();
    gathered.summaries = readSummaries(tree);

    ImportResult result;
    ImportReport& report = result.report;
    for (const std::string& fault : inventory.faults)
        report.faults.push_back({inventoryName, fault});
    for (PageTask& task : tasks) {
        report.pagesRead += task.facts.isMissing ? 0 : 1;
        if (!task.facts.fault.empty())
            report.faults.push_back(
                {task.page.empty() ? "index.html" : task.page, task.facts.fault});
        gathered.pages.emplace(task.page, std::move(task.facts));
    }

    Assembled assembled = assemble(gathered);
    result.documentation = std::move(assembled.documentation);
    result.documentation.header = headerOf(options, inventory);
    result.documentation.aliases = exampleAliases(gathered.pages, result.documentation.entities);
    report.objects = gathered.objects.size();
    report.furtherNames = assembled.furtherNames.size();
    report.leftOut = std::move(sorted.leftOut);
    for (const std::size_t index : assembled.undescribed)
        report.undescribed.push_back(gathered.objects[index].name);
    for (const auto& [name, records] : result.documentation.entities)
        if (!assembled.furtherNames.contains(name))
            for (const property::RefItemLookup& record : records)
                ++report.entitiesByKind[record.getType()];
    return result;
}

}  // namespace reference::importers::sphinx
