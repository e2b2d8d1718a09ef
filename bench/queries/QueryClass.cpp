#include "queries/QueryClass.hpp"

#include <array>

namespace reference::bench {
namespace {

using enum Ask;
using enum Pick;
using enum Tier;

constexpr auto classes = std::to_array<QueryClass>({
    {"name/exact", ExactHrefs, Names, Easy, "one probe finds it"},
    {"name/exact, results", ExactResults, Names, Typical,
     "from a text to name, href and purpose, the request made anew each time"},
    {"name/exact, miss", ExactHrefs, MissingNames, Easy, "a name that is one letter off"},
    {"name/any case", AnyCaseHrefs, ShoutedNames, Typical, "names typed in capitals"},
    {"name/last component", LastComponentHrefs, LastComponents, Typical,
     "what people type; common names have many hits"},
    {"name/last two components", LastTwoComponentsHrefs, LastTwoComponents, Typical,
     "class and method"},
    {"name/class with members", ClassResults, Classes, Typical, "one answer of many results"},
    {"name/page", PageResults, FileNames, Typical, "an address without its folders"},
    {"part, hrefs/rare", PartHrefs, RareWords, Easy, "1 to 3 records"},
    {"part, hrefs/medium", PartHrefs, MediumWords, Typical, "0.1 to 1 % of the records"},
    {"part, hrefs/frequent", PartHrefs, FrequentWords, Adversarial,
     "10 to 20 % of the records: what counts is handing them out"},
    {"part, hrefs/miss", PartHrefs, MissingWords, Easy, "words with two letters swapped"},
    {"part, hrefs/phrase", PartHrefs, Phrases, Typical, "two words"},
    {"part, hrefs/two letters", PartHrefs, TwoLetters, Adversarial,
     "too short for an index of three letters"},
    {"part, hrefs/not Latin", PartHrefs, NonLatinWords, Adversarial,
     "often a single letter, in many bytes"},
    {"part, results/rare", PartResults, RareWords, Easy, "1 to 3 records"},
    {"part, results/medium", PartResults, MediumWords, Typical, "0.1 to 1 % of the records"},
    {"part, results/frequent", PartResults, FrequentWords, Adversarial,
     "10 to 20 % of the records: what counts is handing them out"},
    {"part, results/miss", PartResults, MissingWords, Easy, "words with two letters swapped"},
    {"part, results/phrase", PartResults, Phrases, Typical, "two words"},
    {"part, results/two letters", PartResults, TwoLetters, Adversarial,
     "too short for an index of three letters"},
    {"part, results/not Latin", PartResults, NonLatinWords, Adversarial,
     "often a single letter, in many bytes"},
    {"text/rare", TextResults, RareWords, Easy, "1 to 3 items"},
    {"text/medium", TextResults, MediumWords, Typical, "0.1 to 1 % of the items"},
    {"text/frequent", TextResults, FrequentWords, Adversarial,
     "10 to 20 % of the items: what counts is handing them out"},
    {"text/miss", TextResults, MissingWords, Easy, "words with two letters swapped"},
    {"text/phrase", TextResults, Phrases, Typical, "two words"},
    {"text/two letters", TextResults, TwoLetters, Adversarial,
     "too short for an index of three letters"},
    {"text/not Latin", TextResults, NonLatinWords, Adversarial,
     "often a single letter, in many bytes"},
    {"text/punctuation", TextResults, Punctuation, Adversarial,
     "signs such as \"->\", which an index of words does not hold"},
});

}  // namespace

std::span<const QueryClass> queryClasses() {
    return classes;
}

std::string_view nameOf(Tier tier) {
    constexpr std::array<std::string_view, 3> names = {"easy", "typical", "adversarial"};
    return names[static_cast<std::size_t>(tier)];
}

bool answersWithResults(Ask ask) {
    return ask == ExactResults || ask == ClassResults || ask == PageResults || ask == PartResults ||
           ask == TextResults;
}

bool isAboutNames(Ask ask) {
    return ask != PartHrefs && ask != PartResults && ask != TextResults;
}

}  // namespace reference::bench
