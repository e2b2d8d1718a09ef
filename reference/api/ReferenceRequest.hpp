#pragma once

#include <string>
#include <utility>
#include <vector>

#include "property/RefEntityType.hpp"
#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/EntityPrecision.hpp"
#include "reference/api/RefRequestComparator.hpp"
#include "reference/api/export.hpp"
#include "reference/utils/EnumerationProperty.hpp"
#include "vq/vqArray.hpp"

namespace reference::api {

// What a caller asks the reference library for: the text to look for, which kinds of entity and
// which products to consider, how to match the text and how to order the results.
//
// A plain value, copied into every retriever. For the scripting language it also keeps host values
// that stand for its native fields; copies share them. Many threads may read the native fields at
// the same time. One thread at a time may change an object or call a get…Property() function, which
// fills in a host value. Native operations fail only when memory runs out.
class VELTRA_REFERENCE_API ReferenceRequest {
  public:
    // Empty text, any type, any product, case and package count, results as they are found.
    ReferenceRequest();

    // As the default, for `text`: a name ("pkg.Class.method"), or words if the retriever searches
    // texts. Empty `types` admit every type, empty `products` every installed product. Products are
    // given by short name; letter case counts.
    explicit ReferenceRequest(std::u16string text);
    ReferenceRequest(std::u16string text, std::vector<property::RefEntityType::Value> types);
    ReferenceRequest(std::u16string text, std::vector<property::RefEntityType::Value> types,
                     std::vector<std::u16string> products);

    ReferenceRequest(const ReferenceRequest& other);
    ReferenceRequest& operator=(const ReferenceRequest& other);
    // The source is left with an empty text, no types, no products and no host values, and without
    // a comparator, which it needs before the next search.
    ReferenceRequest(ReferenceRequest&& other) noexcept;
    ReferenceRequest& operator=(ReferenceRequest&& other) noexcept;
    ~ReferenceRequest();

    // A request that every text matches: it finds all entities of the given types in the given
    // products. Only this function makes isAllTextMatch() true; no setter changes it.
    [[nodiscard]] static ReferenceRequest createMatchAllTextRequest(
        std::vector<property::RefEntityType::Value> types, std::vector<std::u16string> products);

    // The same as the copy constructor.
    [[nodiscard]] ReferenceRequest copy() const;

    // Append at the end. Duplicates are kept.
    void addProducts(std::vector<std::u16string> products);
    void addReferenceTypes(std::vector<property::RefEntityType::Value> types);

    [[nodiscard]] bool isAllTextMatch() const noexcept { return m_isAllTextMatch; }
    [[nodiscard]] bool isCaseSensitive() const noexcept {
        return m_caseSensitivity.get() == EntityCaseSensitivity::Sensitive;
    }
    [[nodiscard]] bool isExactMatch() const noexcept {
        return m_precision.get() == EntityPrecision::Exact_Match;
    }

    // Any 32-bit number is stored as it is.
    [[nodiscard]] EntityCaseSensitivity::Value getEntityCaseSensitivity() const noexcept {
        return m_caseSensitivity.get();
    }
    void setEntityCaseSensitivity(EntityCaseSensitivity::Value value) noexcept {
        m_caseSensitivity.set(value);
    }
    [[nodiscard]] EntityPrecision::Value getEntityPrecision() const noexcept {
        return m_precision.get();
    }
    void setEntityPrecision(EntityPrecision::Value value) noexcept { m_precision.set(value); }

    // References are valid until this object is changed or destroyed.
    [[nodiscard]] const std::u16string& getEntityText() const noexcept { return m_entityText; }
    void setEntityText(std::u16string text) { m_entityText = std::move(text); }
    [[nodiscard]] const std::vector<property::RefEntityType::Value>& getTypes() const noexcept {
        return m_types;
    }
    [[nodiscard]] const std::vector<std::u16string>& getProducts() const noexcept {
        return m_products;
    }

    // What orders the results. An empty function may be set, but a search that then finds two
    // results throws std::bad_function_call.
    [[nodiscard]] const RefRequestComparator& getRefRequestComparator() const noexcept {
        return m_comparator;
    }
    void setRefRequestComparator(RefRequestComparator comparator) {
        m_comparator = std::move(comparator);
    }

    // The properties as the scripting language sees them. A getter returns a host value that is
    // made once and valid until this object is changed or destroyed. Native setters leave it alone:
    // a property that a script has read or set shows that value until a script sets another.
    // Setters ignore null, except that of Types; one that throws changes nothing.
    [[nodiscard]] const std::u16string* getEntityTextProperty() const noexcept {
        return &m_entityText;
    }
    void setEntityTextProperty(const std::u16string* text);

    // A row of members of the enumeration RefEntityType. It is null until a script sets the types;
    // types that were given natively are not shown. The setter takes an enumeration array of any
    // shape; null and an empty array clear the types. Throws "VELTRA:class:RequireEnumeration" and,
    // for members of another enumeration, "VELTRA:class:RequireClass".
    [[nodiscard]] const vqArray* getTypesProperty() const noexcept { return m_typesCache.get(); }
    void setTypesProperty(const vqArray* types);

    // An array of texts. Unlike types, products that were given natively are shown. The setter
    // throws "VELTRA:class:RequireStringArray".
    [[nodiscard]] const vqArray* getProductsProperty() const;
    void setProductsProperty(const vqArray* products);

    // One enumeration member each; see utils::EnumerationProperty.
    [[nodiscard]] const vqArray* getEntityCaseSensitivityProperty() const;
    void setEntityCaseSensitivityProperty(const vqArray* value);
    [[nodiscard]] const vqArray* getEntityPrecisionProperty() const;
    void setEntityPrecisionProperty(const vqArray* value);

    // One comparator object; the setter copies it. A native function cannot be turned back into an
    // object, so the property shows an IndexOrderComparator until a script sets another, whatever
    // setRefRequestComparator() was given. The setter throws
    // "VELTRA:referenceapi:ExpectedScalarComparator" unless there is exactly one element, and
    // "VELTRA:referenceapi:InvalidComparator".
    [[nodiscard]] const vqArray* getComparatorProperty() const;
    void setComparatorProperty(const vqArray* value);

    [[nodiscard]] static const char* getZORBClassName() noexcept;
    [[nodiscard]] static const char* getZORBPackageName() noexcept;

  private:
    bool m_isAllTextMatch = false;
    std::u16string m_entityText;
    std::vector<property::RefEntityType::Value> m_types;
    std::vector<std::u16string> m_products;
    RefRequestComparator m_comparator;
    utils::EnumerationProperty<EntityCaseSensitivity::Value> m_caseSensitivity{
        EntityCaseSensitivity::Sensitive};
    utils::EnumerationProperty<EntityPrecision::Value> m_precision{EntityPrecision::Exact_Match};

    // What the scripting language sees; null until it is first read or set.
    vqArrayPtr m_typesCache;
    mutable vqArrayPtr m_productsCache;
    mutable vqArrayPtr m_comparatorCache;
};

}  // namespace reference::api
