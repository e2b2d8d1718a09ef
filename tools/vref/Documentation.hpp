#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "docparser/FileDocSource.hpp"

namespace reference::tools {

// Which documentation the user wants to ask. Empty texts leave the choice to the settings and the
// environment.
struct DocumentationOptions {
    std::string docRoot;
    std::string language;
};

// The installed documentation as the tool's commands use it: the library's, with a message on the
// standard error stream for everything that cannot be read. One in a process.
class Documentation {
  public:
    // Makes the library read what `options` say. Throws UnusableError when there is no readable
    // documentation set, or none in the wanted language; the message lists the languages there are.
    explicit Documentation(const DocumentationOptions& options);

    // Gives the library its own source back.
    ~Documentation();
    Documentation(const Documentation&) = delete;  // there is one library to set up
    Documentation& operator=(const Documentation&) = delete;

    // How many reference files could not be read so far.
    [[nodiscard]] std::size_t unreadableFiles() const;

    // All products that the roots list, in their order.
    [[nodiscard]] std::vector<docparser::ListedProduct> products() const;

    // Throws UnusableError for a name that is no installed product's.
    void requireInstalled(const std::u16string& product) const;

  private:
    class ReportingSource;
    std::shared_ptr<ReportingSource> m_source;
};

}  // namespace reference::tools
