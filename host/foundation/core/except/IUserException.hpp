#pragma once

#include "foundation/core/except/IException.hpp"

namespace foundation::core::except {

// An error that a user of the scripting language made and should be told about.
class VELTRA_HOST_API IUserException : public IException {
  public:
    ~IUserException() override;

  protected:
    IUserException() = default;
    IUserException(const IUserException&) = default;
    IUserException& operator=(const IUserException&) = default;
};

}  // namespace foundation::core::except
