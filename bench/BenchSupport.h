// BenchSupport.h - what the reading benchmarks share: C++ heap accounting and the bare-expat baseline.
//
// Include from exactly one source file of a benchmark program: it replaces
// the global operator new and delete of that program.
#pragma once

#include <expat.h>
#include <malloc.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>

namespace benchsupport {

// Off while timing, so the counting does not tax the timed runs.
inline bool g_counting = false;
inline int64_t g_live = 0;
inline int64_t g_peak = 0;

inline void* Counted(void* p) {
    if (!p) throw std::bad_alloc();
    if (g_counting) {
        g_live += static_cast<int64_t>(malloc_usable_size(p));
        if (g_live > g_peak) g_peak = g_live;
    }
    return p;
}

inline void Uncounted(void* p) {
    if (p && g_counting) g_live -= static_cast<int64_t>(malloc_usable_size(p));
    std::free(p);
}

inline std::size_t AlignedSize(std::size_t size, std::align_val_t align) {
    const auto a = static_cast<std::size_t>(align);
    return (size + a - 1) / a * a;
}

/// Peak C++ heap of one call beyond what was live before it (expat's own
/// mallocs are not seen).
template <class Action>
int64_t MeasurePeak(Action&& action) {
    g_live = 0;
    g_peak = 0;
    g_counting = true;
    action();
    g_counting = false;
    return g_peak;
}

inline void XMLCALL NoStart(void*, const XML_Char*, const XML_Char**) {}
inline void XMLCALL NoEnd(void*, const XML_Char*) {}
inline void XMLCALL NoText(void*, const XML_Char*, int) {}

/// The baseline: expat alone, namespace processing on, handlers doing
/// nothing, fed in the same 64 KiB pieces as the document reader. Returns
/// expat's error text, or null.
inline const char* ParseWithExpat(const std::string& text) {
    XML_Parser parser = XML_ParserCreateNS(nullptr, '|');
    XML_SetElementHandler(parser, NoStart, NoEnd);
    XML_SetCharacterDataHandler(parser, NoText);
    const char* error = nullptr;
    std::size_t done = 0;
    do {
        const std::size_t piece = std::min<std::size_t>(64 * 1024, text.size() - done);
        const bool last = done + piece == text.size();
        if (XML_Parse(parser, text.data() + done, static_cast<int>(piece), last) != XML_STATUS_OK) {
            error = XML_ErrorString(XML_GetErrorCode(parser));
            break;
        }
        done += piece;
    } while (done < text.size());
    XML_ParserFree(parser);
    return error;
}

}  // namespace benchsupport

void* operator new(std::size_t size) { return benchsupport::Counted(std::malloc(size ? size : 1)); }
void* operator new[](std::size_t size) { return benchsupport::Counted(std::malloc(size ? size : 1)); }
void* operator new(std::size_t size, std::align_val_t align) {
    return benchsupport::Counted(
        std::aligned_alloc(static_cast<std::size_t>(align), benchsupport::AlignedSize(size, align)));
}
void operator delete(void* p) noexcept { benchsupport::Uncounted(p); }
void operator delete[](void* p) noexcept { benchsupport::Uncounted(p); }
void operator delete(void* p, std::size_t) noexcept { benchsupport::Uncounted(p); }
void operator delete[](void* p, std::size_t) noexcept { benchsupport::Uncounted(p); }
void operator delete(void* p, std::align_val_t) noexcept { benchsupport::Uncounted(p); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { benchsupport::Uncounted(p); }
