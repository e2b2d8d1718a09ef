#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "reference/api/ReferenceData.hpp"
#include "vref/Documentation.hpp"

namespace reference::tools {

// The addresses of the pages of many results, for links. The disk is asked once about each page. By
// one thread.
class PageAddresses {
  public:
    // `documentation` must outlive this object.
    explicit PageAddresses(const Documentation& documentation) : m_documentation(documentation) {}

    // The address of a result's page (see Documentation::placeOf()); empty where there is none.
    // ASCII.
    [[nodiscard]] std::string of(const api::ReferenceData& result);
    [[nodiscard]] std::string of(const std::u16string& product, const std::u16string& href);
    [[nodiscard]] std::vector<std::string> ofAll(std::span<const api::ReferenceData> results);

  private:
    using Page = std::pair<std::u16string, std::string>;  // product, href without fragment

    [[nodiscard]] const std::string* folderOf(const std::u16string& product);

    const Documentation& m_documentation;
    std::map<std::u16string, std::optional<std::string>> m_folders;
    std::map<Page, std::optional<PagePlace>> m_places;
};

}  // namespace reference::tools
