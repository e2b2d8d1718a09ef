#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "docimage/LookupImage.hpp"
#include "docimage/PageImage.hpp"
#include "foundation/core/Once.hpp"
#include "property/HeaderInfo.hpp"

namespace reference::docparser {

namespace detail {

// The compiled form of a documentation file whose records are of type T.
template <typename T>
struct ImageOf;
template <>
struct ImageOf<property::RefItemLookup> {
    using Type = docimage::LookupImage;
};
template <>
struct ImageOf<property::RefItem> {
    using Type = docimage::PageImage;
};

inline std::map<std::u16string, std::vector<property::RefItemLookup>> itemsOf(
    const docimage::LookupImage& image) {
    return image.entities();
}
inline std::map<std::u16string, std::vector<property::RefItem>> itemsOf(
    const docimage::PageImage& image) {
    return image.pages();
}

}  // namespace detail

// A parsed documentation file, or one product's share of it: the product's header and records of
// type T by key. For lookup records the key is an entity's qualified name, for items it is an href.
//
// A value whose copies share the records, which never change. Where they come from a compiled
// image, the image may be opened, and the map of records made, when it is first asked for. Many
// threads may read one object, but none may use it while another changes it.
template <typename T>
class DocResource {
  public:
    using ItemMap = std::map<std::u16string, std::vector<T>>;
    using Image = typename detail::ImageOf<T>::Type;
    // Opens the image; never returns null. Throws docimage::DamagedImage where it cannot.
    using OpenImage = std::function<std::shared_ptr<const Image>()>;
    // Reads the records from what the image was made of, since it turned out to be damaged.
    using ReadAnew = std::function<ItemMap(const docimage::DamagedImage& damage)>;

    DocResource() : DocResource({}, ItemMap()) {}
    DocResource(property::HeaderInfo header, ItemMap items)
        : m_header(std::move(header)), m_records(std::make_shared<Records>()) {
        m_records->items = std::move(items);
    }
    // `image` must not be null; `readAnew` may be empty.
    DocResource(property::HeaderInfo header, std::shared_ptr<const Image> image,
                ReadAnew readAnew = {})
        : m_header(std::move(header)), m_records(std::make_shared<Records>()) {
        m_records->image = std::move(image);
        m_records->readAnew = std::move(readAnew);
    }
    // `open` must not be empty. It is called when the records are first asked for, from any thread,
    // and again after it threw.
    DocResource(property::HeaderInfo header, OpenImage open, ReadAnew readAnew = {})
        : m_header(std::move(header)), m_records(std::make_shared<Records>()) {
        m_records->open = std::move(open);
        m_records->readAnew = std::move(readAnew);
    }

    // References are valid until the object is changed or destroyed.
    [[nodiscard]] const property::HeaderInfo& getHeaderInfo() const noexcept { return m_header; }

    // Where the records come from an image that is damaged, or that was removed before it was
    // first asked for, they are read anew; throws what that throws, and docimage::DamagedImage
    // where there is no way to.
    [[nodiscard]] const ItemMap& getItems() const {
        if (m_records->open || m_records->image)
            m_records->itemsMade.call([this] { makeItems(); });
        return m_records->items;
    }

    // The image that the records come from; null where they were given as a map. Throws
    // docimage::DamagedImage where it cannot be opened.
    [[nodiscard]] const std::shared_ptr<const Image>& getImage() const {
        if (m_records->open)
            m_records->imageOpened.call([this] { m_records->image = m_records->open(); });
        return m_records->image;
    }

    // Takes the records out, without copying any that no other object shares; the object is left
    // with none.
    [[nodiscard]] ItemMap takeItems() {
        static_cast<void>(getItems());
        const auto taken = std::exchange(m_records, std::make_shared<Records>());
        return taken.use_count() == 1 ? std::move(taken->items) : taken->items;
    }

    friend bool operator==(const DocResource& a, const DocResource& b) {
        return a.m_header == b.m_header && a.getItems() == b.getItems();
    }

  private:
    struct Records {
        OpenImage open;     // empty where the image is open, or there is none
        ReadAnew readAnew;  // may be empty
        foundation::core::Once imageOpened;
        std::shared_ptr<const Image> image;
        foundation::core::Once itemsMade;
        ItemMap items;
    };

    void makeItems() const {
        try {
            m_records->items = detail::itemsOf(*getImage());
        } catch (const docimage::DamagedImage& damage) {
            if (!m_records->readAnew)
                throw;
            m_records->items = m_records->readAnew(damage);
        }
    }

    property::HeaderInfo m_header;
    std::shared_ptr<Records> m_records;  // null after the object was moved from
};

}  // namespace reference::docparser
