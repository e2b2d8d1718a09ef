#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include <boost/smart_ptr/shared_ptr.hpp>

#include "docparser/DocResource.hpp"
#include "property/RefEntityType.hpp"
#include "property/RefItem.hpp"
#include "property/RefItemLookup.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/cache_manager/ProductMatchData.hpp"
#include "reference/api/export.hpp"

namespace foundation::msg_svc::eventmgr {
class EventMgr;
class ScopedConnection;
}  // namespace foundation::msg_svc::eventmgr

namespace reference::cache_manager {

class ReferenceDataChangeEvent;

// The process-wide caches of parsed documentation, and the search for the pages that hold an
// entity. Static operations only; there is nothing to make an object for.
//
// Any thread, at any time. What a cache hands out is shared and never changes, so that a reader
// works without a lock and keeps old data alive while the caches are cleared; the one exception is
// described at GetResourceCache(). Parser exceptions pass through where nothing else is said.
class VELTRA_REFERENCE_API ReferenceCacheManager {
  public:
    using LookupCache = std::map<std::u16string, docparser::DocResource<property::RefItemLookup>>;
    using Resource = docparser::DocResource<property::RefItem>;
    using ResourceCache = std::map<std::u16string, std::shared_ptr<const Resource>>;

    // What a request's text is compared with. Any other number searches like ReferenceSearch.
    enum SearchMethod : std::uint32_t {
        ReferenceSearch = 0,       // the entity's name
        ClassEntitySearch = 1,     // the name of the class or of the member's class
        NameAndPurposeSearch = 2,  // a part of the name or of the purpose
        AllTextSearch = 3,         // nothing: every entity of the types is nominated
        PageNameSearch = 4,        // the whole href, with its fragment
    };

    // Which installed products document the requested entity, by product short name, and under
    // which hrefs. A product without a match has no entry; a requested product that is not
    // installed is no error. Loads the lookup caches when they are not loaded.
    [[nodiscard]] static std::map<std::u16string, ProductMatchData> GetProductsWithEntity(
        const api::ReferenceRequest& request, SearchMethod method);

    // Whether `searchText` occurs in `name` as it stands, or in `purpose`, which is lower-cased
    // first unless `caseSensitive`. For a search that folds case, the caller passes text and name
    // in lower case. An empty text occurs nowhere. Throws only if memory runs out.
    [[nodiscard]] static bool IsNameAndPurposeContentMatch(const std::u16string& searchText,
                                                           const std::u16string& name,
                                                           const std::u16string& purpose,
                                                           bool caseSensitive);

    // Whether entities of this type have members: classes, enumerations and interfaces.
    [[nodiscard]] static bool IsClassLikeType(property::RefEntityType::Value type);

    // The lookup resources of the installed products, and of those that are known but not
    // installed, by product short name. Never null, empty while nothing is loaded: these do not
    // load.
    [[nodiscard]] static std::shared_ptr<const LookupCache> GetLookupCache();
    [[nodiscard]] static std::shared_ptr<const LookupCache> GetUninstalledLookupCache();

    // The resources that have been parsed so far, by product short name. Never null. Other threads
    // may add to the very map that is returned: iterate it only while none of them searches, and
    // use GetResourceCacheForProduct() otherwise.
    [[nodiscard]] static std::shared_ptr<const ResourceCache> GetResourceCache();

    // The resource of `product`, parsed from `resourceFile` (a reference file name or a product
    // short name) when it is not cached. Null when the file does not hold the product; what else
    // the file holds is cached too, without displacing what is there. One thread at a time parses.
    [[nodiscard]] static std::shared_ptr<const Resource> GetResourceCacheForProduct(
        const std::u16string& resourceFile, const std::u16string& product);

    // Load the lookup caches. Both are filled or neither: while either of the two is filled, none
    // of these does anything.
    static void PopulateLookupCache();
    static void PopulateUninstalledLookupCache();
    static void PopulateLookupCaches();

    // Parses the resource files of all installed products. A product that cannot be parsed is left
    // out.
    static void PopulateResourceCache();

    // Loads everything, and counts as start-up.
    static void PopulateAllCaches();

    static void ClearLookupCache();
    static void ClearUninstalledLookupCache();
    static void ClearLookupCaches();
    static void ClearResourceCache();

    // Empties all caches, then publishes one ReferenceDataChangeEvent, on this thread and holding
    // no lock, then makes the parser forget what it keeps of support packages. Without an event
    // manager nothing is published. Throws what the event-manager function throws, such as
    // std::bad_function_call where it is empty; the caches are then cleared all the same.
    static void ClearAllCaches();

    // Warms the library up while requests may already arrive: installs the language listener, loads
    // the lookup caches and parses the files of the ten products that are wanted first, then counts
    // as start-up. The host calls it once, on a thread of its choosing; calling it again does what
    // is still to be done. Logs the seconds that it took on the channel "referenceApi::startup", at
    // severity 8. A product that cannot be parsed is left out; what the parser throws for the
    // lookup files is thrown.
    static void PerformStartupOperations();

    // Whether the caches have been warmed once; stays true from then on.
    [[nodiscard]] static bool IsStartupDone();
    static void SetStartupDone();

    // From now on, and for the life of the process, a change of the setting
    // "veltra.desktop.help.DocLanguage" of the current context clears all caches, on the thread
    // that makes the change; before start-up is done it does nothing. Installed once. Throws
    // nothing: where it cannot be installed, the next call tries again.
    static void InitializeListener();

    // How the library reaches the event manager: `f` is called for each publication and each
    // subscription, on the thread that wants it, and may return null for "there is none". Until it
    // is set, and again after the reset, the library uses the event manager of the process's
    // current virtual machine.
    // Requires: no other operation is under way; the function is read without a lock.
    static void SetGetEventMgrFcn(
        const std::function<boost::shared_ptr<foundation::msg_svc::eventmgr::EventMgr>()>& f);
    static void ResetGetEventMgrFcn();

    // Calls `callback` for every ReferenceDataChangeEvent, on the thread that publishes it, until
    // `connection` is reset or destroyed. A connection that it held before ends. Without an event
    // manager it stays as it was. Throws what the event-manager function throws, and
    // std::invalid_argument for an empty callback.
    static void SubscribeToDataChangeEvent(
        foundation::msg_svc::eventmgr::ScopedConnection& connection,
        const std::function<void(const ReferenceDataChangeEvent&)>& callback);
};

}  // namespace reference::cache_manager
