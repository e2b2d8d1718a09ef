#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "docset/ProductDocumentation.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"

namespace reference::tests {

// Makes documentation and requests at random, from a vocabulary so small that they often match:
// names share components and differ by case alone, texts are empty, end in dots, hold letters whose
// lower case has another length, and unpaired surrogates. The same seed makes the same things on
// every machine.
class Generator {
  public:
    explicit Generator(std::uint32_t seed) : m_random(seed) {}

    // A number below `limit`, which is not 0.
    [[nodiscard]] std::size_t below(std::size_t limit);
    [[nodiscard]] bool chance(unsigned percent) { return below(100) < percent; }

    template <typename T>
    [[nodiscard]] const T& pick(const std::vector<T>& choices) {
        return choices[below(choices.size())];
    }
    template <typename T>
    [[nodiscard]] T pick(std::initializer_list<T> choices) {
        return choices.begin()[below(choices.size())];
    }

    // A name of up to four components; sometimes empty or with a dot at an end.
    [[nodiscard]] std::u16string name();
    // A few words; often empty.
    [[nodiscard]] std::u16string text();
    [[nodiscard]] std::u16string href();
    [[nodiscard]] property::RefEntityType::Value type();
    [[nodiscard]] property::FunctionType::Value functionType();

    [[nodiscard]] property::RefItem item(std::u16string itemHref);
    [[nodiscard]] api::ReferenceData result();
    [[nodiscard]] std::vector<api::ReferenceData> results(std::size_t count);

    // A product whose records and items mostly, but not always, belong together.
    [[nodiscard]] docset::ProductDocumentation product(const std::u16string& shortName);

    // A product that can be published, which has its names from the same vocabulary: every text is
    // Unicode, and each record has its item.
    [[nodiscard]] docset::ProductDocumentation publishableProduct(const std::u16string& shortName);

    // A request over the same vocabulary, with any combination of options.
    [[nodiscard]] api::ReferenceRequest request();

  private:
    void addItem(const property::RefItem& made, docset::ProductDocumentation& product);
    [[nodiscard]] std::vector<std::u16string> texts(std::size_t most);
    [[nodiscard]] std::u16string component();

    std::mt19937 m_random;
};

// The names that generated products have.
inline const std::vector<std::u16string> productNames = {u"alpha", u"Alpha", u"pendrake",
                                                         u"veltra"};

}  // namespace reference::tests
