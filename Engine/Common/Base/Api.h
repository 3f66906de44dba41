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

// Class templates whose static data must be one object across the library and its users
// (singleton instance pointers). ELF unifies such instantiations when they are visible; on
// Windows the library exports explicit instantiations for its own types instead.
// QC_INSTANCE_API marks the explicit instantiation declarations in the header
// (`extern template class QC_INSTANCE_API tSingleton<cFoo>;`, before cFoo derives from it,
// after a `class QC_API cFoo;` forward declaration: a hidden cFoo would hide the instantiation);
// the definitions in the .cpp (`template class tSingleton<cFoo>;`) carry no attribute, which
// GCC would ignore there with an error on Windows.
#if defined(_WIN32) || defined(QC_STATIC)
#define QC_TEMPLATE_API
#define QC_INSTANCE_API QC_API
#else
#define QC_TEMPLATE_API __attribute__((visibility("default")))
#define QC_INSTANCE_API
#endif

namespace Quillanor::Common {}
