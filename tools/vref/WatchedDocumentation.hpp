#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "foundation/core/Mutex.hpp"
#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "vref/Documentation.hpp"
#include "vref/ManifestWatch.hpp"

namespace reference::tools {

// The documentation as a session has it loaded.
struct LoadedDocumentation {
    std::string language;
    std::size_t products = 0;
    std::size_t entities = 0;
};

// The documentation of a session: kept in memory, and read anew when it changes. One per process.
//
// hasChanged() may be called at any time. The operations that change what is loaded are called
// while no request is carried out and no other of them runs; then its edition is constant between
// them.
class WatchedDocumentation {
  public:
    // What was loaded, and why: "ready", "language", "documentation" or "request".
    using Loaded =
        std::function<void(const std::string& why, const LoadedDocumentation& documentation)>;

    // Loads the documentation, and tells so. Throws what Documentation's constructor throws.
    // `warn` is a Documentation's reporter; both are called on the thread that makes a change.
    WatchedDocumentation(const DocumentationOptions& options, Reporter warn, Loaded loaded);
    WatchedDocumentation(const WatchedDocumentation&) = delete;  // there is one library to set up
    WatchedDocumentation& operator=(const WatchedDocumentation&) = delete;
    ~WatchedDocumentation();

    [[nodiscard]] Documentation& documentation() noexcept { return m_documentation; }
    [[nodiscard]] const Documentation& documentation() const noexcept { return m_documentation; }

    // Whether a manifest was replaced since this last returned true: readAnew() is then to be
    // called.
    [[nodiscard]] bool hasChanged();

    // Reads the documentation anew after its manifest was replaced, and returns whether it did.
    // While a manifest cannot be read, for example because somebody is writing it, what is loaded
    // is kept, with a warning.
    bool readAnew();
    bool followManifests() { return hasChanged() && readAnew(); }

    // Throw UnreadableDocumentation, and change nothing, if the documentation cannot be read;
    // setLanguage() throws UnusableError, likewise, if that language is not available. What was
    // read well but cannot be loaded is a warning, and nothing is loaded until it can be; these
    // return whether it could.
    bool setLanguage(const std::string& wanted);
    bool reload();

    // How often what is loaded has been replaced.
    [[nodiscard]] std::uint64_t edition() const noexcept { return m_edition; }
    [[nodiscard]] LoadedDocumentation whatIsLoaded() const;

  private:
    bool loadIfOutdated(const std::string& why);
    [[nodiscard]] bool canReadMore() VELTRA_REQUIRES(m_mutex);

    static constexpr std::chrono::seconds betweenTries{2};

    const Reporter m_warn;
    const Loaded m_loaded;
    Documentation m_documentation;
    foundation::msg_svc::eventmgr::ScopedConnection m_connection;
    bool m_isOutdated = false;  // the caches were cleared and are not loaded again
    std::uint64_t m_edition = 0;

    foundation::core::Mutex m_mutex;
    ManifestWatch m_manifests VELTRA_GUARDED_BY(m_mutex);
    std::chrono::steady_clock::time_point m_nextTry VELTRA_GUARDED_BY(m_mutex);
};

}  // namespace reference::tools
