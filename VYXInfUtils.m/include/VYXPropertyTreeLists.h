#pragma once

#include <cstdint>

#include "KORSysBase/KORListVal.h"
#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysBase/KORRawColldouble.h"
#include "VYXExport.h"
#include "VYXPropertyTree.h"

/**
 * @file
 * The lists that a property tree exchanges arrays through; those of texts and numbers are the platform's. All are one
 * pattern, told by KORListVal, for three element types:
 *
 * ```cpp
 * KORListValvyx_int64_t sizes;
 * sizes.Append(640);
 * sizes.Append(480);
 * VYXPropertyTree tree;
 * tree.SetIntegerList("size", sizes);
 * std::cout << VYXPropertyTreeUtils::Stringify(tree) << "\n";  // {"size":[640,480]}
 * ```
 *
 * Elements are heap copies that the list owns, at positions counted from 1; a position outside 1 to Size() stops the
 * program. One list belongs to one thread at a time.
 */

/// The element type of the list of Booleans.
using vyx_bool = bool;
/// The element type of the list of integers.
using vyx_int64_t = std::int64_t;

VYX_EXTERN_TEMPLATE(KORListVal<vyx_bool>);
VYX_EXTERN_TEMPLATE(KORListVal<vyx_int64_t>);
VYX_EXTERN_TEMPLATE(KORListVal<VYXPropertyTree>);

/// A list of Booleans, held by value, positions counted from 1; KORListVal tells the rules.
class VYX_EXPORT KORListValvyx_bool : public KORListVal<vyx_bool> {
 public:
  using KORListVal::KORListVal;
};

/// A list of 64-bit integers, held by value, positions counted from 1; KORListVal tells the rules.
class VYX_EXPORT KORListValvyx_int64_t : public KORListVal<vyx_int64_t> {
 public:
  using KORListVal::KORListVal;
};

/**
 * A list of property trees, held by value, positions counted from 1; KORListVal tells the rules.
 *
 * Every copy of a list copies every tree. Two elements are equal when the trees are, that is when their compact texts
 * are equal, whatever order their members were set in.
 */
class VYX_EXPORT KORListValVYXPropertyTree : public KORListVal<VYXPropertyTree> {
 public:
  using KORListVal::KORListVal;
};
