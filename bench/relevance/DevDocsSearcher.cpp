#include "relevance/DevDocsSearcher.hpp"

#include <algorithm>
#include <cstddef>

#include "relevance/DevDocsRule.hpp"

namespace reference::bench {
namespace {

// DevDocs shows no more entries, and looks for scattered letters only while there are fewer.
constexpr std::size_t mostEntries = 50;
constexpr std::size_t fewestScatteredLetters = 3;

}  // namespace

DevDocsSearcher::DevDocsSearcher(const std::vector<Entity>& entities) : m_entities(entities) {
    m_names.reserve(entities.size());
    for (const Entity& entity : entities)
        m_names.push_back(normalizedName(entity.name));
}

std::vector<std::string> DevDocsSearcher::ask(const std::string& question, std::size_t count) {
    struct Scored {
        int score;
        std::size_t entity;
    };
    const std::string normalized = normalizedQuestion(question);
    if (normalized.empty() || normalized == ".")
        return {};
    std::vector<Scored> scored;
    const auto scoreAll = [&](auto rule) {
        for (std::size_t entity = 0; entity < m_names.size(); ++entity)
            if (const auto score = rule(m_names[entity], normalized))
                scored.push_back({*score, entity});
    };
    scoreAll(containedScore);
    if (scored.size() < mostEntries && normalized.size() >= fewestScatteredLetters)
        scoreAll(scatteredScore);
    std::ranges::stable_sort(scored, std::ranges::greater(), &Scored::score);

    AnswerList answer(m_entities, count);
    for (std::size_t n = 0; n < std::min(scored.size(), mostEntries); ++n)
        answer.add(scored[n].entity);
    return answer.labels();
}

}  // namespace reference::bench
