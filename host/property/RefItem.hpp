#pragma once

#include <atomic>
#include <string>
#include <utility>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "foundation/core/export.hpp"
#include "property/ItemData.hpp"

namespace reference::property {

// One documentation entry: everything that a reference page says of the entity, or the few
// entities, that it documents together. Texts are UTF-16 and empty where the page says nothing;
// lists are in page order.
//
// A value of the size of two pointers: copies share storage that never changes, so copying an item,
// or ordering thousands of them, moves no text. An item that comes from stored documentation holds
// its head (href, entities, package, purpose, version, status) and reads its body when that is
// first asked for, once for each object.
//
// Separate objects may be used from separate threads, one object may be read from many. References
// from the getters stay valid until the object is changed or destroyed. Getters of the body throw
// only if memory runs out.
class VELTRA_HOST_API RefItem {
  public:
    // An item that says nothing: empty texts and lists, status Current.
    RefItem() noexcept = default;

    // `href` is the page, relative to the product's help folder, with a fragment where the page
    // documents more than this entry; `packageName` the package that the entities belong to;
    // `purpose` one sentence; `introduced` the version that brought the entity; `description` the
    // remaining prose, paragraphs separated by an empty line.
    RefItem(std::u16string href, std::vector<RefEntity> refEntities, std::u16string packageName,
            std::u16string purpose, std::u16string introduced, std::u16string description,
            AppThumbnail appThumbnail, DeprecationStatus::Value deprecationStatus,
            std::vector<SyntaxGroup> syntaxGroups, std::vector<Input> inputs,
            std::vector<InputGroup> inputGroups, std::vector<Output> outputs,
            std::vector<ClassPropertyGroup> classPropertyGroups, std::vector<SeeAlso> seeAlsoInfo,
            std::vector<Example> examples, std::vector<Parameter> parameters);

    // An item of the storage that `item` stands for; null for one that says nothing.
    explicit RefItem(boost::intrusive_ptr<const SharedItem> item) noexcept
        : m_item(std::move(item)) {}

    // A moved-from item says nothing. A body that has been read is shared with copies, too.
    RefItem(const RefItem& other) noexcept
        : m_item(other.m_item), m_whole(other.m_whole.load(std::memory_order_acquire)) {
        if (const WholeItem* whole = m_whole.load(std::memory_order_relaxed))
            intrusive_ptr_add_ref(whole);
    }
    RefItem(RefItem&& other) noexcept
        : m_item(std::move(other.m_item)), m_whole(other.m_whole.load(std::memory_order_relaxed)) {
        other.m_whole.store(nullptr, std::memory_order_relaxed);
    }
    RefItem& operator=(const RefItem& other) noexcept { return *this = RefItem(other); }
    RefItem& operator=(RefItem&& other) noexcept;
    ~RefItem() {
        if (const WholeItem* whole = m_whole.load(std::memory_order_relaxed))
            intrusive_ptr_release(whole);
    }

    [[nodiscard]] const std::u16string& getHref() const noexcept { return head().href; }
    [[nodiscard]] const std::vector<RefEntity>& getRefEntities() const noexcept {
        return head().refEntities;
    }
    [[nodiscard]] const std::u16string& getPackageName() const noexcept {
        return head().packageName;
    }
    [[nodiscard]] const std::u16string& getPurpose() const noexcept { return head().purpose; }
    [[nodiscard]] const std::u16string& getIntroduced() const noexcept { return head().introduced; }
    [[nodiscard]] DeprecationStatus::Value getDeprecationStatus() const noexcept {
        return head().deprecationStatus;
    }

    [[nodiscard]] const std::u16string& getDescription() const { return body().description; }
    [[nodiscard]] const AppThumbnail& getAppThumbnail() const { return body().appThumbnail; }
    [[nodiscard]] const std::vector<SyntaxGroup>& getSyntaxGroups() const {
        return body().syntaxGroups;
    }
    [[nodiscard]] const std::vector<Input>& getInputs() const { return body().inputs; }
    [[nodiscard]] const std::vector<InputGroup>& getInputGroups() const {
        return body().inputGroups;
    }
    [[nodiscard]] const std::vector<Output>& getOutputs() const { return body().outputs; }
    [[nodiscard]] const std::vector<ClassPropertyGroup>& getClassPropertyGroups() const {
        return body().classPropertyGroups;
    }
    [[nodiscard]] const std::vector<SeeAlso>& getSeeAlsoInfo() const { return body().seeAlsoInfo; }
    [[nodiscard]] const std::vector<Example>& getExamples() const { return body().examples; }
    [[nodiscard]] const std::vector<Parameter>& getParameters() const { return body().parameters; }

    // What the documentation says to use instead of a deprecated entity; mostly empty. Not a
    // parameter of the constructor, because few items have any. Setting it leaves copies alone.
    [[nodiscard]] const std::vector<SeeAlso>& getReplacements() const {
        return body().replacements;
    }
    void setReplacements(std::vector<SeeAlso> replacements);

    // An item that is independent of this one: nothing that happens to either is seen in the other.
    [[nodiscard]] RefItem copy() const noexcept { return *this; }

    // Compares everything that the two say.
    friend VELTRA_HOST_API bool operator==(const RefItem& a, const RefItem& b);

  private:
    [[nodiscard]] const ItemHead& head() const noexcept;
    [[nodiscard]] const ItemBody& body() const;

    // Null says nothing.
    boost::intrusive_ptr<const SharedItem> m_item;
    // The same item with its body, owned; null until the body is first read.
    mutable std::atomic<const WholeItem*> m_whole{nullptr};
};

}  // namespace reference::property
