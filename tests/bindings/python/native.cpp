// For the tests of the Python package: documentation at random, kept in memory, and what native
// code finds in it.
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <future>
#include <map>
#include <memory>
#include <new>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "docparser/DocResourceParser.hpp"
#include "foundation/core/except/MessageCatalog.hpp"
#include "reference/api/AllTextDataRetriever.hpp"
#include "reference/api/ClassEntityDataRetriever.hpp"
#include "reference/api/EntityPurposeDataRetriever.hpp"
#include "reference/api/PageNameDataRetriever.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "support/Comparators.hpp"
#include "support/Generator.hpp"
#include "support/MemorySource.hpp"
#include "zorb/ClassDescription.hpp"

namespace {

namespace py = pybind11;
using namespace reference::api;
using reference::cache_manager::ReferenceCacheManager;
using reference::docparser::DocResourceParser;
using reference::property::RefEntityType;
using reference::tests::ComparatorFields;
using reference::tests::Generator;
using reference::tests::MemorySource;

// Texts pass as lists of UTF-16 units, for they may hold unpaired surrogates.
using Units = std::vector<std::uint16_t>;

std::u16string toText(const Units& units) {
    return {units.begin(), units.end()};
}

Units toUnits(const std::u16string& text) {
    return {text.begin(), text.end()};
}

std::shared_ptr<MemorySource> useDocumentation(std::uint32_t seed) {
    auto source = std::make_shared<MemorySource>();
    Generator generator(seed);
    for (const auto& name : reference::tests::productNames)
        source->add(generator.product(name));
    DocResourceParser::setSource(source);
    ReferenceCacheManager::ClearAllCaches();
    return source;
}

void useDefaultDocumentation() {
    DocResourceParser::setSource(nullptr);
    ReferenceCacheManager::ClearAllCaches();
}

// Documentation whose lookup files are read only once letGoOn() is called; how they wait.
struct Gate {
    std::promise<void> reached;
    std::promise<void> opened;
    std::atomic<bool> wasGivenUp{false};
};
std::shared_ptr<Gate> gate;

constexpr std::chrono::seconds patience{20};

void useWaitingDocumentation() {
    gate = std::make_shared<Gate>();
    auto source = std::make_shared<MemorySource>();
    source->onLookupFiles([waiting = gate] {
        waiting->reached.set_value();
        waiting->wasGivenUp =
            waiting->opened.get_future().wait_for(patience) != std::future_status::ready;
    });
    DocResourceParser::setSource(source);
    ReferenceCacheManager::ClearAllCaches();
}

// Whether a search came to wait, and went on because of this call.
bool letGoOn() {
    bool isWaiting = false;
    {
        const py::gil_scoped_release release;
        isWaiting = gate->reached.get_future().wait_for(patience) == std::future_status::ready;
    }
    gate->opened.set_value();
    return isWaiting && !gate->wasGivenUp;
}

// Documentation whose lookup files throw what a test wants: "logic" or "memory".
void useFailingDocumentation(const std::string& kind) {
    auto source = std::make_shared<MemorySource>();
    source->onLookupFiles([kind] {
        if (kind == "memory")
            throw std::bad_alloc();
        throw std::logic_error("The lookup files are \xFF broken.");
    });
    DocResourceParser::setSource(source);
    ReferenceCacheManager::ClearAllCaches();
}

EntityCaseSensitivity::Value foldOf(const py::dict& properties) {
    return static_cast<EntityCaseSensitivity::Value>(
        properties["EntityCaseSensitivity"].cast<std::uint32_t>());
}
RefEntityType::Value typeOf(const py::dict& properties) {
    return static_cast<RefEntityType::Value>(properties["RefEntityType"].cast<std::uint32_t>());
}
std::u16string textOf(const py::dict& properties, const char* name) {
    return toText(properties[name].cast<Units>());
}

// A comparator described as (class name, properties), made by native means.
RefRequestComparator makeComparator(const py::tuple& described) {
    const auto properties = described[1].cast<py::dict>();
    ComparatorFields fields;
    if (properties.contains("EntityName"))
        fields.entityName = textOf(properties, "EntityName");
    if (properties.contains("PageName"))
        fields.pageName = textOf(properties, "PageName");
    if (properties.contains("ProductName"))
        fields.productName = textOf(properties, "ProductName");
    if (properties.contains("RefEntityType"))
        fields.refEntityType = typeOf(properties);
    if (properties.contains("EntityCaseSensitivity"))
        fields.caseSensitivity = foldOf(properties);
    if (properties.contains("Comparators"))
        for (const auto& one : properties["Comparators"])
            fields.comparators.push_back({.className = {},
                                          .object = {},
                                          .native = makeComparator(one.cast<py::tuple>()),
                                          .fields = {}});
    return reference::tests::makeNatively(described[0].cast<std::string>(), fields);
}

template <typename Retriever>
std::vector<ReferenceData> searchWith(ReferenceRequest request) {
    return Retriever(std::move(request)).getReferenceData();
}

// The results of a search made natively, each as (product, href, names of entities).
py::list search(const std::string& retriever, const py::dict& asked, const py::tuple& comparator) {
    static const std::map<std::string, std::vector<ReferenceData> (*)(ReferenceRequest)> searches =
        {{"ReferenceDataRetriever", searchWith<ReferenceDataRetriever>},
         {"AllTextDataRetriever", searchWith<AllTextDataRetriever>},
         {"ClassEntityDataRetriever", searchWith<ClassEntityDataRetriever>},
         {"EntityPurposeDataRetriever", searchWith<EntityPurposeDataRetriever>},
         {"PageNameDataRetriever", searchWith<PageNameDataRetriever>}};
    std::vector<RefEntityType::Value> types;
    for (const auto& type : asked["Types"])
        types.push_back(static_cast<RefEntityType::Value>(type.cast<std::uint32_t>()));
    std::vector<std::u16string> products;
    for (const auto& product : asked["Products"])
        products.push_back(toText(product.cast<Units>()));
    ReferenceRequest request(textOf(asked, "EntityText"), std::move(types), std::move(products));
    request.setEntityCaseSensitivity(foldOf(asked));
    request.setEntityPrecision(
        static_cast<EntityPrecision::Value>(asked["EntityPrecision"].cast<std::uint32_t>()));
    request.setRefRequestComparator(makeComparator(comparator));

    py::list found;
    for (const auto& result : searches.at(retriever)(std::move(request))) {
        std::vector<Units> names;
        for (const auto& entity : result.getRefItem().getRefEntities())
            names.push_back(toUnits(entity.getName()));
        found.append(py::make_tuple(toUnits(result.getHeaderInfo().getShortName()),
                                    toUnits(result.getRefItem().getHref()), names));
    }
    return found;
}

// A request at random, as the properties to set.
py::dict randomRequest(std::uint32_t seed) {
    Generator generator(seed);
    const ReferenceRequest request = generator.request();
    std::vector<std::uint32_t> types(request.getTypes().begin(), request.getTypes().end());
    std::vector<Units> products;
    for (const auto& product : request.getProducts())
        products.push_back(toUnits(product));
    py::dict properties;
    properties["EntityText"] = toUnits(request.getEntityText());
    properties["Types"] = types;
    properties["Products"] = products;
    properties["EntityCaseSensitivity"] =
        static_cast<std::uint32_t>(request.getEntityCaseSensitivity());
    properties["EntityPrecision"] = static_cast<std::uint32_t>(request.getEntityPrecision());
    return properties;
}

// A class that is registered after the package was imported, with a property of every shape.
class Late {
  public:
    [[nodiscard]] const std::u16string* getTextProperty() const noexcept { return &m_text; }
    void setTextProperty(const std::u16string* text) {
        if (text != nullptr)
            m_text = *text;
    }
    [[nodiscard]] const vqArray* getValueProperty() const noexcept { return m_value.get(); }
    void setValueProperty(const vqArray* value) { m_value.reset(value); }
    [[nodiscard]] std::u16string shout() const { return m_text + u"!"; }
    // Fails: objects are made without arguments.
    [[nodiscard]] std::u16string giveArgument() const {
        const vqArrayPtr text = matrix::createString(m_text);
        std::array arguments{text.get()};
        static_cast<void>(matrix::from_veltra(omConstructObjectWithClient(
            zorb::HostName<ReferenceRequest>::id(), 1, arguments.data(), COSGetPublicClient())));
        return m_text;
    }

    static const char* getZORBPackageName() noexcept { return "veltra.internal.test.late"; }
    static const char* getZORBClassName() noexcept { return "Late"; }

  private:
    std::u16string m_text;
    vqArrayPtr m_value;
};

void registerLate() {
    zorb::ClassDescription<Late>("Comes late.")
        .constructible()
        .text("Text", &Late::getTextProperty, &Late::setTextProperty, "A text.")
        .value("Objects", {.kind = zorb::Shape::ObjectArray}, &Late::getValueProperty,
               &Late::setValueProperty, "Objects.")
        .value("Cells", {.kind = zorb::Shape::CellArray, .mayBeNull = true},
               &Late::getValueProperty, &Late::setValueProperty, "Anything.")
        .value("One", {.kind = zorb::Shape::Object, .mayBeNull = true}, &Late::getValueProperty,
               &Late::setValueProperty, "Anything, too.")
        .method("shout", &Late::shout, "The text, louder.")
        .method("giveArgument", &Late::giveArgument, "Fails.")
        .registerClass();
}

}  // namespace

PYBIND11_MODULE(veltra_native, module) {
    module.def("use_documentation",
               [](std::uint32_t seed) { static_cast<void>(useDocumentation(seed)); });
    module.def("use_default_documentation", &useDefaultDocumentation);
    module.def("use_failing_documentation", &useFailingDocumentation);
    module.def("use_waiting_documentation", &useWaitingDocumentation);
    module.def("let_go_on", &letGoOn);
    module.def("search", &search);
    module.def("random_request", &randomRequest);
    module.def("register_late", &registerLate);
    module.def("message_identifiers", &foundation::core::except::MessageCatalog::getIdentifiers);
}
