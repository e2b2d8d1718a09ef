#pragma once

#include <filesystem>
#include <memory>

#include "engines/Engine.hpp"

namespace reference::bench {

// Xapian over the databases that fillXapian() made, in the system's file cache. One term is read
// from its posting list, which is what the matcher would do, without the matcher; a phrase goes
// through the matcher without weights and in any order.
class XapianEngine final : public Engine {
  public:
    explicit XapianEngine(std::filesystem::path folder);
    ~XapianEngine() override;
    [[nodiscard]] std::string name() const override { return "Xapian"; }
    [[nodiscard]] Meaning meaning(Ask ask, const Query& query) const override;
    void answer(Ask ask, const Query& query, Delivery& delivery) override;
    [[nodiscard]] std::unique_ptr<Engine> another() const override;

  private:
    struct Databases;
    std::filesystem::path m_folder;
    std::unique_ptr<Databases> m_databases;
};

}  // namespace reference::bench
