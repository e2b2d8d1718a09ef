#include "zorb/Interned.hpp"

#include <set>
#include <utility>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/NeverDestroyed.hpp"

namespace zorb {

// All names that were ever interned.
class InternedTexts {
  public:
    static Interned get(std::string&& name) {
        static foundation::core::NeverDestroyed<InternedTexts> texts;
        const foundation::core::MutexLock lock(texts->m_mutex);
        return Interned(&*texts->m_names.insert(std::move(name)).first);
    }

  private:
    foundation::core::Mutex m_mutex;
    std::set<std::string> m_names VELTRA_GUARDED_BY(m_mutex);  // addresses of elements are stable
};

const std::string& Interned::str() const {
    static const foundation::core::NeverDestroyed<std::string> none;
    return m_text == nullptr ? *none : *m_text;
}

Interned internal::makeInterned(std::string&& name) {
    return name.empty() ? Interned() : InternedTexts::get(std::move(name));
}

}  // namespace zorb
