#pragma once

#include <stdexcept>
#include <string>

#include "docset/Fault.hpp"
#include "foundation/core/export.hpp"

namespace reference::docparser {

// Documentation could not be read. what() says which file, where in it and why.
class VELTRA_HOST_API DocParserException : public std::runtime_error {
  public:
    // For a fault in a documentation set.
    explicit DocParserException(docset::Fault fault);

    // For a source of another kind: `problem` is the whole message.
    explicit DocParserException(const std::string& problem);

    ~DocParserException() override;
    DocParserException(const DocParserException&) = default;
    DocParserException& operator=(const DocParserException&) = default;

    // File, position and field; empty and 0 where the source names none. Lives as long as this.
    [[nodiscard]] const docset::Fault& getFault() const noexcept { return m_fault; }

  private:
    docset::Fault m_fault;
};

}  // namespace reference::docparser
