#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "engines/Delivery.hpp"
#include "queries/Query.hpp"
#include "queries/QueryClass.hpp"

namespace reference::bench {

// How an engine's answer compares with the library's.
enum class Meaning : std::uint8_t {
    // The same pages or results.
    Same,
    // Only where the text's words stand as whole words, whatever stands between two of them.
    WholeWords,
    // Part of the work that no correct answer can do without; the answer is not looked at.
    Floor,
    // Cannot answer this.
    None,
};

// What can be asked: the library, or something that could be used in its place. One object serves
// one thread at a time; separate objects may be asked at the same time.
class Engine {
  public:
    Engine() = default;
    Engine(const Engine&) = delete;  // holds open databases
    Engine& operator=(const Engine&) = delete;
    virtual ~Engine() = default;

    [[nodiscard]] virtual std::string name() const = 0;
    [[nodiscard]] virtual Meaning meaning(Ask ask, const Query& query) const = 0;

    // Puts the whole answer into `delivery`. A page may come more than once. Called only for what
    // has a meaning.
    virtual void answer(Ask ask, const Query& query, Delivery& delivery) = 0;

    // Another one for another thread, over the same data.
    [[nodiscard]] virtual std::unique_ptr<Engine> another() const = 0;
};

}  // namespace reference::bench
