#include <chrono>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <new>
#include <optional>
#include <sstream>

#include "docset/Fault.hpp"
#include "docset/Manifest.hpp"
#include "docset/publish.hpp"
#include "fl/i18n/utf.hpp"
#include "sphinx/ImportTree.hpp"
#include "vref/Commands.hpp"
#include "vref/Counted.hpp"
#include "vref/DisplayText.hpp"
#include "vref/ProductSize.hpp"
#include "vref/ProgressBar.hpp"
#include "vref/StandardStreams.hpp"
#include "vref/Terminal.hpp"
#include "vref/sayWaiting.hpp"

namespace reference::tools {
namespace {

namespace sphinx = importers::sphinx;

constexpr const char* localeOfNewSets = "en_US";

// How many objects without a description are listed: as many as fit on a screen.
constexpr std::size_t fewObjects = 20;

// The locale to file the product under when the user names none.
std::string defaultLocale(const std::string& root) {
    if (!std::filesystem::exists(std::filesystem::path(root) / docset::manifestFileName))
        return localeOfNewSets;
    const auto manifest = docset::readManifest(root, [](const docset::Fault& fault) {
        throw UnusableError("The documentation set cannot be added to. " + fault.toString());
    });
    return manifest->locales.front();
}

void writeSummary(std::ostream& out, const sphinx::ImportReport& report, bool listAll) {
    std::size_t all = 0;
    for (const auto& [type, count] : report.entitiesByKind) {
        out << "  " << std::setw(7) << count << "  " << property::RefEntityType::enumToString(type)
            << '\n';
        all += count;
    }
    out << "  " << std::setw(7) << all << "  in all, from " << counted(report.pagesRead, "page")
        << '\n';
    if (report.furtherNames != 0)
        out << "  " << std::setw(7) << report.furtherNames << "  further names of them\n";
    if (!report.leftOut.empty()) {
        out << "Listed by the inventory and no part of the reference:\n";
        for (const auto& [role, count] : report.leftOut)
            out << "  " << std::setw(7) << count << "  " << printableLine(role) << '\n';
    }
    if (report.undescribed.empty())
        return;
    out << "No description was found of " << report.undescribed.size() << ":\n";
    const std::size_t shown =
        listAll ? report.undescribed.size() : std::min(report.undescribed.size(), fewObjects);
    for (std::size_t at = 0; at < shown; ++at)
        out << "  " << printableLine(report.undescribed[at]) << '\n';
    if (shown < report.undescribed.size())
        out << "  and " << report.undescribed.size() - shown << " more (--list-all)\n";
}

void requireWorthPublishing(const ImportSphinxOptions& options, const std::string& locale,
                            const sphinx::ImportResult& result) {
    if (options.force)
        return;
    const ProductSize fresh = sizeOf(result.documentation.entities);
    std::string problem;
    if (fresh.total() == 0)
        problem = "The inventory lists nothing that belongs into a reference.";
    else if (result.report.pagesRead == 0)
        problem = "None of the pages that the inventory names could be read.";
    else if (const auto old =
                 publishedSize(options.root, locale, result.documentation.header.shortName))
        problem = shrinkage(*old, fresh);
    if (!problem.empty())
        throw UnusableError("The product \"" + options.product + "\" was not imported. " + problem +
                            " If that is right, import with --force.");
}

// The imported folder as the set records it, independent of the current folder; nothing if a set
// cannot hold its name.
std::optional<docset::ProductSource> sourceIn(const std::string& folder) {
    const std::string path = std::filesystem::canonical(folder).string();
    if (wellFormed(path) != path)
        return std::nullopt;
    return docset::ProductSource{.folder = path, .importer = "sphinx", .importerVersion = {}};
}

}  // namespace

ExitStatus importSphinx(const ImportSphinxOptions& options) {
    const auto start = std::chrono::steady_clock::now();
    const std::string locale =
        options.locale.empty() ? defaultLocale(options.root) : options.locale;
    // Before the tree is read, which may take minutes.
    docset::requirePublishable(options.root, locale, fl::i18n::toUtf16(options.product));

    const Terminal terminal = Terminal::ofStandardError();
    std::optional<ProgressBar> progress(std::in_place, std::cerr, terminal,
                                        "importing " + options.product);
    auto result = sphinx::importTree(
        {.source = options.source,
         .shortName = fl::i18n::toUtf16(options.product),
         .displayName = fl::i18n::toUtf16(options.displayName),
         .version = fl::i18n::toUtf16(options.version),
         .helpFolder = fl::i18n::toUtf16(options.helpFolder),
         .progress = [&](std::size_t done, std::size_t total) { progress->update(done, total); }});
    progress.reset();
    for (const auto& fault : result.report.faults)
        say("passed over: " + printableLine(fault.page + ": " + fault.problem));
    requireWorthPublishing(options, locale, result);
    result.documentation.source = sourceIn(options.source);
    const auto problems = docset::publishProduct(options.root, locale, result.documentation,
                                                 [&] { sayWaiting(options.root); });
    try {
        for (const auto& problem : problems)
            say("the product is in place, but " + printableLine(problem));

        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        const auto& header = result.documentation.header;
        std::cout << shownLine(header.displayName) << ' ' << shownLine(header.version)
                  << " is now the product \"" << printableLine(options.product) << "\" (" << locale
                  << ") of " << printableLine(options.root) << ":\n";
        writeSummary(std::cout, result.report, options.listAll);
        std::cout << "Time: " << std::fixed << std::setprecision(1) << elapsed.count() << " s\n";
    } catch (const std::bad_alloc&) {
        std::cerr
            << "vref: the product is in place, but there is not enough memory to tell of it\n";
    }
    return result.report.faults.empty() ? Success : Incomplete;
}

}  // namespace reference::tools
