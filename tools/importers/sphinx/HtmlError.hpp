#pragma once

#include <stdexcept>

namespace reference::importers::sphinx {

// Why a page's text cannot be used as a tree; a sentence without the page's name.
class HtmlError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace reference::importers::sphinx
