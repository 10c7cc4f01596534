// Export.h - symbol visibility for the kvxml shared library.
//
// The library is built with hidden visibility; everything public carries
// KVXML_API so that its symbols and, for exceptions, its typeinfo are
// exported and can be caught across the shared-library boundary.
#pragma once

#if defined(_WIN32)
#  define KVXML_API
#else
#  define KVXML_API __attribute__((visibility("default")))
#endif
