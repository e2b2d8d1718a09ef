// FileDocSource and DocResourceParser under many threads at once.
#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "docparser/DocParserException.hpp"
#include "docparser/DocResourceParser.hpp"
#include "fl/i18n/utf.hpp"
#include "host/docparser/Roots.hpp"
#include "support/MemorySource.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using docparser::DocResourceParser;

// Runs `work(number)` on several threads and waits for all of them.
template <typename Work>
std::vector<std::thread> startThreads(int count, Work work) {
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number)
        threads.emplace_back([work, number] { work(number); });
    return threads;
}

void joinAll(std::vector<std::thread>& threads) {
    for (auto& thread : threads)
        thread.join();
}

// Whether all records of a product are of the edition that its head names.
template <typename Resource>
bool isOfOneEdition(const Resource& resource) {
    for (const auto& [key, records] : resource.getItems())
        for (const auto& record : records)
            if (record.getPurpose() != resource.getHeaderInfo().getVersion())
                return false;
    return !resource.getItems().empty();
}

TEST(FileDocSourceConcurrencyTest, ReadersSeeWholeEditionsWhileOthersPublishAndClear) {
    const TempFolder root;
    const TempFolder package;
    publish(root, makeProduct(u"core", u"0"));
    publish(package, makeProduct(u"extra", u"0"));
    auto source = sourceOf({.docRoot = root.path(), .supportPackageRoots = {package.path()}});
    std::atomic<bool> done{false};
    std::atomic<int> mixed{0};
    std::atomic<int> broken{0};

    auto readers = startThreads(3, [&](int) {
        while (!done) {
            try {
                for (const auto& [name, lookup] : source.getResourceLookupFiles().installed)
                    mixed += isOfOneEdition(lookup) ? 0 : 1;
                for (const char16_t* product : {u"core", u"extra"})
                    for (const auto& [name, resource] : source.getResourceFile(product))
                        mixed += isOfOneEdition(resource) ? 0 : 1;
            } catch (const docparser::DocParserException& exception) {
                // The file was deleted by the second update after the manifest was read: it may be
                // missing, but what is read of it is sound.
                const docset::Fault& fault = exception.getFault();
                broken += fault.file.empty() || fault.line != 0 ? 1 : 0;
            }
            static_cast<void>(source.isProductInstalled(u"extra"));
            static_cast<void>(source.getSupportedDocLocales());
            static_cast<void>(source.listProducts());
        }
    });
    auto clearer = startThreads(1, [&](int) {
        while (!done)
            source.clearSupportPackageCaches();
    });
    for (int edition = 1; edition <= 20; ++edition) {
        const std::u16string name = fl::i18n::toUtf16(std::to_string(edition));
        publish(root, makeProduct(u"core", name));
        publish(package, makeProduct(u"extra", name));
    }
    done = true;
    joinAll(readers);
    joinAll(clearer);
    EXPECT_EQ(mixed, 0);
    EXPECT_EQ(broken, 0);
    source.clearSupportPackageCaches();
    EXPECT_EQ(lookupEdition(source, u"core"), u"20");
    EXPECT_EQ(lookupEdition(source, u"extra"), u"20");
}

TEST(DocResourceParserConcurrencyTest, TheSourceMayBeReplacedWhileOthersAsk) {
    const auto makeSource = [] {
        auto source = std::make_shared<MemorySource>();
        source->add(makeProduct(u"demo"));
        return source;
    };
    DocResourceParser::setSource(makeSource());
    std::atomic<bool> done{false};
    std::atomic<int> wrong{0};
    auto readers = startThreads(3, [&](int) {
        while (!done) {
            wrong += DocResourceParser::getResourceLookupFiles().installed.size() == 1 ? 0 : 1;
            wrong += DocResourceParser::getResourceFile(u"demo").size() == 1 ? 0 : 1;
            wrong += DocResourceParser::isProductInstalled(u"demo") ? 0 : 1;
        }
    });
    for (int round = 0; round < 200; ++round)
        DocResourceParser::setSource(makeSource());
    done = true;
    joinAll(readers);
    DocResourceParser::setSource(nullptr);
    EXPECT_EQ(wrong, 0);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
