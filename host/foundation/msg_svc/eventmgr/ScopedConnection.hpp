#pragma once

#include <memory>

#include "foundation/core/export.hpp"
#include "foundation/msg_svc/eventmgr/Connection.hpp"

namespace foundation::msg_svc::eventmgr {

// Holds a client's connection; empty at first. For one thread at a time.
class VELTRA_HOST_API ScopedConnection {
  public:
    ScopedConnection() noexcept = default;
    explicit ScopedConnection(std::unique_ptr<Connection> connection) noexcept;
    ScopedConnection(ScopedConnection&& other) noexcept = default;
    ScopedConnection& operator=(ScopedConnection&& other) noexcept = default;
    ~ScopedConnection();

    // Takes over a connection, or becomes empty (null); the one held so far ends.
    void assign(std::unique_ptr<Connection> connection) noexcept;

    // Ends the connection that is held, if there is one.
    void reset() noexcept { assign(nullptr); }

    // Whether a connection is held.
    [[nodiscard]] explicit operator bool() const noexcept { return m_connection != nullptr; }

  private:
    std::unique_ptr<Connection> m_connection;
};

}  // namespace foundation::msg_svc::eventmgr
