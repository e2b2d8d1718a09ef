#pragma once

#include <filesystem>

#include "engines/Engine.hpp"

namespace reference::bench {

// Makes the process read its documentation from the set in `root`, of which nothing is loaded yet.
void openLibrary(const std::filesystem::path& root);
// The same with all of it loaded.
void loadLibrary(const std::filesystem::path& root);

// The library, with all of its caches filled. Each answer begins with a text: request and retriever
// are made for it.
class LibraryEngine final : public Engine {
  public:
    [[nodiscard]] std::string name() const override { return "library"; }
    [[nodiscard]] Meaning meaning(Ask ask, const Query& query) const override;
    void answer(Ask ask, const Query& query, Delivery& delivery) override;
    [[nodiscard]] std::unique_ptr<Engine> another() const override;
};

}  // namespace reference::bench
