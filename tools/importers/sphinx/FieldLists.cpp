#include "sphinx/FieldLists.hpp"

#include <algorithm>
#include <array>

#include "sphinx/BlockReader.hpp"
#include "sphinx/FieldItems.hpp"
#include "sphinx/InlineText.hpp"
#include "sphinx/Signature.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

struct Heading {
    std::string_view text;
    FieldRole role;
};

// Headings in lower case; the translations are those that pages in other languages use.
constexpr std::array headings = std::to_array<Heading>({
    {"parameters", FieldRole::Inputs},
    {"parameter", FieldRole::Inputs},
    {"params", FieldRole::Inputs},
    {"other parameters", FieldRole::Inputs},
    {"keyword arguments", FieldRole::Inputs},
    {"keyword args", FieldRole::Inputs},
    {"keyword parameters", FieldRole::Inputs},
    {"arguments", FieldRole::Inputs},
    {"argument", FieldRole::Inputs},
    {"args", FieldRole::Inputs},
    {"receives", FieldRole::Inputs},
    {"template parameters", FieldRole::Inputs},
    {"paramètres", FieldRole::Inputs},
    {"parámetros", FieldRole::Inputs},
    {"parâmetros", FieldRole::Inputs},
    {"параметры", FieldRole::Inputs},
    {"パラメータ", FieldRole::Inputs},
    {"引数", FieldRole::Inputs},
    {"参数", FieldRole::Inputs},
    {"매개변수", FieldRole::Inputs},
    {"returns", FieldRole::Outputs},
    {"return", FieldRole::Outputs},
    {"return value", FieldRole::Outputs},
    {"return values", FieldRole::Outputs},
    {"yields", FieldRole::Outputs},
    {"yield", FieldRole::Outputs},
    {"rückgabe", FieldRole::Outputs},
    {"renvoie", FieldRole::Outputs},
    {"devuelve", FieldRole::Outputs},
    {"retorna", FieldRole::Outputs},
    {"результат", FieldRole::Outputs},
    {"戻り値", FieldRole::Outputs},
    {"返回", FieldRole::Outputs},
    {"반환값", FieldRole::Outputs},
    {"return type", FieldRole::OutputType},
    {"rtype", FieldRole::OutputType},
    {"yield type", FieldRole::OutputType},
    {"rückgabetyp", FieldRole::OutputType},
    {"type renvoyé", FieldRole::OutputType},
    {"tipo del valor devuelto", FieldRole::OutputType},
    {"tipo de retorno", FieldRole::OutputType},
    {"тип результата", FieldRole::OutputType},
    {"戻り値の型", FieldRole::OutputType},
    {"返回类型", FieldRole::OutputType},
    {"반환 형식", FieldRole::OutputType},
    {"attributes", FieldRole::Properties},
    {"attribute", FieldRole::Properties},
    {"variables", FieldRole::Properties},
    {"instance variables", FieldRole::Properties},
    {"class variables", FieldRole::Properties},
    {"class attributes", FieldRole::Properties},
    {"properties", FieldRole::Properties},
    {"variablen", FieldRole::Properties},
    {"変数", FieldRole::Properties},
    {"变量", FieldRole::Properties},
    {"type", FieldRole::Type},
    {"型", FieldRole::Type},
    {"类型", FieldRole::Type},
    {"typ", FieldRole::Type},
    {"see", FieldRole::SeeAlso},
    {"see also", FieldRole::SeeAlso},
    {"methods", FieldRole::Ignored},
    {"raises", FieldRole::Raises},
    {"raise", FieldRole::Raises},
    {"except", FieldRole::Raises},
    {"exceptions", FieldRole::Raises},
    {"throws", FieldRole::Raises},
    {"warns", FieldRole::Raises},
    {"verursacht", FieldRole::Raises},
    {"lève", FieldRole::Raises},
    {"muestra", FieldRole::Raises},
    {"levanta", FieldRole::Raises},
    {"исключение", FieldRole::Raises},
    {"例外", FieldRole::Raises},
    {"抛出", FieldRole::Raises},
    {"예외 발생", FieldRole::Raises},
});

std::string_view withoutColon(std::string_view text) {
    text = trimmed(text);
    for (const std::string_view colon : {":", "："})
        if (text.ends_with(colon))
            text = trimmed(text.substr(0, text.size() - colon.size()));
    return text;
}

const Heading* findHeading(std::string_view text) {
    const std::string key = lowered(withoutColon(text));
    const auto* const found = std::ranges::find(headings, key, &Heading::text);
    return found != headings.end() ? found : nullptr;
}

bool isMarkedAsFieldList(Node node) {
    return node.hasTag({"dl", "table"}) && node.hasClass("field-list");
}

Field readField(std::string_view heading, const std::vector<Node>& bodies) {
    Field field;
    field.title = std::string(withoutColon(heading));
    field.role = fieldRoleOf(heading);
    for (const Node body : bodies)
        readFieldBody(body, field);
    // A return value that is only described has no name.
    if (field.role == FieldRole::Outputs && field.parts.empty() && !field.prose.empty()) {
        field.parts.push_back({.name = {}, .classifier = {}, .text = field.prose});
        field.prose.clear();
    }
    return field;
}

// Each part as a line, "name (type) – text"; the further lines of a text are indented.
std::vector<std::string> partLines(const Field& field) {
    std::vector<std::string> lines;
    for (const NamedPart& part : field.parts) {
        const std::string type = part.classifier.empty() ? "" : "(" + part.classifier + ")";
        std::string line = part.name;
        line.append(!part.name.empty() && !type.empty() ? " " : "").append(type);
        if (line.empty())
            line = part.text;
        else if (!part.text.empty())
            line = withLead(line + " –", part.text);
        lines.push_back(std::move(line));
    }
    return lines;
}

// The items may have several lines and paragraphs.
std::string listOf(const std::vector<std::string>& items) {
    std::string list;
    for (const std::string& item : items)
        list += (list.empty() ? "- " : "\n- ") + withSetLines(item, "  ");
    return list;
}

// <dt>heading</dt><dd>body</dd>, …
std::vector<Field> readDefinitionForm(Node list) {
    std::vector<Field> fields;
    for (Node node = list.firstElement(); node; node = node.nextElement()) {
        if (node.tag() != "dt")
            continue;
        std::vector<Node> bodies;
        for (Node body = node.nextElement(); body && body.tag() == "dd"; body = body.nextElement())
            bodies.push_back(body);
        fields.push_back(readField(inlineText(node), bodies));
    }
    return fields;
}

// Rows of a heading and a body cell; after a long heading the body stands in a row of its own.
std::vector<Field> readTableForm(Node table) {
    std::vector<Field> fields;
    std::string heading;
    for (Node node = table.next(table); node; node = node.next(table)) {
        if (node.hasClass("field-name")) {
            heading = inlineText(node);
        } else if (node.hasClass("field-body")) {
            fields.push_back(readField(heading, {node}));
        }
    }
    return fields;
}

}  // namespace

FieldRole fieldRoleOf(std::string_view heading) {
    const Heading* const found = findHeading(heading);
    return found != nullptr ? found->role : FieldRole::Prose;
}

bool isFieldList(Node node) {
    if (isMarkedAsFieldList(node))
        return true;
    if (node.tag() != "dl" || isObjectDescription(node) || node.hasClass("glossary"))
        return false;
    bool hasHeading = false;
    for (Node child = node.firstElement(); child; child = child.nextElement()) {
        if (child.tag() != "dt")
            continue;
        if (findHeading(inlineText(child)) == nullptr)
            return false;
        hasHeading = true;
    }
    return hasHeading;
}

std::vector<Field> readFieldList(Node list) {
    return list.tag() == "table" ? readTableForm(list) : readDefinitionForm(list);
}

std::string fieldText(const Field& field) {
    const std::vector<std::string> lines = partLines(field);
    if (lines.size() == 1 && field.prose.empty())
        return withLead(field.title + ":", lines.front());
    if (lines.empty())
        return field.prose.empty() ? std::string() : withLead(field.title + ":", field.prose);
    const std::string lead = field.prose.empty() ? std::string() : " " + field.prose;
    return field.title + ":" + lead + "\n" + listOf(lines);
}

std::string sectionText(const Field& field) {
    const std::vector<std::string> lines = partLines(field);
    if (lines.empty() && field.prose.empty())
        return {};
    std::string text = underlined(field.title);
    for (const std::string& block : {field.prose, listOf(lines)})
        if (!block.empty())
            text += "\n\n" + block;
    return text;
}

}  // namespace reference::importers::sphinx
