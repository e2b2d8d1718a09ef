#pragma once

#include <string>
#include <string_view>

namespace reference::importers::sphinx {

// A formula in TeX, without delimiters, as a line of Unicode text, or several where it has several
// lines: "\frac{x^2}{2\sigma}" gives "x²/(2σ)". A formula that holds anything which has no such
// form, or that is not sound, is returned as it is: a mixture of both would be harder to read than
// either. UTF-8. May be called from any thread.
[[nodiscard]] std::string mathText(std::string_view tex);

}  // namespace reference::importers::sphinx
