#include "sphinx/DescriptionBody.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <string>
#include <utility>

#include "sphinx/BlockReader.hpp"
#include "sphinx/FieldLists.hpp"
#include "sphinx/RelatedLinks.hpp"
#include "sphinx/Sentence.hpp"
#include "sphinx/Text.hpp"
#include "sphinx/VersionBoxes.hpp"

namespace reference::importers::sphinx {
namespace {

bool isExamplesHeading(std::string_view heading) {
    const std::string text = lowered(heading);
    return std::ranges::any_of(
        std::initializer_list<std::string_view>{"example", "beispiel", "exemple", "ejemplo", "例",
                                                "使用例", "示例", "サンプル"},
        [&](std::string_view word) { return text.starts_with(word); });
}

// Under these headings, code illustrates the prose and is not an example of using the object.
bool isNotesHeading(std::string_view heading) {
    const std::string text = lowered(heading);
    return std::ranges::any_of(
        std::initializer_list<std::string_view>{"note", "reference", "warning", "algorithm"},
        [&](std::string_view word) { return text.starts_with(word); });
}

bool isSession(std::string_view code) {
    return trimmed(code).starts_with(">>>") || trimmed(code).starts_with("In [");
}

bool isSeeAlsoHeading(std::string_view heading) {
    return fieldRoleOf(heading) == FieldRole::SeeAlso;
}

// A paragraph of nothing but links says where to go, not what the object is.
bool isLinksOnly(Node paragraph) {
    return paragraph && std::ranges::all_of(contentOf(paragraph), [](Node node) {
               return node.isElement()
                          ? node.tag() == "a"
                          : node.ownText().find_first_not_of(" \t\r\n,.") == std::string_view::npos;
           });
}

// A paragraph that is a label and links ("Bases: A, B", "Source code: …") is no prose to take a
// purpose from.
bool isLabelledLinks(Node paragraph) {
    if (!paragraph)
        return false;
    const std::vector<Node> content = contentOf(paragraph);
    if (content.size() < 2)
        return false;
    const std::string label = inlineText(content.front());
    if (!label.ends_with(':') && !label.ends_with("：") && !label.starts_with("Bases: "))
        return false;
    return std::all_of(content.begin() + 1, content.end(), [](Node node) {
        if (node.isElement())
            return node.hasTag({"a", "code", "tt"});
        return node.ownText().find_first_not_of(" \t\r\n,[].") == std::string_view::npos;
    });
}

// The name of a parameter as a signature shows it, with a type, a default value and stars around
// it.
std::string parameterName(std::string_view parameter) {
    parameter = trimmed(parameter.substr(0, parameter.find_first_of("=:")));
    return std::string(parameter.substr(parameter.find_last_of(" *&") + 1));
}

// Optional parameters stand in brackets within the one before them: "key[, default]".
void addParameterNames(std::string_view parameter, std::set<std::string>& names) {
    constexpr std::string_view brackets = "[,]";
    const bool hasType = parameter.find(':') != std::string_view::npos;
    while (!parameter.empty()) {
        const std::size_t end = hasType
                                    ? parameter.size()
                                    : std::min(parameter.find_first_of(brackets), parameter.size());
        if (std::string name = parameterName(parameter.substr(0, end)); !name.empty())
            names.insert(std::move(name));
        parameter.remove_prefix(std::min(end + 1, parameter.size()));
    }
}

// Whether a text announces what comes after it.
bool isLeadIn(std::string_view text) {
    return text.ends_with(':') || text.ends_with("\uFF1A");
}

enum class Form {
    // Purpose, description, examples and so on, each in its own place.
    Parts,
    // Purpose, code and version boxes stay in the description, where the page has them.
    Whole
};

class BodyReader : public BlockReader {
  public:
    explicit BodyReader(DescriptionFacts& facts, Form form) : m_facts(facts), m_form(form) {}

    void read(const std::vector<Node>& nodes) {
        m_parent = nodes.empty() ? Node() : nodes.front().parent();
        m_hasParagraphs = std::ranges::any_of(nodes, [](Node node) {
            return node.tag() == "p" && !node.hasClass("rubric") && !contentOf(node).empty();
        });
        readNodes(nodes);
        endSection();
        m_facts.description = prose();
        judgeBoxes();
    }

  protected:
    void onParagraph(const InlineText& text, Node paragraph) override {
        m_isAfterCode = false;
        if (m_inSeeAlso && paragraph && !isNested()) {
            addLinks(paragraph);
            return;
        }
        // Marks such as "New reference." come before the paragraphs but are not paragraphs
        // themselves.
        const bool isProse = paragraph || !m_hasParagraphs;
        if (m_form == Form::Parts && !isNested() && m_facts.purpose.empty() && !m_inExamples &&
            isProse) {
            if (isLabelledLinks(paragraph)) {
                m_facts.bases = splitAtCommas(text.text().substr(text.text().find(':') + 1));
                addBlock(text.text());
                return;
            }
            if (isLinksOnly(paragraph)) {
                addBlock(text.text());
                return;
            }
            const std::size_t end = firstSentenceLength(text);
            m_facts.purpose = text.text().substr(0, end);
            m_facts.purposeParagraphRest =
                std::string(trimmed(std::string_view(text.text()).substr(end)));
            addBlock(m_facts.purposeParagraphRest);
        } else {
            addBlock(text.text());
        }
        m_lead = text;
    }

    // A bold paragraph within a section for examples only separates the examples.
    void onHeading(const std::string& text, bool isParagraph) override {
        if (isNested()) {
            BlockReader::onHeading(text, isParagraph);
            return;
        }
        m_isAfterCode = false;
        m_lead = {};
        m_exampleHeading = text;
        if (isParagraph && m_inExamples) {
            m_held.push_back(text);
            return;
        }
        endSection();
        m_heading = text;
        m_inExamples = m_form == Form::Parts && isExamplesHeading(text);
        m_inNotes = isNotesHeading(text);
        m_endsWithCode = isParagraph;
        m_inSeeAlso = isSeeAlsoHeading(text);
    }

    // Code blocks are examples, except that plain text counts only under a heading for examples,
    // and that under a heading for notes only recorded sessions count. Everything else is prose.
    void onCode(const Code& code) override {
        if (m_form == Form::Whole || (code.isLiteral && !m_inExamples) ||
            (m_inNotes && !isSession(code.text))) {
            BlockReader::onCode(code);
            return;
        }
        if (m_isAfterCode && code.caption.empty()) {
            m_facts.examples.back().code += "\n\n" + code.text;
            return;
        }
        const bool usesHeld = m_inExamples && !isNested();
        std::string title = usesHeld ? withoutColon(joined(m_held, "\n\n")) : takeLeadIn();
        if (title.empty())
            title = code.caption.empty() ? m_exampleHeading : code.caption;
        m_facts.examples.push_back({std::move(title), code.text});
        m_isAfterCode = true;
        m_lead = {};
        if (usesHeld)
            m_held.clear();
        if (m_inExamples && m_endsWithCode)
            m_inExamples = false;
    }

    void onSeeAlso(Node box) override { addLinks(box); }

    void onFieldList(Node list) override {
        if (isNested()) {
            BlockReader::onFieldList(list);
            return;
        }
        for (Field& field : readFieldList(list)) {
            if (field.role == FieldRole::SeeAlso)
                addLinks(list);
            else if (field.role == FieldRole::Prose ||
                     (field.role == FieldRole::Raises && m_form == Form::Whole))
                keep(fieldText(field));
            else if (field.role != FieldRole::Ignored)
                m_facts.fields.push_back(std::move(field));
        }
    }

    void onVersionBox(Node box) override {
        const VersionBox read = readVersionBox(box);
        const bool isOwn = !isNested() && box.parent() == m_parent;
        if (isOwn)
            m_boxes.push_back(read);
        if (m_form == Form::Parts && isOwn && read.change == VersionChange::Added &&
            read.explanation.empty() && !read.version.empty())
            return;
        const std::string text = joined(capture([&] { readChildren(box); }), "\n\n");
        if (isNested())
            addBlock(text);
        else if (!text.empty())
            keep(text);
    }

    void onTable(Node table) override {
        if (table.hasClass("autosummary") && fieldRoleOf(m_heading) == FieldRole::Properties)
            addSummarisedProperties(table);
        else if (m_inSeeAlso)
            addLinks(table);
        else
            BlockReader::onTable(table);
    }

    // Prose between examples introduces them and is held back for the title of the next one. What
    // comes after the last one goes to the description.
    void onBlock(std::string text) override {
        m_isAfterCode = false;
        m_lead = {};
        if (m_inExamples) {
            m_held.push_back(std::move(text));
            return;
        }
        // A heading counts only once something follows it.
        if (!m_heading.empty())
            keep(underlined(std::exchange(m_heading, {})));
        keep(std::move(text));
    }

  private:
    void endSection() {
        if (!m_held.empty()) {
            if (!m_heading.empty())
                keep(underlined(m_heading));
            for (std::string& text : m_held)
                keep(std::move(text));
        }
        m_held.clear();
        m_heading.clear();
        m_inExamples = false;
        m_inNotes = false;
        m_inSeeAlso = false;
    }

    // What the paragraph right before a code block says of it. A sentence that announces the code
    // ("For example:") moves to the example, since nothing would follow it in the description; any
    // other sentence stays in the description, too.
    std::string takeLeadIn() {
        const std::string& paragraph = m_lead.text();
        if (!isLeadIn(paragraph))
            return withoutColon(firstSentence(m_lead));
        const std::size_t begin = lastSentenceBegin(m_lead);
        const std::string sentence = paragraph.substr(begin);
        if (std::string* const block = lastBlock();
            block != nullptr && block->ends_with(sentence)) {
            block->resize(block->size() - sentence.size());
            *block = std::string(trimmed(*block));
            if (block->empty())
                dropLastBlock();
        }
        // A purpose that stands alone announces nothing.
        if (m_facts.purpose == sentence)
            m_facts.purpose = withoutColon(sentence) + ".";
        if (m_facts.purposeParagraphRest.ends_with(sentence)) {
            std::string& rest = m_facts.purposeParagraphRest;
            rest = std::string(trimmed(rest.substr(0, rest.size() - sentence.size())));
        }
        return withoutColon(sentence);
    }

    void addLinks(Node block) {
        std::ranges::move(readRelatedLinks(block), std::back_inserter(m_facts.seeAlso));
    }

    void addSummarisedProperties(Node table) {
        Field field;
        field.title = m_heading;
        field.role = FieldRole::Properties;
        for (Node row = table.next(table); row; row = row.next(table)) {
            const Node name = row.tag() == "tr" ? row.firstElement() : Node();
            if (name.tag() != "td")
                continue;
            const Node code = name.findTag("code");
            const std::string text = inlineText(code ? code : name);
            const Node purpose = name.nextElement();
            field.parts.push_back({.name = std::string(lastComponent(text)),
                                   .classifier = {},
                                   .text = purpose ? inlineText(purpose) : std::string()});
        }
        m_facts.fields.push_back(std::move(field));
    }

    // Names of parameters are known only once the fields have been read.
    void judgeBoxes() {
        BoxOwner owner;
        // Each box is compared with each name; no object has more than a few.
        constexpr std::size_t mostNames = 50;
        owner.names.assign(m_facts.names.begin(),
                           m_facts.names.begin() + static_cast<std::ptrdiff_t>(
                                                       std::min(mostNames, m_facts.names.size())));
        for (const SignatureFacts& signature : m_facts.signatures)
            for (const std::string& parameter : signature.parameters)
                addParameterNames(parameter, owner.parts);
        for (const Field& field : m_facts.fields)
            if (field.role == FieldRole::Inputs)
                for (const NamedPart& part : field.parts)
                    owner.parts.insert(part.name);
        for (const VersionBox& box : m_boxes) {
            if (box.change == VersionChange::Changed || concernsPart(box.explanation, owner))
                continue;
            if (box.change == VersionChange::Deprecated) {
                m_facts.isDeprecated = true;
                std::ranges::copy(box.links, std::back_inserter(m_facts.replacements));
            } else if (m_facts.introduced.empty())
                m_facts.introduced = box.version;
        }
    }

    DescriptionFacts& m_facts;
    Form m_form;
    Node m_parent;
    // The heading of the section, until it has been put into the description.
    std::string m_heading;
    std::string m_exampleHeading;
    // The paragraph that the next code block follows.
    InlineText m_lead;
    std::vector<std::string> m_held;
    std::vector<VersionBox> m_boxes;
    bool m_hasParagraphs = false;
    bool m_inExamples = false;
    bool m_inNotes = false;
    // Whether the section for examples is over with its first code block.
    bool m_endsWithCode = false;
    bool m_inSeeAlso = false;
    bool m_isAfterCode = false;
};

}  // namespace

void readDescriptionBody(const std::vector<Node>& nodes, DescriptionFacts& facts) {
    BodyReader(facts, Form::Parts).read(nodes);
}

std::string readExplanation(const std::vector<Node>& nodes) {
    DescriptionFacts facts;
    BodyReader(facts, Form::Whole).read(nodes);
    return facts.description;
}

}  // namespace reference::importers::sphinx
