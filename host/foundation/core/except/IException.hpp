#pragma once

#include "foundation/core/export.hpp"

namespace foundation::core::except {

// An error of the environment, whatever else it is derived from. Caught by reference.
class VELTRA_HOST_API IException {
  public:
    virtual ~IException();

    // What was wrong and what would be right, in UTF-8. Lives as long as the exception.
    [[nodiscard]] virtual const char* getMessage() const noexcept = 0;

  protected:
    IException() = default;
    IException(const IException&) = default;
    IException& operator=(const IException&) = default;
};

}  // namespace foundation::core::except
