// ConversionsCore.h - helpers shared by the CConversions sources: the "C" locale and the cheap whitespace step.
#pragma once

#include <locale.h>

#include <string>

#include "kvxml/values/WhitespaceUtils.h"

namespace KvXmlLib10 {
namespace detail {

/// A process-wide "C" locale object for the *_l conversions and uselocale,
/// so number text never depends on the process locale. Created once.
locale_t CNumericLocale();

/// Makes the "C" locale current for this thread while alive.
class ScopedCLocale {
public:
    ScopedCLocale() : m_previous(uselocale(CNumericLocale())) {}
    ~ScopedCLocale() { uselocale(m_previous); }
    ScopedCLocale(const ScopedCLocale&) = delete;
    ScopedCLocale& operator=(const ScopedCLocale&) = delete;

private:
    locale_t m_previous;
};

/// The text after the whitespace rule. Returns text itself when the rule
/// cannot change it (the common case: no whitespace at all), else the
/// rule's result stored in storage. Unknown rules throw as ApplyRule does.
const std::string& ApplyRuleCheap(CWhitespaceUtils::WhitespaceRule rule, const std::string& text,
                                  std::string& storage);

}  // namespace detail
}  // namespace KvXmlLib10
