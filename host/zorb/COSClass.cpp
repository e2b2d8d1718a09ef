#include "zorb/COSClass.hpp"

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/NeverDestroyed.hpp"
#include "zorb/COSInterface.hpp"
#include "zorb/errors.hpp"

namespace zorb {
namespace {

using foundation::core::Mutex;
using foundation::core::MutexLock;
using foundation::core::NeverDestroyed;

struct Registry {
    Mutex mutex;
    std::map<std::string, std::unique_ptr<const COSClass>, std::less<>> classes
        VELTRA_GUARDED_BY(mutex);
};

// Made on first use: other libraries register their classes while they are loaded.
Registry& registry() {
    static NeverDestroyed<Registry> instance;
    return *instance;
}

std::atomic<std::size_t> liveObjects{0};

template <typename Named>
const Named* findByName(const std::vector<Named>& all, std::string_view name) noexcept {
    const auto found = std::ranges::find(all, name, &Named::name);
    return found == all.end() ? nullptr : &*found;
}

}  // namespace

COSInterface::COSInterface(void* native, const COSClass& objectClass) noexcept
    : m_native(native), m_class(objectClass) {
    ++liveObjects;
}

COSInterface::~COSInterface() {
    --liveObjects;
    m_class.describe().destroy(m_native);
}

std::size_t COSInterface::getNumberOfLiveObjects() noexcept {
    return liveObjects;
}

COSClass::COSClass(Description description)
    : m_description(std::move(description)),
      m_id(internal::makeInterned(m_description.packageName + "." + m_description.name)) {}

const COSClass* COSClass::findClass(std::string_view qualifiedName) {
    Registry& all = registry();
    const MutexLock lock(all.mutex);
    const auto found = all.classes.find(qualifiedName);
    return found == all.classes.end() ? nullptr : found->second.get();
}

const COSClass& COSClass::getClass(Interned id) {
    if (const COSClass* found = findClass(id.str()))
        return *found;
    throw UndefinedClassError({id.str()});
}

std::vector<const COSClass*> COSClass::getClasses() {
    Registry& all = registry();
    const MutexLock lock(all.mutex);
    std::vector<const COSClass*> classes;
    for (const auto& [name, one] : all.classes)
        classes.push_back(one.get());
    return classes;
}

const COSClass& COSClass::registerClass(Description description) {
    std::unique_ptr<const COSClass> made(new COSClass(std::move(description)));
    Registry& all = registry();
    const MutexLock lock(all.mutex);
    const auto [place, isNew] = all.classes.emplace(made->getId().str(), std::move(made));
    if (!isNew)
        throw std::logic_error("The class \"" + place->first + "\" is registered already.");
    return *place->second;
}

const Property* COSClass::findProperty(std::string_view name) const noexcept {
    return findByName(m_description.properties, name);
}

const Method* COSClass::findMethod(std::string_view name) const noexcept {
    return findByName(m_description.methods, name);
}

const Member* COSClass::findMember(std::uint32_t number) const noexcept {
    const auto& members = m_description.members;
    const auto found = std::ranges::find(members, number, &Member::number);
    return found == members.end() ? nullptr : &*found;
}

}  // namespace zorb
