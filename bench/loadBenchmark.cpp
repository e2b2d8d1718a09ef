// How fast the files of a real product are loaded: from the system's file cache to the finished
// contents, on one thread. The product is SciPy, imported from the pages of the Debian package
// python-scipy-doc. What is loaded is first compared with what was imported. A megabyte is a
// million bytes of JSON.

#include <cstddef>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#ifdef VELTRA_WITH_SIMDJSON
#include <simdjson.h>
#endif
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/json/monotonic_resource.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include "docset/Fault.hpp"
#include "docset/Manifest.hpp"
#include "docset/ProductDocumentation.hpp"
#include "docset/ProductFileReader.hpp"
#include "docset/publish.hpp"
#include "sphinx/ImportTree.hpp"
#include "support/TempFolder.hpp"

namespace reference::bench {
namespace {

namespace json = boost::json;

constexpr const char* scipyPages = "/usr/share/doc/python-scipy-doc/html";

void refuse(const docset::Fault& fault) {
    throw std::runtime_error(fault.toString());
}

// The imported product and the set that it was published to.
class Product {
  public:
    Product()
        : m_documentation(
              importers::sphinx::importTree({.source = scipyPages, .shortName = u"scipy"})
                  .documentation) {
        docset::publishProduct(m_root.path(), "en_US", m_documentation);
        const auto manifest = docset::readManifest(m_root.path(), refuse);
        m_files = manifest.value().products.at(0).files.at("en_US");
    }

    [[nodiscard]] std::string lookupText() const { return m_root.read(m_files.lookup); }
    [[nodiscard]] std::string referenceText() const { return m_root.read(m_files.reference); }

    [[nodiscard]] std::optional<docset::LookupContents> loadLookup() const {
        return docset::readLookupFile(m_root.path(), m_files.lookup, refuse);
    }
    [[nodiscard]] std::optional<std::vector<docset::ReferenceContents>> loadReference() const {
        return docset::readReferenceFile(m_root.path(), m_files.reference, refuse);
    }

    // Throws where what is loaded is not what was imported.
    void requireEqualWhenLoaded() const {
        const auto lookup = loadLookup().value();
        const auto reference = loadReference().value();
        if (!(lookup.header == m_documentation.header) ||
            lookup.entities != m_documentation.entities)
            throw std::runtime_error("The lookup file was not loaded as it was imported.");
        if (reference.size() != 1 || !(reference[0].header == m_documentation.header) ||
            reference[0].pages != m_documentation.pages)
            throw std::runtime_error("The reference file was not loaded as it was imported.");
    }

  private:
    tests::TempFolder m_root;
    docset::ProductDocumentation m_documentation;
    docset::ProductFiles m_files;
};

void registerTiming(const std::string& name, const std::function<void(benchmark::State&)>& run) {
#ifndef __clang_analyzer__  // which takes what the library keeps for a leak
    benchmark::RegisterBenchmark(name.c_str(), run)->Unit(benchmark::kMillisecond);
#else
    static_cast<void>(name);
    static_cast<void>(run);
#endif
}

// Times `make` without the destruction of what it makes. `bytes` is how much JSON it reads.
template <typename Make>
void time(const std::string& name, std::size_t bytes, Make make) {
    using Made = decltype(make());
    registerTiming(name, [bytes, make](benchmark::State& state) {
        for (auto _ : state) {
            auto made = make();
            auto* const address = &made;
            benchmark::DoNotOptimize(address);
            state.PauseTiming();
            static_cast<void>(Made(std::move(made)));
            state.ResumeTiming();
        }
        state.counters["MB/s"] = benchmark::Counter(static_cast<double>(bytes) / 1e6,
                                                    benchmark::Counter::kIsIterationInvariantRate);
    });
}

// The parsers alone, over a text in memory.
void timeParsers(const std::string& file, const std::string& text) {
    time("parse/Boost.JSON: " + file, text.size(), [text] {
        auto memory = std::make_unique<json::monotonic_resource>();
        json::value document = json::parse(text, memory.get());
        return std::pair(std::move(memory), std::move(document));
    });
#ifdef VELTRA_WITH_SIMDJSON
    const auto padded = std::make_shared<simdjson::padded_string>(text);
    time("parse/simdjson: " + file, text.size(), [padded] {
        auto parser = std::make_unique<simdjson::dom::parser>();
        static_cast<void>(parser->parse(*padded).value());
        return parser;
    });
#endif
}

void registerAll(const Product& product) {
    const std::string lookup = product.lookupText();
    const std::string reference = product.referenceText();
    time("load/lookup file", lookup.size(), [&product] { return product.loadLookup(); });
    time("load/reference file", reference.size(), [&product] { return product.loadReference(); });
    time("load/both", lookup.size() + reference.size(),
         [&product] { return std::pair(product.loadLookup(), product.loadReference()); });
    timeParsers("lookup file", lookup);
    timeParsers("reference file", reference);
}

}  // namespace
}  // namespace reference::bench

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    try {
        const reference::bench::Product product;
        product.requireEqualWhenLoaded();
        reference::bench::registerAll(product);
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
    } catch (const std::exception& problem) {
        std::cerr << problem.what() << '\n';
        return 1;
    }
    return 0;
}
