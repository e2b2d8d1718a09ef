#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/value.hpp>

#include "vref/RpcCall.hpp"
#include "vref/WatchedDocumentation.hpp"

namespace reference::tools {

// What the methods of version 2 do, apart from those that are about requests. An interface, so that
// tests can have methods of their own.
class RpcMethods {
  public:
    RpcMethods() = default;
    RpcMethods(const RpcMethods&) = delete;  // there is one documentation
    RpcMethods& operator=(const RpcMethods&) = delete;
    virtual ~RpcMethods();

    // Called by the thread that reads requests. Throws RpcError for an unknown method, and for
    // parameters that are wrong whatever is documented.
    [[nodiscard]] virtual RpcCall prepare(const std::string& method,
                                          const boost::json::value& params) = 0;

    // The result of a call is in doubt where this has changed while it ran. Any thread.
    [[nodiscard]] virtual std::size_t unreadableFiles() const = 0;

    // Called by tasks of the pool: how often what is loaded has been replaced.
    [[nodiscard]] virtual std::uint64_t edition() const = 0;
    // Called by tasks that run alone: replace what is loaded, the first after the documentation was
    // seen to have changed, the second if it has.
    virtual void readAnew() = 0;
    virtual void followDocumentation() = 0;
};

// The methods over the documentation of a session.
class DocumentationMethods final : public RpcMethods {
  public:
    // `usuallyPrefer` are products that go before others, after those that a request prefers; they
    // need not be installed. The documentation must outlive this.
    DocumentationMethods(WatchedDocumentation& documentation,
                         std::vector<std::string> usuallyPrefer)
        : m_watched(documentation), m_usuallyPrefer(std::move(usuallyPrefer)) {}

    [[nodiscard]] RpcCall prepare(const std::string& method,
                                  const boost::json::value& params) override;
    [[nodiscard]] std::size_t unreadableFiles() const override {
        return m_watched.documentation().unreadableFiles();
    }
    [[nodiscard]] std::uint64_t edition() const override { return m_watched.edition(); }
    void readAnew() override { static_cast<void>(m_watched.readAnew()); }
    void followDocumentation() override { static_cast<void>(m_watched.followManifests()); }

  private:
    WatchedDocumentation& m_watched;
    const std::vector<std::string> m_usuallyPrefer;
};

// Methods of the session itself.
inline constexpr const char* cancelMethod = "$/cancelRequest";
inline constexpr const char* shutdownMethod = "shutdown";

// All methods, in the order in which they are documented.
[[nodiscard]] const std::vector<std::string>& rpcMethodNames();

}  // namespace reference::tools
