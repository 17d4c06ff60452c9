#pragma once

/**
 * @file
 * What the shared library exports.
 *
 * On Windows a program that links the library statically defines VYX_STATIC; nothing else has to be defined.
 */

/**
 * @def VYX_EXPORT
 * Marks what the shared library exports; everything else stays hidden inside it. This is the one place that knows how a
 * compiler spells that.
 */
#if defined(_WIN32)
#if defined(VYX_BUILDING_LIBRARY)
#define VYX_EXPORT __declspec(dllexport)
#elif defined(VYX_STATIC)
#define VYX_EXPORT
#else
#define VYX_EXPORT __declspec(dllimport)
#endif
#else
#define VYX_EXPORT __attribute__((visibility("default")))
#endif

/**
 * Says that the members of a template's instance stand in the shared library. On Windows the compiler exports none of
 * them; there every module that uses the instance makes its own.
 */
#if defined(_WIN32)
#define VYX_EXTERN_TEMPLATE(...) static_assert(sizeof(__VA_ARGS__) > 0)
#else
#define VYX_EXTERN_TEMPLATE(...) extern template class VYX_EXPORT __VA_ARGS__
#endif
