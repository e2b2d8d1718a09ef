#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "docparser/FileDocSource.hpp"
#include "docset/ProductSource.hpp"
#include "reference/api/ReferenceData.hpp"
#include "vref/ExitStatus.hpp"
#include "vref/PagePlace.hpp"

namespace reference::tools {

// Which documentation the user wants to search. An empty root leaves the choice to the settings and
// the environment, an empty language to the locale of the process (see languagesOfEnvironment()).
struct DocumentationOptions {
    std::string docRoot;
    std::string language;
    // Where these stand in a file, for errors; empty where the user has just typed them.
    std::string docRootPlace;
    std::string languagePlace;
};

// Receives what the user should know: a sentence without the tool's name or a line end. UTF-8.
using Reporter = std::function<void(const std::string& message)>;

// Writes the message to the standard error stream, after the tool's name.
void reportToStandardError(const std::string& message);

// What is loaded cannot be replaced, and stays.
class UnreadableDocumentation : public UnusableError {
  public:
    using UnusableError::UnusableError;
};

// The installed documentation as the tool's commands use it: the library's, with a message for
// everything that cannot be read. One per process.
class Documentation {
  public:
    // Makes the library read what `options` say. Throws UnusableError when there is no readable
    // documentation set, or none in the language that the options name; the message lists the
    // languages there are. Languages that only the locale asks for are passed over where the set
    // has none of them; it is then read in its first.
    // `report` is called on the thread that reads, while the library holds its locks.
    explicit Documentation(const DocumentationOptions& options,
                           const Reporter& report = &reportToStandardError);

    // Gives the library its own source back.
    ~Documentation();
    Documentation(const Documentation&) = delete;  // there is one library to set up
    Documentation& operator=(const Documentation&) = delete;

    // Each message goes to `report` only once, however often its cause occurs. This lets messages
    // that were already reported be reported again.
    void startNewQuestion();

    // How often a reference file could not be read so far, or lacked its product.
    [[nodiscard]] std::size_t unreadableFiles() const;

    // Whether products are missing because their lookup files could not be read, which is reported
    // for each of them. Nothing is known to be missing before the library has read any.
    [[nodiscard]] bool missesProducts() const;

    // Whether fewer of them would be missing if the library read anew: files that the system failed
    // to read may be readable by now. Reads all that there is to find out, if such a file can be
    // opened, and keeps nothing of it.
    [[nodiscard]] bool canReadMore() const;

    // Reads ahead what the library reads after its caches are cleared. Throws
    // UnreadableDocumentation where it cannot be read, and then has changed nothing.
    void prepareReading();

    // From now on setLanguage() reads ahead. To be called whenever the library has read.
    void setLoaded();

    // The language in force: "ja_JP".
    [[nodiscard]] std::string language() const;

    // The languages that there are, the set's first at the front.
    [[nodiscard]] std::vector<std::string> languages() const;

    // Changes the language for later requests. Throws UnusableError, and changes nothing, if that
    // language is not available; UnreadableDocumentation, likewise, if the documentation in it
    // cannot be read although it had been read before.
    void setLanguage(const std::string& wanted);

    // The folders in force: the documentation root, then the support packages.
    [[nodiscard]] std::vector<std::filesystem::path> roots() const;

    // All products that the roots list, in their order.
    [[nodiscard]] std::vector<docparser::ListedProduct> products() const;

    // What the product was imported from; nothing where its documentation set does not say.
    [[nodiscard]] std::optional<docset::ProductSource> sourceOf(
        const std::u16string& product) const;

    // The file that a result's page is in, in the folder that its product was imported from.
    [[nodiscard]] std::optional<PagePlace> placeOf(const api::ReferenceData& result) const;

    [[nodiscard]] bool isInstalled(const std::u16string& product) const;

    // Throws UnusableError if no installed product has this name; `option` is what names it.
    void requireInstalled(const std::u16string& product, const std::string& option) const;

  private:
    class Reports;
    class ReportingSource;
    // `place` is where the wish stands, for the error.
    void setLanguage(const std::string& wanted, const std::string& place);
    void followLocale();
    void prepareReading(const std::string& locale);

    std::shared_ptr<Reports> m_reports;
    std::shared_ptr<ReportingSource> m_source;
    bool m_isLoaded = false;
};

}  // namespace reference::tools
