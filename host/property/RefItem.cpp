#include "property/RefItem.hpp"

#include <utility>

#include "foundation/core/NeverDestroyed.hpp"

namespace reference::property {
namespace {

// What items without storage refer to.
const WholeItem& emptyItem() {
    static const foundation::core::NeverDestroyed<WholeItem> empty(ItemHead{}, ItemBody{});
    return *empty;
}

}  // namespace

RefItem::RefItem(std::u16string href, std::vector<RefEntity> refEntities,
                 std::u16string packageName, std::u16string purpose, std::u16string introduced,
                 std::u16string description, AppThumbnail appThumbnail,
                 DeprecationStatus::Value deprecationStatus, std::vector<SyntaxGroup> syntaxGroups,
                 std::vector<Input> inputs, std::vector<InputGroup> inputGroups,
                 std::vector<Output> outputs, std::vector<ClassPropertyGroup> classPropertyGroups,
                 std::vector<SeeAlso> seeAlsoInfo, std::vector<Example> examples,
                 std::vector<Parameter> parameters)
    : RefItem(boost::intrusive_ptr<const SharedItem>(
          new WholeItem({.href = std::move(href),
                         .refEntities = std::move(refEntities),
                         .packageName = std::move(packageName),
                         .purpose = std::move(purpose),
                         .introduced = std::move(introduced),
                         .deprecationStatus = deprecationStatus},
                        {.description = std::move(description),
                         .appThumbnail = std::move(appThumbnail),
                         .syntaxGroups = std::move(syntaxGroups),
                         .inputs = std::move(inputs),
                         .inputGroups = std::move(inputGroups),
                         .outputs = std::move(outputs),
                         .classPropertyGroups = std::move(classPropertyGroups),
                         .seeAlsoInfo = std::move(seeAlsoInfo),
                         .examples = std::move(examples),
                         .parameters = std::move(parameters),
                         .replacements = {}}))) {}

RefItem& RefItem::operator=(RefItem&& other) noexcept {
    RefItem taken(std::move(other));
    m_item.swap(taken.m_item);
    const WholeItem* const mine = m_whole.load(std::memory_order_relaxed);
    m_whole.store(taken.m_whole.load(std::memory_order_relaxed), std::memory_order_relaxed);
    taken.m_whole.store(mine, std::memory_order_relaxed);
    return *this;
}

void RefItem::setReplacements(std::vector<SeeAlso> replacements) {
    if (replacements.empty() && getReplacements().empty())
        return;
    ItemBody changed = body();
    changed.replacements = std::move(replacements);
    *this =
        RefItem(boost::intrusive_ptr<const SharedItem>(new WholeItem(head(), std::move(changed))));
}

bool operator==(const RefItem& a, const RefItem& b) {
    return a.m_item == b.m_item || (a.head() == b.head() && a.body() == b.body());
}

const ItemHead& RefItem::head() const noexcept {
    return m_item ? m_item->head() : emptyItem().head();
}

// Several threads may read the body of one object for the first time at once; what the first of
// them stored is what all of them refer to.
const ItemBody& RefItem::body() const {
    if (const WholeItem* whole = m_whole.load(std::memory_order_acquire))
        return whole->body();
    if (!m_item)
        return emptyItem().body();
    boost::intrusive_ptr<const WholeItem> read = m_item->whole();
    const WholeItem* stored = nullptr;
    if (m_whole.compare_exchange_strong(stored, read.get(), std::memory_order_acq_rel))
        stored = read.detach();
    return stored->body();
}

}  // namespace reference::property
