#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <boost/exception/exception.hpp>

#include "foundation/core/FixedString.hpp"
#include "foundation/core/except/IMsgIDException.hpp"
#include "foundation/core/except/MessageCatalog.hpp"

namespace foundation::core::except {

// The name of a message: its catalogue, and its key in that.
template <FixedString Catalog, FixedString Key>
struct MessageKey {
    static constexpr const char* catalog = Catalog.text;
    static constexpr const char* key = Key.text;
};

// The error behind one message identifier, which Key names:
//
//     throw Exception<MessageKey<"VELTRA:class", "RequireScalar">, std::exception, void>();
//
// Standard is the standard exception that it also is; Extension is void, or one more base. what()
// is the catalogue's text with the arguments filled in. It is also a boost::exception, to which a
// catcher may add information, and can be captured by boost::current_exception() and thrown again
// on another thread, as what it was and with what was added.
template <typename Key, typename Standard, typename Extension = void>
class Exception;

template <typename Key, typename Standard>
class Exception<Key, Standard, void> : public IMsgIDException,
                                       public Standard,
                                       public boost::exception,
                                       public virtual boost::exception_detail::clone_base {
  public:
    // `arguments` in UTF-8, for the places of the catalogue's text.
    explicit Exception(std::vector<std::string> arguments = {})
        : m_identifier(identifier()),
          m_arguments(std::move(arguments)),
          m_text(MessageCatalog::getText(m_identifier, m_arguments)) {}

    // The identifier that all errors of this type have; for MessageCatalog::addText.
    [[nodiscard]] static std::string identifier() {
        return std::string(Key::catalog) + ":" + Key::key;
    }

    [[nodiscard]] const char* what() const noexcept override { return m_text.c_str(); }
    [[nodiscard]] const char* getMessage() const noexcept override { return what(); }
    [[nodiscard]] const std::string& getIdentifier() const noexcept override {
        return m_identifier;
    }
    [[nodiscard]] const std::vector<std::string>& getArguments() const noexcept override {
        return m_arguments;
    }

    // For Boost.Exception: a copy on the heap that shares nothing with this, and throwing this
    // again.
    [[nodiscard]] const clone_base* clone() const override {
        auto copy = std::make_unique<Exception>(*this);
        boost::exception_detail::copy_boost_exception(copy.get(), this);
        return copy.release();
    }
    void rethrow() const override { throw *this; }

  private:
    std::string m_identifier;
    std::vector<std::string> m_arguments;
    std::string m_text;
};

}  // namespace foundation::core::except
