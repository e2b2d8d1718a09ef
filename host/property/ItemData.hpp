// What stands behind RefItem: its fields, which copies share, and how those that are seldom read
// come into memory when they are.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include "foundation/core/export.hpp"
#include "property/AppThumbnail.hpp"
#include "property/ClassPropertyGroup.hpp"
#include "property/DeprecationStatus.hpp"
#include "property/Example.hpp"
#include "property/Input.hpp"
#include "property/InputGroup.hpp"
#include "property/Output.hpp"
#include "property/Parameter.hpp"
#include "property/RefEntity.hpp"
#include "property/SeeAlso.hpp"
#include "property/SyntaxGroup.hpp"

namespace reference::property {

// What search, order and lists of results read of an item.
struct ItemHead {
    std::u16string href;
    std::vector<RefEntity> refEntities;
    std::u16string packageName;
    std::u16string purpose;
    std::u16string introduced;
    DeprecationStatus::Value deprecationStatus = DeprecationStatus::Current;

    friend bool operator==(const ItemHead&, const ItemHead&) = default;
};

// The rest of it, which is read when somebody looks at the item itself.
struct ItemBody {
    std::u16string description;
    AppThumbnail appThumbnail;
    std::vector<SyntaxGroup> syntaxGroups;
    std::vector<Input> inputs;
    std::vector<InputGroup> inputGroups;
    std::vector<Output> outputs;
    std::vector<ClassPropertyGroup> classPropertyGroups;
    std::vector<SeeAlso> seeAlsoInfo;
    std::vector<Example> examples;
    std::vector<Parameter> parameters;
    std::vector<SeeAlso> replacements;

    friend bool operator==(const ItemBody&, const ItemBody&) = default;
};

class WholeItem;

// An item whose head is in memory, and whose body can be had. Immutable and shared; any thread.
class VELTRA_HOST_API SharedItem
    : public boost::intrusive_ref_counter<SharedItem, boost::thread_safe_counter> {
  public:
    explicit SharedItem(ItemHead head) : m_head(std::move(head)) {}
    SharedItem(const SharedItem&) = delete;  // shared by pointer
    SharedItem& operator=(const SharedItem&) = delete;
    virtual ~SharedItem();

    [[nodiscard]] const ItemHead& head() const noexcept { return m_head; }

    // The item with its body, never null: called once for each RefItem whose body is read. What is
    // returned is not kept here, so that items that nobody holds any more take no memory. Throws
    // only if memory runs out: where the body is stored, it was checked when this was made.
    [[nodiscard]] virtual boost::intrusive_ptr<const WholeItem> whole() const = 0;

  private:
    const ItemHead m_head;
};

// An item that is in memory as a whole.
class VELTRA_HOST_API WholeItem final : public SharedItem {
  public:
    WholeItem(ItemHead head, ItemBody body)
        : SharedItem(std::move(head)), m_body(std::move(body)) {}
    ~WholeItem() override;

    [[nodiscard]] const ItemBody& body() const noexcept { return m_body; }
    [[nodiscard]] boost::intrusive_ptr<const WholeItem> whole() const override;

  private:
    const ItemBody m_body;
};

}  // namespace reference::property
