#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

#include "reference/api/export.hpp"

namespace reference::ask {

// A question that cannot be asked. what() is a sentence in UTF-8 that says what is wrong and what
// would be right.
class VELTRA_REFERENCE_API QuestionError : public std::invalid_argument {
  public:
    // `position` and `length`, in UTF-16 units, are those of the wrong part of the question.
    // Control characters in what `problem` quotes become spaces; at a zero, what() would end.
    QuestionError(const std::string& problem, std::size_t position, std::size_t length);
    ~QuestionError() override;

    [[nodiscard]] std::size_t position() const noexcept { return m_position; }
    [[nodiscard]] std::size_t length() const noexcept { return m_length; }

  private:
    std::size_t m_position;
    std::size_t m_length;
};

}  // namespace reference::ask
