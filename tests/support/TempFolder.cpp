#include "support/TempFolder.hpp"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <ios>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace reference::tests {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    std::string name = (fs::temp_directory_path() / "veltra-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), name);
    m_path = fs::canonical(name);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

void TempFolder::write(std::string_view relativePath, std::string_view content) const {
    const fs::path file = m_path / fs::path(relativePath);
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << content;
    stream.close();
    if (!stream)
        throw std::runtime_error("cannot write " + file.string());
}

std::string TempFolder::read(std::string_view relativePath) const {
    std::ifstream stream(m_path / fs::path(relativePath), std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + (m_path / fs::path(relativePath)).string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace reference::tests
