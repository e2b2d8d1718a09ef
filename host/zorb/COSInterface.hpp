#pragma once

#include <cstddef>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/export.hpp"
#include "vq/vqArray.hpp"
#include "zorb/Interned.hpp"

namespace zorb {

class COSClass;

// An object of the scripting language: it owns the native object that it wraps. Made by
// omWrapData(). One thread at a time may use the native object; a language with threads ensures
// that with getUseMutex().
class VELTRA_HOST_API COSInterface {
  public:
    // Takes over `native`, an object of the type that `objectClass` describes.
    COSInterface(void* native, const COSClass& objectClass) noexcept;
    COSInterface(const COSInterface&) = delete;  // an object has one identity
    COSInterface& operator=(const COSInterface&) = delete;
    ~COSInterface();

    [[nodiscard]] const COSClass& getClass() const noexcept { return m_class; }

    // Of the type that the class describes; omGetNative() asks for it safely.
    [[nodiscard]] void* getNative() const noexcept { return m_native; }

    // To be held while using the native object, if other threads might use it too. The object
    // system itself does not lock it.
    [[nodiscard]] foundation::core::Mutex& getUseMutex() noexcept { return m_useMutex; }

    // How many objects there are in this process, to find leaks.
    [[nodiscard]] static std::size_t getNumberOfLiveObjects() noexcept;

  private:
    void* const m_native;
    const COSClass& m_class;
    foundation::core::Mutex m_useMutex;
};

}  // namespace zorb
