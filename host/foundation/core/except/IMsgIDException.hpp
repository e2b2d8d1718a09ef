#pragma once

#include <string>
#include <vector>

#include "foundation/core/except/IUserException.hpp"

namespace foundation::core::except {

// A user's error that scripts recognise by an identifier: the name of a message catalogue, ":" and
// a key ("VELTRA:class:RequireScalar").
class VELTRA_HOST_API IMsgIDException : public IUserException {
  public:
    ~IMsgIDException() override;

    // These live as long as the exception.
    [[nodiscard]] virtual const std::string& getIdentifier() const noexcept = 0;
    // What was filled into the message, in the order of its places. UTF-8.
    [[nodiscard]] virtual const std::vector<std::string>& getArguments() const noexcept = 0;

  protected:
    IMsgIDException() = default;
    IMsgIDException(const IMsgIDException&) = default;
    IMsgIDException& operator=(const IMsgIDException&) = default;
};

}  // namespace foundation::core::except
