#include "docparser/DocParserException.hpp"

#include <utility>

namespace reference::docparser {

DocParserException::DocParserException(docset::Fault fault)
    : std::runtime_error(fault.toString()), m_fault(std::move(fault)) {}

DocParserException::DocParserException(const std::string& problem)
    : std::runtime_error(problem), m_fault{.problem = problem} {}

DocParserException::~DocParserException() = default;

}  // namespace reference::docparser
