#include "foundation/msg_svc/eventmgr/Connection.hpp"

#include <utility>

#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"

namespace foundation::msg_svc::eventmgr {

Connection::~Connection() = default;

ScopedConnection::ScopedConnection(std::unique_ptr<Connection> connection) noexcept
    : m_connection(std::move(connection)) {}

ScopedConnection::~ScopedConnection() = default;

void ScopedConnection::assign(std::unique_ptr<Connection> connection) noexcept {
    m_connection = std::move(connection);
}

}  // namespace foundation::msg_svc::eventmgr
