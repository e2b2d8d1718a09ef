// The lookup records of all installed products, and what finds the few among them that may match.
// Internal: no public header includes it.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <boost/container/small_vector.hpp>

#include "docimage/LookupImage.hpp"
#include "docimage/NameTable.hpp"
#include "docimage/QuestionIndex.hpp"
#include "docparser/DocResource.hpp"
#include "docparser/ParsingResults.hpp"
#include "foundation/core/Once.hpp"
#include "property/HeaderInfo.hpp"
#include "property/RefItemLookup.hpp"
#include "reference/search/JoinedLexicon.hpp"
#include "reference/search/ReferenceRequestExt.hpp"
#include "reference/search/TextQuery.hpp"

namespace reference::search {

using LookupResources = std::map<std::u16string, docparser::DocResource<property::RefItemLookup>>;

// A frozen index over lookup resources; products are numbered in the order of their names. Any
// thread.
//
// Each product has tables of its own, which may lie in a file. Asking them one after the other
// takes time for each product. Where the resources come with one table of them all, that is asked;
// if not, it is made once many questions were asked: when asking has cost about as much as making
// it does. A process that looks up a name or two never pays for it.
class LookupIndex {
  public:
    struct Product {
        std::u16string name;
        property::HeaderInfo header;
    };

    // A key or href that may match, by its number in the product.
    struct Proposal {
        std::uint32_t product;
        std::uint32_t number;

        // What proposals are ordered by.
        [[nodiscard]] std::pair<std::uint32_t, std::uint32_t> place() const {
            return {product, number};
        }

        friend bool operator==(const Proposal&, const Proposal&) = default;
    };
    // Mostly a few.
    using Proposals = boost::container::small_vector<Proposal, 16>;

    // `known`: what is known of exactly these resources.
    LookupIndex(const LookupResources& resources, const docparser::InstalledIndex& known);
    LookupIndex(const LookupIndex&) = delete;  // shared by pointer
    LookupIndex& operator=(const LookupIndex&) = delete;
    ~LookupIndex();

    [[nodiscard]] const std::vector<Product>& products() const noexcept { return m_products; }
    // The product's records; opened, or made, when they are first asked for. Valid as long as the
    // index. Throws DamagedImage.
    [[nodiscard]] const docimage::LookupImage& lookup(std::uint32_t product) const {
        const auto* const known = m_sources[product].opened.load(std::memory_order_acquire);
        return known != nullptr ? *known : open(m_sources[product]);
    }

    // The number of the product of this short name.
    [[nodiscard]] std::optional<std::uint32_t> find(const std::u16string& name) const;

    // The products that are asked for and are there, each once, in their order.
    [[nodiscard]] std::vector<std::uint32_t> wantedProducts(const ReferenceRequestExt& ext) const;

    // Appends what one product has under the hash.
    void propose(std::uint32_t product, docimage::NameKind kind, std::uint32_t hash,
                 Proposals& proposals) const;

    // Appends what all products have under the hash, in their order.
    void proposeOfAll(docimage::NameKind kind, std::uint32_t hash, Proposals& proposals) const;

    // What loosely put questions are answered from; made when it is first asked for, unless it is
    // known. Throws std::length_error where there are more than 2^32 names.
    [[nodiscard]] const docimage::QuestionIndex& questions() const {
        const auto* const known = m_openedQuestions.load(std::memory_order_acquire);
        return known != nullptr ? *known : makeQuestions();
    }

    // The words of names and purposes that have the parts of a text, by product.
    [[nodiscard]] std::vector<JoinedLexicon::Found> wordsOfAll(const TextQuery& query) const;

  private:
    // Where the records of a product come from.
    struct Source {
        docparser::DocResource<property::RefItemLookup> resource;
        std::atomic<const docimage::LookupImage*> opened{nullptr};
        foundation::core::Once once;
        std::shared_ptr<const docimage::LookupImage> image;
    };
    // One kind of name of all products, with keys or hrefs numbered through.
    struct JoinedTable {
        std::shared_ptr<const void> owner;
        docimage::NameTable names;
    };
    // The table is owned, and null until it has been made.
    struct Kind {
        Kind() = default;
        Kind(const Kind&) = delete;
        Kind& operator=(const Kind&) = delete;
        ~Kind() { delete joined.load(std::memory_order_relaxed); }

        std::atomic<const JoinedTable*> joined{nullptr};
        std::atomic<std::size_t> questions{0};
        std::atomic_flag isBeingMade;
    };

    [[nodiscard]] const std::vector<std::uint32_t>& firstNumbers(docimage::NameKind kind) const;
    static const docimage::LookupImage& open(Source& source);
    [[nodiscard]] const JoinedTable* joinedTable(docimage::NameKind kind) const;
    [[nodiscard]] std::unique_ptr<const JoinedTable> join(docimage::NameKind kind) const;
    [[nodiscard]] std::vector<const docimage::LookupImage*> allLookups() const;
    const docimage::QuestionIndex& makeQuestions() const;

    std::vector<Product> m_products;
    mutable std::vector<Source> m_sources;
    // The number of each product's first key and first href among those of all.
    std::vector<std::uint32_t> m_firstKeys;
    std::vector<std::uint32_t> m_firstHrefs;
    bool m_isJoinable = false;
    mutable std::array<Kind, docimage::nameKinds> m_kinds;
    JoinedLexicon m_joinedWords;
    mutable foundation::core::Once m_questionsMade;
    mutable std::shared_ptr<const docimage::QuestionIndex> m_questions;
    mutable std::atomic<const docimage::QuestionIndex*> m_openedQuestions{nullptr};
};

}  // namespace reference::search
