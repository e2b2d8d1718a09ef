#include "engines/XapianEngine.hpp"

#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <xapian.h>

#include "corpus/Corpus.hpp"
#include "corpus/words.hpp"
#include "engines/fillXapian.hpp"

namespace reference::bench {
namespace {

void deliver(const std::string& data, bool hasResults, Delivery& delivery) {
    std::string_view rest = data;
    const auto take = [&rest] {
        const auto end = rest.find(textSeparator);
        const std::string_view text = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        return text;
    };
    const std::string_view product = take();
    const std::string_view href = take();
    if (!hasResults) {
        delivery.add(product, href);
        return;
    }
    const std::string_view name = take();
    delivery.add(product, href, name, rest);
}

std::string_view prefixOf(Ask ask) {
    switch (ask) {
        case Ask::AnyCaseHrefs:
            return "XFOLDED:";
        case Ask::LastComponentHrefs:
            return "XLAST:";
        case Ask::LastTwoComponentsHrefs:
            return "XLASTTWO:";
        case Ask::ClassResults:
            return "XCLASS:";
        case Ask::PageResults:
            return "XFILE:";
        default:
            return "XKEY:";
    }
}

std::vector<std::string> wordsOf(const std::string& text) {
    std::vector<std::string> words;
    forEachWord(text, [&](std::string_view word) {
        words.push_back(xapianTerm("", word));
        return true;
    });
    return words;
}

}  // namespace

struct XapianEngine::Databases {
    explicit Databases(const std::filesystem::path& folder)
        : records((folder / "records").string()),
          results((folder / "results").string()),
          items((folder / "items").string()) {}

    const Xapian::Database& of(Ask ask) const {
        return ask == Ask::TextResults ? items : answersWithResults(ask) ? results : records;
    }

    Xapian::Database records;
    Xapian::Database results;
    Xapian::Database items;
};

XapianEngine::XapianEngine(std::filesystem::path folder)
    : m_folder(std::move(folder)), m_databases(std::make_unique<Databases>(m_folder)) {}

XapianEngine::~XapianEngine() = default;

Meaning XapianEngine::meaning(Ask ask, const Query& query) const {
    if (isAboutNames(ask))
        return Meaning::Same;
    return wordsOf(query.folded).empty() ? Meaning::None : Meaning::WholeWords;
}

void XapianEngine::answer(Ask ask, const Query& query, Delivery& delivery) {
    const Xapian::Database& database = m_databases->of(ask);
    const bool hasResults = answersWithResults(ask);
    std::vector<std::string> terms;
    if (isAboutNames(ask))
        terms.push_back(
            xapianTerm(prefixOf(ask), ask == Ask::AnyCaseHrefs ? query.folded : query.utf8));
    else
        terms = wordsOf(query.folded);
    if (terms.size() == 1) {
        const auto end = database.postlist_end(terms[0]);
        for (auto found = database.postlist_begin(terms[0]); found != end; ++found)
            deliver(database.get_document(*found, Xapian::DOC_ASSUME_VALID).get_data(), hasResults,
                    delivery);
        return;
    }
    Xapian::Enquire enquire(database);
    enquire.set_query(Xapian::Query(Xapian::Query::OP_PHRASE, terms.begin(), terms.end(),
                                    static_cast<Xapian::termcount>(terms.size())));
    enquire.set_weighting_scheme(Xapian::BoolWeight());
    enquire.set_docid_order(Xapian::Enquire::DONT_CARE);
    const Xapian::MSet found = enquire.get_mset(0, database.get_doccount());
    for (auto hit = found.begin(); hit != found.end(); ++hit)
        deliver(hit.get_document().get_data(), hasResults, delivery);
}

std::unique_ptr<Engine> XapianEngine::another() const {
    return std::make_unique<XapianEngine>(m_folder);
}

}  // namespace reference::bench
