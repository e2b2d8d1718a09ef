// An image as the content of a file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "docimage/Image.hpp"
#include "files/FileStamp.hpp"
#include "foundation/core/export.hpp"

namespace reference::docimage {

enum class ImageKind : std::uint32_t { Lookup = 1, Pages = 2, Set = 3 };

// The version of the form that this code reads and writes. Anything that changes what is stored or
// how it is found (a section, the search form, the order of an item's fields) raises it; images of
// another version are passed over.
inline constexpr std::uint32_t imageFormatVersion = 5;

// The file that an image was made from; nothing for an image of several files, which says itself
// what it is of.
struct ImageSource {
    files::FileStamp stamp;
    std::uint64_t hash = 0;  // Image::hashOf its content

    friend bool operator==(const ImageSource&, const ImageSource&) = default;
};

// The content of the file of an image. After a header, which is hashed as a whole, come the
// sections from the next multiple of Image::blockSize on, and a hash for each block of them.
[[nodiscard]] VELTRA_HOST_API std::string toImageFile(const ImageWriter& image, ImageKind kind,
                                                      const ImageSource& source);

struct OpenedImage {
    std::shared_ptr<const Image> image;
    ImageSource source;
};

// The image in the content of a file, which `owner` keeps alive; `name` is for messages. Looks at
// the header and the hashes alone: what the sections hold is checked when it is looked at. Throws
// DamagedImage for what is not such a file of this version, kind and kind of machine, whole.
[[nodiscard]] VELTRA_HOST_API OpenedImage openImageFile(std::shared_ptr<const void> owner,
                                                        std::string_view content, ImageKind kind,
                                                        std::string name);

}  // namespace reference::docimage
