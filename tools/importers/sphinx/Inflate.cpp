#include "sphinx/Inflate.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

#include <zlib.h>

namespace reference::importers::sphinx {
namespace {

// Owns the state that zlib keeps between the calls for one stream.
class InflateStream {
  public:
    InflateStream() {
        if (inflateInit(&m_state) != Z_OK)
            throw std::runtime_error("The decompressor could not be set up.");
    }
    ~InflateStream() { inflateEnd(&m_state); }
    InflateStream(const InflateStream&) = delete;
    InflateStream& operator=(const InflateStream&) = delete;

    [[nodiscard]] z_stream& state() noexcept { return m_state; }

  private:
    z_stream m_state{};
};

}  // namespace

std::string inflate(std::string_view compressed, std::size_t limit) {
    InflateStream stream;
    z_stream& state = stream.state();
    std::array<char, std::size_t{1} << 16U> buffer{};
    std::string plain;
    int status = Z_OK;
    while (status != Z_STREAM_END) {
        if (state.avail_in == 0) {
            if (compressed.empty())
                throw std::runtime_error("The compressed part ends early.");
            const std::size_t taken =
                std::min<std::size_t>(compressed.size(), std::numeric_limits<uInt>::max());
            // zlib takes a pointer to non-const but only reads through it.
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
            state.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(compressed.data()));
            state.avail_in = static_cast<uInt>(taken);
            compressed.remove_prefix(taken);
        }
        state.next_out = reinterpret_cast<Bytef*>(buffer.data());
        state.avail_out = static_cast<uInt>(buffer.size());
        status = ::inflate(&state, Z_NO_FLUSH);
        if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR)
            throw std::runtime_error(std::string("The compressed part is damaged: ") +
                                     (state.msg != nullptr ? state.msg : "not a zlib stream") +
                                     ".");
        const std::size_t got = buffer.size() - state.avail_out;
        if (got > limit - plain.size())
            throw std::runtime_error("The compressed part inflates to more than " +
                                     std::to_string(limit) + " bytes.");
        plain.append(buffer.data(), got);
    }
    return plain;
}

}  // namespace reference::importers::sphinx
