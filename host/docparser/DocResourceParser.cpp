#include "docparser/DocResourceParser.hpp"

#include <utility>

#include "docparser/FileDocSource.hpp"
#include "foundation/core/Mutex.hpp"
#include "foundation/core/NeverDestroyed.hpp"

namespace reference::docparser {
namespace {

using foundation::core::Mutex;
using foundation::core::MutexLock;
using foundation::core::NeverDestroyed;

struct State {
    Mutex mutex;
    std::shared_ptr<DocSource> source VELTRA_GUARDED_BY(mutex);  // null until first used
};
NeverDestroyed<State> s_state;

std::shared_ptr<DocSource> source() {
    State& state = *s_state;
    const MutexLock lock(state.mutex);
    if (!state.source)
        state.source = std::make_shared<FileDocSource>();
    return state.source;
}

}  // namespace

DocSource::~DocSource() = default;

void DocSource::passOverImages(const std::string& /*problem*/) {}

void DocResourceParser::setSource(std::shared_ptr<DocSource> source) {
    // The old source dies outside the lock: its destructor is foreign code.
    State& state = *s_state;
    const MutexLock lock(state.mutex);
    state.source.swap(source);
}

ParsingResults DocResourceParser::getResourceLookupFiles() {
    return source()->getResourceLookupFiles();
}

ReferenceResources DocResourceParser::getResourceFile(const std::u16string& resourceFile) {
    return source()->getResourceFile(resourceFile);
}

ReferenceRoots DocResourceParser::getReferenceRoots() {
    return source()->getReferenceRoots();
}

ProductLists DocResourceParser::getAllProducts(const std::u16string& docRoot,
                                               const std::vector<std::u16string>& locales,
                                               const std::u16string& locale) {
    return source()->getAllProducts(docRoot, locales, locale);
}

bool DocResourceParser::isProductInstalled(const std::u16string& product) {
    return source()->isProductInstalled(product);
}

void DocResourceParser::clearSupportPackageCaches() {
    source()->clearSupportPackageCaches();
}

void DocResourceParser::passOverImages(const std::string& problem) {
    source()->passOverImages(problem);
}

std::vector<std::u16string> DocResourceParser::ParsingTools::getSupportedDocLocales() {
    return source()->getSupportedDocLocales();
}

}  // namespace reference::docparser
