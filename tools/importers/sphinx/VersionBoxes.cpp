#include "sphinx/VersionBoxes.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "sphinx/InlineText.hpp"
#include "sphinx/Sentence.hpp"
#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

// Words that always mean a part of something.
constexpr std::array partWords = std::to_array<std::string_view>({
    "arg",      "args",           "argument",   "arguments", "behavior",  "behaviour",
    "call",     "calls",          "conversion", "feature",   "features",  "form",
    "forms",    "implementation", "input",      "inputs",    "keyword",   "keyword-argument",
    "keywords", "kwarg",          "kwargs",     "overload",  "parameter", "parameters",
    "params",   "semantics",      "signature",  "support",   "syntax",    "usage",
});

// Words that mean a part unless the object itself is called so: "this flag", or "the option" of an
// object that has no parameters.
constexpr std::array vaguePartWords = std::to_array<std::string_view>({
    "default",
    "flag",
    "flags",
    "format",
    "formats",
    "mode",
    "modes",
    "option",
    "options",
    "value",
    "values",
});

// Words that begin a sentence about a way to use the object, or about a condition.
constexpr std::array partBeginnings = std::to_array<std::string_view>(
    {"ability",     "accepting",     "added",         "allow",    "allowed",  "allowing",
     "automatic",   "automatically", "calling",       "creating", "giving",   "if",
     "implicit",    "implicitly",    "instantiating", "not",      "omitting", "opening",
     "passing",     "providing",     "returning",     "sending",  "setting",  "specifying",
     "subclassing", "supplying",     "support",       "using",    "when"});

// Words that begin advice about the object as a whole.
constexpr std::array wholeBeginnings = std::to_array<std::string_view>({
    "also",
    "deprecated",
    "function",
    "instead",
    "method",
    "moved",
    "new",
    "please",
    "prefer",
    "removed",
    "renamed",
    "replaced",
    "see",
    "superseded",
    "use",
});

constexpr std::array verbs = std::to_array<std::string_view>(
    {"are",      "can",     "cannot",   "could",   "did",   "do",       "does",
     "gives",    "had",     "has",      "have",    "is",    "makes",    "may",
     "might",    "must",    "needs",    "no",      "now",   "provides", "raises",
     "replaces", "require", "requires", "returns", "shall", "should",   "supports",
     "takes",    "uses",    "was",      "were",    "will",  "works",    "would"});

// Verbs with which a sentence lays down a rule.
constexpr std::array ruleVerbs =
    std::to_array<std::string_view>({"can", "cannot", "may", "must", "shall", "should"});

// What a sentence may call the object itself.
constexpr std::array objectWords = std::to_array<std::string_view>({
    "api",       "attribute", "class",     "constant", "constructor", "decorator", "exception",
    "function",  "functions", "interface", "macro",    "method",      "methods",   "module",
    "namespace", "object",    "package",   "property", "type",        "variable",
});

constexpr std::array articles = std::to_array<std::string_view>({"a", "an", "the"});
constexpr std::array pointers = std::to_array<std::string_view>({"these", "this"});

template <std::size_t Count>
bool isOneOf(std::string_view word, const std::array<std::string_view, Count>& sorted) {
    return std::ranges::binary_search(sorted, word);
}

bool isPartOfWord(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '\'' || c == '.' || static_cast<unsigned char>(c) >= 0x80;
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    for (const char c : text) {
        if (isPartOfWord(c))
            word += c;
        else if (!word.empty())
            words.push_back(std::exchange(word, {}));
    }
    if (!word.empty())
        words.push_back(std::move(word));
    for (std::string& each : words)
        while (each.ends_with('.'))
            each.pop_back();
    return words;
}

// The first stretch that begins with a digit; scripts without spaces may follow it at once.
std::string versionIn(std::string_view text) {
    const auto isVersionCharacter = [](char c) {
        return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' ||
               c == '-' || c == '+' || c == '_';
    };
    const auto begin = std::ranges::find_if(text, isDigit);
    const auto end = std::find_if_not(begin, text.end(), isVersionCharacter);
    std::string version(begin, end);
    while (!version.empty() && (version.back() == '.' || version.back() == '-'))
        version.pop_back();
    return version;
}

// Cross-references are set as code; other links lead to proposals, bug reports and prose.
std::vector<LinkFacts> entityLinks(Node box) {
    std::vector<LinkFacts> links;
    for (Node node = box.next(box); node; node = node.next(box)) {
        if (node.tag() != "a" || isPageFurniture(node) || !node.findTag("code"))
            continue;
        std::string name = inlineText(node);
        if (name.ends_with("()"))
            name.resize(name.size() - 2);
        links.push_back({std::string(node.attribute("href").value_or(std::string_view())),
                         std::move(name),
                         {}});
    }
    return links;
}

}  // namespace

bool isVersionBox(Node node) {
    return node.hasTag({"div", "p"}) &&
           node.hasAnyClass({"versionadded", "versionchanged", "deprecated", "deprecated-removed",
                             "versionremoved", "version-removed"});
}

VersionBox readVersionBox(Node box) {
    VersionBox result;
    if (box.hasClass("versionadded"))
        result.change = VersionChange::Added;
    else if (box.hasAnyClass({"deprecated", "deprecated-removed"}))
        result.change = VersionChange::Deprecated;
    result.text = inlineText(box);
    result.links = entityLinks(box);
    std::string lead;
    if (const Node span = box.findClass("versionmodified"))
        lead = inlineText(span);
    else
        lead = result.text.substr(0, result.text.find(':'));
    result.version = versionIn(lead);
    if (result.text.starts_with(lead)) {
        std::string_view rest = trimmed(std::string_view(result.text).substr(lead.size()));
        while (!rest.empty() && (rest.front() == ':' || rest.front() == '.'))
            rest = trimmed(rest.substr(1));
        result.explanation = std::string(rest);
    }
    return result;
}

namespace {

using Words = std::vector<std::string>;

template <std::size_t Count>
bool hasAny(const Words& words, const std::array<std::string_view, Count>& list) {
    return std::ranges::any_of(words,
                               [&](const auto& word) { return isOneOf(lowered(word), list); });
}

// The clause of the sentence that speaks of deprecation, if one does.
std::string_view decisiveClause(std::string_view sentence) {
    std::string_view rest = sentence;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(';'), rest.size());
        if (rest.substr(0, end).find("deprecated") != std::string_view::npos)
            return rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return sentence.substr(0, sentence.find(';'));
}

bool isOwnName(std::string_view word, const BoxOwner& owner) {
    return std::ranges::any_of(owner.names, [&](const std::string& name) {
        return lastComponent(name) == lastComponent(word) ||
               lowered(name).find(lowered(word)) != std::string::npos;
    });
}

// Whether a word is spelt like a name in code and unlike an ordinary word.
bool isCodeName(std::string_view word) {
    return word.find_first_of("._") != std::string_view::npos ||
           word.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", 1) != std::string_view::npos;
}

// "this function", "these methods", "this flag" directly one after the other.
bool pointsAtObject(const Words& subject) {
    for (std::size_t at = 0; at + 1 < subject.size(); ++at) {
        const std::string noun = lowered(subject[at + 1]);
        if (isOneOf(lowered(subject[at]), pointers) &&
            (isOneOf(noun, objectWords) || isOneOf(noun, vaguePartWords)))
            return true;
    }
    return false;
}

bool isVerb(const std::string& word) {
    return isOneOf(lowered(word), verbs) || word.ends_with("n't") || word.ends_with("n’t");
}

// "the typing.io namespace" in the description of something with another name.
bool namesOther(const Words& subject, const BoxOwner& owner) {
    return subject.size() == 2 && isCodeName(subject[0]) && !isOwnName(subject[0], owner) &&
           isOneOf(lowered(subject[1]), objectWords);
}

}  // namespace

// The explanation's first sentence decides; of its clauses the one with the word "deprecated", and
// of that the subject, that is, the words before the first verb:
//   1. a warning under a condition ("DeprecationWarning if …") concerns a part;
//   2. advice ("Use f() instead", "Renamed to g") the whole;
//   3. a sentence that begins with a condition or a way to use the object ("Passing None …"), or
//      "it is deprecated to …": a part;
//   4. "this function", "calls to this function", unless "with …" follows: the whole;
//   5. a word for a part in the subject ("The loop parameter is …"), a vague one only where it
//      cannot mean the object itself: a part;
//   6. the object's own name in the subject: the whole;
//   7. a mere "the SEEK_SET constants" without a verb: a part;
//   8. another module, class or function named as such, or something else that is named as in code
//      and said to be deprecated: a part;
//   9. a parameter's name as the subject, or any single name that is said to be deprecated: a part;
//  10. a rule for something that is not the object ("Group ids can only …"): a part;
//  11. anything else: the whole.
bool concernsPart(std::string_view explanation, const BoxOwner& owner) {
    InlineText paragraph;
    paragraph.addText(explanation);
    const std::string sentence = firstSentence(paragraph);
    const std::string lower = lowered(sentence);
    const bool warns = lower.find("deprecationwarning") != std::string::npos ||
                       lower.find("deprecation warning") != std::string::npos;
    if (warns &&
        (lower.find(" if ") != std::string::npos || lower.find(" when ") != std::string::npos))
        return true;

    const Words words = wordsOf(decisiveClause(sentence));
    if (words.empty())
        return false;
    const std::string opening = lowered(words.front());
    if (isOneOf(opening, wholeBeginnings) || lower.find(" consider using ") != std::string::npos)
        return false;
    const auto verb = std::ranges::find_if(words, isVerb);
    const auto first =
        words.begin() + (isOneOf(opening, articles) && verb != words.begin() ? 1 : 0);
    const Words subject(first, verb);
    const bool isSaidDeprecated = verb != words.end() && (*verb == "is" || *verb == "are") &&
                                  verb + 1 != words.end() && *(verb + 1) == "deprecated";

    if (opening == "it" && lower.starts_with("it is deprecated to"))
        return true;
    const bool hasCondition = std::ranges::find(subject, "with") != subject.end() ||
                              std::ranges::find(subject, "without") != subject.end();
    if (pointsAtObject(subject) && !hasCondition)
        return false;
    if (isOneOf(opening, partBeginnings))
        return true;
    const bool mayBeObject = subject.size() == 1 && owner.parts.empty();
    if (hasAny(subject, partWords) || (hasAny(subject, vaguePartWords) && !mayBeObject))
        return true;
    if (std::ranges::any_of(
            subject, [&](const auto& word) { return isCodeName(word) && isOwnName(word, owner); }))
        return false;
    if (verb == words.end() && first != words.begin())
        return true;
    if (namesOther(subject, owner) ||
        (isSaidDeprecated && std::ranges::any_of(subject, isCodeName)))
        return true;
    if (!subject.empty() && opening != "this" &&
        std::ranges::any_of(subject,
                            [&](const std::string& word) {
                                return owner.parts.contains(word) &&
                                       word.find('.') == std::string::npos &&
                                       !isOwnName(word, owner);
                            }) &&
        (subject.size() == 1 || !hasAny(subject, objectWords)))
        return true;
    const bool isRule = verb != words.end() && isOneOf(lowered(*verb), ruleVerbs);
    if (isRule && !subject.empty() && opening != "it" && !hasAny(subject, pointers) &&
        !hasAny(subject, objectWords))
        return true;
    const bool isLoneName =
        first == words.begin() && subject.size() == 1 && !isOwnName(subject.front(), owner);
    return isLoneName && (isSaidDeprecated || verb == words.end()) && opening != "it" &&
           opening != "this";
}

}  // namespace reference::importers::sphinx
