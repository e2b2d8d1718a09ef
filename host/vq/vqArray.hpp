#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>

#include "foundation/core/export.hpp"
#include "zorb/Interned.hpp"

namespace zorb {
class COSInterface;
}

// A host object, as arrays hold it; null where there is none.
using COSInterfacePtr = boost::shared_ptr<zorb::COSInterface>;

class vqArray;
using vqArrayPtr = boost::intrusive_ptr<const vqArray>;

// What the elements of an array are.
enum class vqClass { UInt32, Double, String, Cell, Object, Enumeration };

// A value of the scripting language: a matrix of elements of one kind, by rows and columns.
// Elements are counted from 0, down the columns. Made by the functions of namespace matrix.
//
// Reference-counted. It may be written to while it has one owner and shares its elements with no
// other array. Once it is shared it never changes, and any number of threads may read it.
class VELTRA_HOST_API vqArray {
  public:
    // The elements, by kind. An enumeration's elements are the numbers of its members.
    using Numbers = std::vector<std::uint32_t>;
    using Doubles = std::vector<double>;
    using Strings = std::vector<std::u16string>;
    using Cells = std::vector<vqArrayPtr>;  // null: an empty cell
    using Objects = std::vector<COSInterfacePtr>;
    struct Enumeration {
        zorb::Interned classId;
        Numbers numbers;

        friend bool operator==(const Enumeration&, const Enumeration&) = default;
    };
    using Elements = std::variant<Numbers, Doubles, Strings, Cells, Objects, Enumeration>;

    // Requires: as many elements as rows by columns.
    vqArray(std::size_t rows, std::size_t columns, Elements elements);

    // Another array of the same elements, which the two share until one is written to.
    vqArray(const vqArray& other);
    vqArray& operator=(const vqArray&) = delete;  // an array stays what it is
    ~vqArray();

    [[nodiscard]] vqClass getClass() const noexcept {
        return static_cast<vqClass>(m_elements->index());
    }
    [[nodiscard]] std::size_t getRows() const noexcept { return m_rows; }
    [[nodiscard]] std::size_t getColumns() const noexcept { return m_columns; }
    [[nodiscard]] std::size_t getNumberOfElements() const noexcept { return m_rows * m_columns; }

    // The elements of one kind, as Numbers, Strings and so on; null when they are of another. Lives
    // as long as the array.
    template <typename Kind>
    [[nodiscard]] const Kind* getIf() const noexcept {
        return std::get_if<Kind>(m_elements.get());
    }

    // The same, to be written to; null also when the array is shared.
    template <typename Kind>
    [[nodiscard]] Kind* getIfWritable() noexcept {
        return isShared() ? nullptr : std::get_if<Kind>(m_elements.get());
    }

    // Whether anything else refers to this array or to its elements.
    [[nodiscard]] bool isShared() const noexcept;

    // Equal shape, kind and elements; cells by what they hold, objects by identity.
    friend VELTRA_HOST_API bool operator==(const vqArray& a, const vqArray& b);

    // How many arrays there are in this process, to find leaks.
    [[nodiscard]] static std::size_t getNumberOfLiveArrays() noexcept;

    friend VELTRA_HOST_API void intrusive_ptr_add_ref(const vqArray* array) noexcept;
    friend VELTRA_HOST_API void intrusive_ptr_release(const vqArray* array) noexcept;

  private:
    mutable std::atomic<std::size_t> m_references{0};
    std::size_t m_rows;
    std::size_t m_columns;
    std::shared_ptr<Elements> m_elements;
};
