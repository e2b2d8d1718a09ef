#include "docparser/DocResourceParser.hpp"

#include <utility>

#include "docparser/FileDocSource.hpp"
#include "foundation/core/Mutex.hpp"

namespace reference::docparser {
namespace {

using foundation::core::Mutex;
using foundation::core::MutexLock;

Mutex sourceMutex;
std::shared_ptr<DocSource> currentSource VELTRA_GUARDED_BY(sourceMutex);  // null until first used

std::shared_ptr<DocSource> source() {
    const MutexLock lock(sourceMutex);
    if (!currentSource)
        currentSource = std::make_shared<FileDocSource>();
    return currentSource;
}

}  // namespace

DocSource::~DocSource() = default;

void DocResourceParser::setSource(std::shared_ptr<DocSource> source) {
    // The old source dies outside the lock: its destructor is foreign code.
    const MutexLock lock(sourceMutex);
    currentSource.swap(source);
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

std::vector<std::u16string> DocResourceParser::ParsingTools::getSupportedDocLocales() {
    return source()->getSupportedDocLocales();
}

}  // namespace reference::docparser
