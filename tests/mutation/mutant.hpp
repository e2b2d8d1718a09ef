// What each changed place of the sources asks while mutants are judged: scripts/mutate puts this
// header before everything else.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <type_traits>
#include <unistd.h>

namespace veltra_mutation {

// The environment variable VELTRA_MUTANT is the number of the mutant that is at work. The file that
// VELTRA_MUTANTS_REACHED names has a byte for each number, which is set when the place is reached:
// it is mapped, so that nothing is lost when a test ends its process.
class Mutants {
  public:
    Mutants() {
        if (const char* const active = std::getenv("VELTRA_MUTANT"))
            m_active = std::strtoul(active, nullptr, 10);
        if (const char* const path = std::getenv("VELTRA_MUTANTS_REACHED"))
            map(path);
    }

    [[nodiscard]] bool isActive(unsigned long number) const {
        if (number < m_size)
            m_reached[number] = 1;
        return number == m_active;
    }

  private:
    void map(const char* path) {
        const int file = ::open(path, O_RDWR | O_CLOEXEC);
        if (file < 0)
            std::abort();
        const auto size = ::lseek(file, 0, SEEK_END);
        void* const start = ::mmap(nullptr, static_cast<unsigned long>(size),
                                   PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        ::close(file);
        if (start == MAP_FAILED)
            std::abort();
        m_reached = static_cast<unsigned char*>(start);
        m_size = static_cast<unsigned long>(size);
    }

    unsigned long m_active = 0;
    unsigned long m_size = 0;
    unsigned char* m_reached = nullptr;
};

// Whether the mutant of this number is at work. Constants of the compiler stay as they are.
constexpr bool on(unsigned long number) {
    if (std::is_constant_evaluated())
        return false;
    return [](unsigned long asked) {
        static const Mutants mutants;
        return mutants.isActive(asked);
    }(number);
}

}  // namespace veltra_mutation
