#include "zorb/Interned.hpp"

#include <set>
#include <utility>

#include "foundation/core/Mutex.hpp"

namespace zorb {

// All names that were ever interned. Never destroyed: host objects may die after static objects do.
class InternedTexts {
  public:
    static Interned get(std::string&& name) {
        static auto* const texts = new InternedTexts;
        const foundation::core::MutexLock lock(texts->m_mutex);
        return Interned(&*texts->m_names.insert(std::move(name)).first);
    }

  private:
    foundation::core::Mutex m_mutex;
    std::set<std::string> m_names VELTRA_GUARDED_BY(m_mutex);  // addresses of elements are stable
};

const std::string& Interned::str() const {
    static const auto* const none = new std::string;
    return m_text == nullptr ? *none : *m_text;
}

Interned internal::makeInterned(std::string&& name) {
    return name.empty() ? Interned() : InternedTexts::get(std::move(name));
}

}  // namespace zorb
