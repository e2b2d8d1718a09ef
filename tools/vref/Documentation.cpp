#include "vref/Documentation.hpp"

#include <algorithm>
#include <atomic>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include <boost/algorithm/string/join.hpp>

#include "docparser/DocParserException.hpp"
#include "docparser/DocResourceParser.hpp"
#include "fl/i18n/utf.hpp"
#include "foundation/core/Mutex.hpp"
#include "foundation/core/context/ContextRegistry.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"
#include "settings/in_veltra/settingsRoot.hpp"
#include "vref/DisplayText.hpp"
#include "vref/Environment.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/LanguageChoice.hpp"
#include "vref/StandardStreams.hpp"

namespace reference::tools {
namespace {

using docparser::DocParserException;
using docparser::FileDocSource;

std::shared_ptr<settings::core::Settings> setting(const char* name) {
    using foundation::core::context::ContextRegistry;
    return settings::in_veltra::getSettingsRoot(ContextRegistry::getCurrentContextId())
        ->getSettingsByFullName(name);
}

// Products that are left out are reported through the log, which is off unless somebody asks for
// it. A user of the tool always wants to know.
void showWarnings(const Reporter& report) {
    if (!environmentText("VELTRA_LOG").empty())
        return;
    setting(settings::in_veltra::logSetting)->setValue(std::string("docparser=4"));
    foundation::log::setLogSink(
        [report](const foundation::log::LogRecord& record) { report(std::string(record.text)); });
}

docparser::DocumentationLocation locationOf(const std::string& locale) {
    auto location = docparser::DocumentationLocation::current();
    location.language = locale;
    return location;
}

std::string inParentheses(const std::string& place) {
    return place.empty() ? std::string() : " (" + printableLine(place) + ")";
}

}  // namespace

// Passes each message on once. Any thread.
class Documentation::Reports {
  public:
    explicit Reports(Reporter report) : m_report(std::move(report)) {}

    void tell(const std::string& message) {
        {
            const foundation::core::MutexLock lock(m_mutex);
            if (!m_told.insert(message).second)
                return;
        }
        m_report(message);
    }
    void forget() {
        const foundation::core::MutexLock lock(m_mutex);
        m_told.clear();
    }

  private:
    const Reporter m_report;
    foundation::core::Mutex m_mutex;
    std::set<std::string> m_told VELTRA_GUARDED_BY(m_mutex);
};

// The file source, with a message to the user for each reference file that cannot be read: the
// library leaves such a product out silently.
class Documentation::ReportingSource final : public docparser::DocSource {
  public:
    explicit ReportingSource(std::shared_ptr<Reports> reports) : m_reports(std::move(reports)) {}

    docparser::ParsingResults getResourceLookupFiles() override {
        std::optional<docparser::ParsingResults> results;
        {
            const foundation::core::MutexLock lock(m_mutex);
            results = std::exchange(m_prepared, {});
        }
        if (!results)
            results = m_files.getResourceLookupFiles();
        const foundation::core::MutexLock lock(m_mutex);
        m_leftOut = results->leftOut;
        return std::move(*results);
    }
    docparser::ReferenceResources getResourceFile(const std::u16string& resourceFile) override {
        try {
            auto resources = m_files.getResourceFile(resourceFile);
            for (const auto& product : m_files.productsOfFile(resourceFile))
                if (!resources.contains(product))
                    ++m_unreadable;  // the source has said so
            return resources;
        } catch (const DocParserException& exception) {
            // An error without a file means an absent product: start-up asks for products that may
            // be absent.
            if (exception.getFault().file.empty())
                throw;
            ++m_unreadable;
            m_reports->tell("left out: " + printableLine(exception.what()));
            throw;
        }
    }
    docparser::ReferenceRoots getReferenceRoots() override { return m_files.getReferenceRoots(); }
    std::vector<std::u16string> getSupportedDocLocales() override {
        return m_files.getSupportedDocLocales();
    }
    docparser::ProductLists getAllProducts(const std::u16string& docRoot,
                                           const std::vector<std::u16string>& locales,
                                           const std::u16string& locale) override {
        return m_files.getAllProducts(docRoot, locales, locale);
    }
    bool isProductInstalled(const std::u16string& product) override {
        return m_files.isProductInstalled(product);
    }
    void clearSupportPackageCaches() override { m_files.clearSupportPackageCaches(); }
    void passOverImages(const std::string& problem) override { m_files.passOverImages(problem); }

    [[nodiscard]] FileDocSource& files() noexcept { return m_files; }
    [[nodiscard]] std::size_t unreadable() const noexcept { return m_unreadable; }

    // Reads the lookup files as `location` says, for the next time that the library asks for them.
    // Throws what that throws, and then has changed nothing.
    void prepare(const docparser::DocumentationLocation& location) {
        auto results = FileDocSource([&] { return location; }).getResourceLookupFiles();
        const foundation::core::MutexLock lock(m_mutex);
        m_prepared = std::move(results);
    }
    void forgetPrepared() {
        const foundation::core::MutexLock lock(m_mutex);
        m_prepared.reset();
    }

    // Why products are missing from what was read last.
    [[nodiscard]] std::vector<docset::Fault> leftOut() const {
        const foundation::core::MutexLock lock(m_mutex);
        return m_leftOut;
    }

  private:
    const std::shared_ptr<Reports> m_reports;
    FileDocSource m_files;
    std::atomic<std::size_t> m_unreadable{0};
    mutable foundation::core::Mutex m_mutex;
    std::optional<docparser::ParsingResults> m_prepared VELTRA_GUARDED_BY(m_mutex);
    std::vector<docset::Fault> m_leftOut VELTRA_GUARDED_BY(m_mutex);
};

void reportToStandardError(const std::string& message) {
    say(message);
}

Documentation::Documentation(const DocumentationOptions& options, const Reporter& report)
    : m_reports(std::make_shared<Reports>(report)),
      m_source(std::make_shared<ReportingSource>(m_reports)) {
    showWarnings([reports = m_reports](const std::string& message) {
        reports->tell(printableLine(message));
    });
    if (!options.docRoot.empty())
        setting(settings::in_veltra::docRootSetting)->setValue(options.docRoot);
    try {
        if (!options.language.empty())
            setLanguage(options.language, inParentheses(options.languagePlace));
        else
            followLocale();
    } catch (const DocParserException& exception) {
        throw UnusableError("There is no usable documentation set" +
                            inParentheses(options.docRootPlace) + ". " +
                            printableLine(exception.what()) +
                            "\nName one with --doc-root or VELTRA_DOC_ROOT; \"vref validate ROOT\" "
                            "tells what is wrong with it.");
    }
    docparser::DocResourceParser::setSource(m_source);
}

Documentation::~Documentation() {
    docparser::DocResourceParser::setSource(nullptr);
}

void Documentation::startNewQuestion() {
    m_reports->forget();
}

std::size_t Documentation::unreadableFiles() const {
    return m_source->unreadable();
}

bool Documentation::missesProducts() const {
    const auto faults = m_source->leftOut();
    for (const auto& fault : faults)
        m_reports->tell("left out: " + printableLine(fault.toString()));
    return !faults.empty();
}

bool Documentation::canReadMore() const {
    const auto opens = [](const docset::Fault& fault) {
        std::error_code error;
        return fault.mayPass && std::filesystem::is_regular_file(fault.file, error) &&
               std::ifstream(fault.file, std::ios::binary).is_open();
    };
    const auto faults = m_source->leftOut();
    if (std::ranges::none_of(faults, opens))
        return false;
    try {
        FileDocSource now([location = locationOf(language())] { return location; });
        return now.getResourceLookupFiles().leftOut.size() < faults.size();
    } catch (const std::exception&) {
        return false;  // the manifest, or want of memory: told when it is read in earnest
    }
}

void Documentation::prepareReading() {
    prepareReading(language());
}

void Documentation::prepareReading(const std::string& locale) {
    try {
        m_source->prepare(locationOf(locale));
    } catch (const DocParserException& exception) {
        throw UnreadableDocumentation(
            "The documentation cannot be read, so that what is loaded is kept: " +
            printableLine(exception.what()));
    }
}

std::string Documentation::language() const {
    auto wanted = setting(settings::in_veltra::docLanguageSetting)->get<std::string>();
    if (!wanted.empty())
        return wanted;
    const auto locales = languages();
    return locales.empty() ? std::string() : locales.front();
}

std::vector<std::string> Documentation::languages() const {
    std::vector<std::string> locales;
    std::ranges::transform(m_source->getSupportedDocLocales(), std::back_inserter(locales),
                           [](const auto& name) { return fl::i18n::toUtf8(name); });
    return locales;
}

void Documentation::setLanguage(const std::string& wanted) {
    setLanguage(wanted, {});
}

void Documentation::setLanguage(const std::string& wanted, const std::string& place) {
    const auto locales = languages();
    const auto locale = localeMeant(wanted, locales);
    if (!locale)
        throw UnusableError("There is no documentation in the language \"" + wanted + "\"" + place +
                            "; there is: " + boost::join(locales, ", ") + ".");
    if (*locale == setting(settings::in_veltra::docLanguageSetting)->get<std::string>())
        return;
    if (m_isLoaded)
        prepareReading(*locale);
    setting(settings::in_veltra::docLanguageSetting)->setValue(*locale);
}

void Documentation::setLoaded() {
    m_isLoaded = true;
    m_source->forgetPrepared();
}

void Documentation::followLocale() {
    const auto locales = languages();
    for (const LanguageWish& wish : languagesOfEnvironment())
        if (const auto locale = localeMeant(wish.locale, locales)) {
            setting(settings::in_veltra::docLanguageSetting)->setValue(*locale);
            return;
        }
}

std::vector<std::filesystem::path> Documentation::roots() const {
    const auto names = m_source->getReferenceRoots();
    std::vector<std::filesystem::path> roots{fl::i18n::toUtf8(names.docRoot)};
    for (const auto& name : names.supportPackageRoots)
        roots.emplace_back(fl::i18n::toUtf8(name));
    return roots;
}

std::vector<docparser::ListedProduct> Documentation::products() const {
    return m_source->files().listProducts();
}

std::optional<docset::ProductSource> Documentation::sourceOf(const std::u16string& product) const {
    const auto listed = products();
    const auto found = std::ranges::find(listed, product, &docparser::ListedProduct::shortName);
    return found != listed.end() ? found->source : std::nullopt;
}

std::optional<PagePlace> Documentation::placeOf(const api::ReferenceData& result) const {
    const auto source = sourceOf(result.getHeaderInfo().getShortName());
    if (!source)
        return std::nullopt;
    return tools::placeOf(source->folder, fl::i18n::toUtf8(result.getRefItem().getHref()));
}

bool Documentation::isInstalled(const std::u16string& product) const {
    return std::ranges::any_of(products(), [&](const docparser::ListedProduct& listed) {
        return listed.installed && listed.shortName == product;
    });
}

void Documentation::requireInstalled(const std::u16string& product,
                                     const std::string& option) const {
    std::string installed;
    for (const auto& listed : products()) {
        if (listed.shortName == product && listed.installed)
            return;
        if (listed.shortName == product)
            throw UnusableError(option + ": The product \"" + shownLine(product) +
                                "\" is known but not installed, so that it cannot be searched.");
        if (listed.installed)
            installed += (installed.empty() ? "" : ", ") + shownLine(listed.shortName);
    }
    throw UnusableError(option + ": There is no product \"" + shownLine(product) +
                        "\"; installed are: " + (installed.empty() ? "none" : installed) + ".");
}

}  // namespace reference::tools
