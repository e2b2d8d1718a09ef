#include "docimage/ItemRecord.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "docimage/Image.hpp"
#include "docimage/unitBytes.hpp"
#include "docimage/varint.hpp"

namespace reference::docimage {
namespace {

using namespace property;

// The first number of a record.
enum Flags : std::uint32_t {
    HasProperties = 1,
};

class Writer {
  public:
    void number(std::uint32_t value) { appendVarint(value, m_bytes); }

    void text(const std::u16string& value) {
        const std::string bytes = toUnitBytes(value);
        number(toOffset(bytes.size()));
        m_bytes += bytes;
    }

    template <typename T, typename Write>
    void list(const std::vector<T>& elements, Write write) {
        number(toOffset(elements.size()));
        for (const T& element : elements)
            write(element);
    }

    void texts(const std::vector<std::u16string>& values) {
        list(values, [this](const std::u16string& value) { text(value); });
    }

    [[nodiscard]] std::string take() { return std::move(m_bytes); }

  private:
    std::string m_bytes;
};

class Reader {
  public:
    explicit Reader(std::string_view bytes) : m_bytes(bytes) {}

    [[nodiscard]] std::uint32_t number() { return takeVarint(m_bytes); }

    [[nodiscard]] std::u16string text() { return fromUnitBytes(bytes()); }

    [[nodiscard]] std::string_view bytes() {
        const std::uint32_t size = number();
        if (size > m_bytes.size())
            throw DamagedImage("A text in an image is longer than its item.");
        const std::string_view found = m_bytes.substr(0, size);
        m_bytes.remove_prefix(size);
        return found;
    }

    // Calls `read()` for each element of a list.
    template <typename Read>
    void forEach(Read read) {
        for (std::uint32_t left = number(); left > 0; --left)
            read();
    }

    template <typename Read>
    [[nodiscard]] auto list(Read read) {
        const std::uint32_t size = number();
        // Every element takes at least a byte.
        if (size > m_bytes.size())
            throw DamagedImage("A list in an image is longer than its item.");
        std::vector<decltype(read())> elements;
        elements.reserve(size);
        for (std::uint32_t at = 0; at < size; ++at)
            elements.push_back(read());
        return elements;
    }

    [[nodiscard]] std::vector<std::u16string> texts() {
        return list([this] { return text(); });
    }

    [[nodiscard]] bool isAtEnd() const noexcept { return m_bytes.empty(); }

  private:
    std::string_view m_bytes;
};

void writeInfo(Writer& writer, const ObjectInfo& info) {
    writer.text(info.getName());
    writer.text(info.getPurpose());
    writer.text(info.getHref());
    writer.texts(info.getValues());
}

void writeSeeAlso(Writer& writer, const SeeAlso& seeAlso) {
    writer.text(seeAlso.getPage());
    writer.text(seeAlso.getName());
}

// The arguments of a constructor in braces are read in their order.
template <typename Kind>
Kind readInfo(Reader& reader) {
    std::u16string name = reader.text();
    std::u16string purpose = reader.text();
    std::u16string href = reader.text();
    return Kind(std::move(name), std::move(purpose), std::move(href), reader.texts());
}

template <typename Kind>
std::vector<Kind> readInfos(Reader& reader) {
    return reader.list([&] { return readInfo<Kind>(reader); });
}

std::vector<SeeAlso> readSeeAlsos(Reader& reader) {
    return reader.list([&] { return SeeAlso{reader.text(), reader.text()}; });
}

bool isOfClass(const RefItem& item) {
    return std::ranges::any_of(item.getClassPropertyGroups(), [](const auto& group) {
        return !group.getClassProperties().empty();
    });
}

ItemHead readHead(Reader& reader) {
    static_cast<void>(reader.number());  // the flags
    ItemHead head;
    head.deprecationStatus = static_cast<DeprecationStatus::Value>(reader.number());
    head.href = reader.text();
    head.refEntities = reader.list([&] {
        const auto type = static_cast<RefEntityType::Value>(reader.number());
        const auto functionType = static_cast<FunctionType::Value>(reader.number());
        return RefEntity(type, reader.text(), functionType);
    });
    head.packageName = reader.text();
    head.purpose = reader.text();
    head.introduced = reader.text();
    return head;
}

ItemBody readBody(Reader& reader) {
    ItemBody body;
    body.description = reader.text();
    body.appThumbnail = AppThumbnail{reader.text(), reader.text()};
    body.syntaxGroups = reader.list([&] { return SyntaxGroup{reader.text(), reader.texts()}; });
    body.inputs = readInfos<Input>(reader);
    body.inputGroups = reader.list([&] {
        return InputGroup{reader.text(), readInfos<Input>(reader)};
    });
    body.outputs = readInfos<Output>(reader);
    body.classPropertyGroups = reader.list([&] {
        return ClassPropertyGroup{reader.text(), readInfos<ClassProperty>(reader)};
    });
    body.seeAlsoInfo = readSeeAlsos(reader);
    body.examples = reader.list([&] { return Example{reader.text(), reader.text()}; });
    body.parameters = reader.list([&] {
        return Parameter{reader.text(), reader.text(), reader.text()};
    });
    body.replacements = readSeeAlsos(reader);
    return body;
}

}  // namespace

std::string toItemRecord(const RefItem& item) {
    Writer writer;
    writer.number(isOfClass(item) ? HasProperties : 0U);
    writer.number(item.getDeprecationStatus());
    writer.text(item.getHref());
    writer.list(item.getRefEntities(), [&](const RefEntity& entity) {
        writer.number(entity.getRefEntityType());
        writer.number(entity.getFunctionType());
        writer.text(entity.getName());
    });
    writer.text(item.getPackageName());
    writer.text(item.getPurpose());
    writer.text(item.getIntroduced());

    const auto writeInfos = [&](const ObjectInfo& info) { writeInfo(writer, info); };
    const auto writeSeeAlsos = [&](const SeeAlso& seeAlso) { writeSeeAlso(writer, seeAlso); };
    writer.text(item.getDescription());
    writer.text(item.getAppThumbnail().getSource());
    writer.text(item.getAppThumbnail().getAlternativeText());
    writer.list(item.getSyntaxGroups(), [&](const SyntaxGroup& group) {
        writer.text(group.getTitle());
        writer.texts(group.getSyntaxes());
    });
    writer.list(item.getInputs(), writeInfos);
    writer.list(item.getInputGroups(), [&](const InputGroup& group) {
        writer.text(group.getTitle());
        writer.list(group.getInputs(), writeInfos);
    });
    writer.list(item.getOutputs(), writeInfos);
    writer.list(item.getClassPropertyGroups(), [&](const ClassPropertyGroup& group) {
        writer.text(group.getTitle());
        writer.list(group.getClassProperties(), writeInfos);
    });
    writer.list(item.getSeeAlsoInfo(), writeSeeAlsos);
    writer.list(item.getExamples(), [&](const Example& example) {
        writer.text(example.getTitle());
        writer.text(example.getCode());
    });
    writer.list(item.getParameters(), [&](const Parameter& parameter) {
        writer.text(parameter.getName());
        writer.text(parameter.getPurpose());
        writer.text(parameter.getDefaultValue());
    });
    writer.list(item.getReplacements(), writeSeeAlsos);
    return writer.take();
}

ItemHead readItemHead(std::string_view record) {
    Reader reader(record);
    return readHead(reader);
}

boost::intrusive_ptr<const WholeItem> readItem(std::string_view record) {
    Reader reader(record);
    ItemHead head = readHead(reader);
    ItemBody body = readBody(reader);
    if (!reader.isAtEnd())
        throw DamagedImage("An item in an image is followed by what is no part of it.");
    return new WholeItem(std::move(head), std::move(body));
}

// In the order of the record, which is not that of the item's other search, and need not be.
bool anySearchedText(std::string_view record, const std::function<bool(std::string_view)>& visit) {
    Reader reader(record);
    bool found = false;
    // What is not looked at is read all the same.
    const auto pass = [&] { static_cast<void>(reader.bytes()); };
    const auto lookAtText = [&] {
        const std::string_view text = reader.bytes();
        found = found || visit(text);
    };
    const auto lookAtInfo = [&] {
        lookAtText();  // name
        lookAtText();  // purpose
        pass();        // href
        reader.forEach(lookAtText);
    };
    static_cast<void>(reader.number());  // the flags
    static_cast<void>(reader.number());  // the status
    pass();                              // href
    reader.forEach([&] {
        static_cast<void>(reader.number());
        static_cast<void>(reader.number());
        lookAtText();
    });
    lookAtText();  // package
    lookAtText();  // purpose
    pass();        // introduced
    lookAtText();  // description
    pass();
    pass();  // app thumbnail
    reader.forEach([&] {
        lookAtText();
        reader.forEach(lookAtText);
    });
    reader.forEach(lookAtInfo);  // inputs
    reader.forEach([&] {         // input groups
        pass();
        reader.forEach([&] {
            pass();
            pass();
            pass();
            reader.forEach(pass);
        });
    });
    reader.forEach(lookAtInfo);  // outputs
    reader.forEach([&] {         // properties
        lookAtText();
        reader.forEach(lookAtInfo);
    });
    reader.forEach([&] {  // see also
        pass();
        lookAtText();
    });
    reader.forEach([&] {  // examples
        lookAtText();
        pass();
    });
    return found;
}

bool hasProperties(std::string_view record) {
    return (Reader(record).number() & HasProperties) != 0;
}

}  // namespace reference::docimage
