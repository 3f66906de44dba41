// Export macro and the namespace of the library.
//
// Every class and free function that engine modules call is marked QC_API. The library is
// built with hidden visibility, so anything without the mark stays private to it.
#pragma once

#if defined(QC_STATIC)
#define QC_API
#elif defined(_WIN32)
#if defined(QC_BUILDING_LIBRARY)
#define QC_API __declspec(dllexport)
#else
#define QC_API __declspec(dllimport)
#endif
#else
#define QC_API __attribute__((visibility("default")))
#endif

namespace Quillanor::Common {}
