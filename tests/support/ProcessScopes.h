// ProcessScopes.h - process-wide settings switched for one test and restored after it.
#pragma once

#include <clocale>
#include <string>

#include "kvxml/output/Encoder.h"

namespace KvXmlTest {

/// Switches the C locale for one test and restores the previous one.
class ScopedLocale {
public:
    explicit ScopedLocale(const char* name) : m_saved(std::setlocale(LC_ALL, nullptr)) {
        m_active = std::setlocale(LC_ALL, name) != nullptr;
    }
    ~ScopedLocale() { std::setlocale(LC_ALL, m_saved.c_str()); }
    bool Active() const { return m_active; }

private:
    std::string m_saved;
    bool m_active = false;
};

/// Turns the process-wide ASCIIOnly switch on for one test.
struct ScopedAsciiOnly {
    ScopedAsciiOnly() { KvXmlLib10::ASCIIOnly(true); }
    ~ScopedAsciiOnly() { KvXmlLib10::ASCIIOnly(false); }
};

}  // namespace KvXmlTest
