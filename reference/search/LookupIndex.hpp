// The lookup records of all installed products, and what finds the few among them that may match.
// Internal: no public header includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "docimage/LookupImage.hpp"
#include "docparser/DocResource.hpp"
#include "property/HeaderInfo.hpp"
#include "property/RefItemLookup.hpp"
#include "reference/search/ReferenceRequestExt.hpp"

namespace reference::search {

using LookupResources = std::map<std::u16string, docparser::DocResource<property::RefItemLookup>>;

// A frozen index over lookup resources; products are numbered in the order of their names. Any
// thread.
class LookupIndex {
  public:
    struct Product {
        std::u16string name;
        property::HeaderInfo header;
        std::shared_ptr<const docimage::LookupImage> lookup;
    };

    // A key or href that may match, by its number in the product.
    struct Proposal {
        std::uint32_t product;
        std::uint32_t number;

        friend auto operator<=>(const Proposal&, const Proposal&) = default;
    };

    explicit LookupIndex(const LookupResources& resources);

    [[nodiscard]] const std::vector<Product>& products() const noexcept { return m_products; }
    // The number of the product of this short name.
    [[nodiscard]] std::optional<std::uint32_t> find(const std::u16string& name) const;

    // The products that are asked for and are there, each once, in their order.
    [[nodiscard]] std::vector<std::uint32_t> wantedProducts(const ReferenceRequestExt& ext) const;

    // Appends what one product has under the hash.
    void propose(std::uint32_t product, docimage::NameKind kind, std::uint32_t hash,
                 std::vector<Proposal>& proposals) const;

    // Appends what all products have under the hash, in their order.
    void proposeOfAll(docimage::NameKind kind, std::uint32_t hash,
                      std::vector<Proposal>& proposals) const;

  private:
    std::vector<Product> m_products;
};

}  // namespace reference::search
