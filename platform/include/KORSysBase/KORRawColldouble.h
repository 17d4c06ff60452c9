#pragma once

#include <compare>
#include <vector>

#include "KORSysBase/KORCollec.h"
#include "VYXExport.h"

/**
 * A growable list of `double`, positions counted from 1: how the property tree hands out arrays of numbers.
 *
 * ```cpp
 * KORRawColldouble ratios;
 * ratios.Append(0.5);
 * ratios.Append(1.5);
 * ratios[2];  // 1.5
 * ratios;     // 0.5, 1.5
 * ```
 *
 * A position outside 1 to Size() stops the program, with a message on standard error that names position and size. One
 * object belongs to one thread at a time.
 */
class VYX_EXPORT KORRawColldouble {
 public:
  /// An empty list.
  KORRawColldouble() = default;

  /// An empty list with room for iCapacity numbers.
  explicit KORRawColldouble(int iCapacity);

  /// Appends a number. Where memory runs out, std::bad_alloc passes and the list is as it was.
  void Append(double iValue) { _values.push_back(iValue); }

  /// Number of elements.
  int Size() const noexcept { return static_cast<int>(_values.size()); }

  /// The number at a position of 1 to Size().
  double operator[](int iPosition) const noexcept { return _values[Index(iPosition)]; }
  /// The number at a position of 1 to Size(), to be changed in place.
  double& operator[](int iPosition) noexcept { return _values[Index(iPosition)]; }

  /// Removes every element and keeps or releases the storage.
  void RemoveAll(KORCollec::MemoryHandling iHandling = KORCollec::MemoryHandling::ReleaseMemory);

  /// True for equal numbers in the same order; a not-a-number equals nothing.
  bool operator==(const KORRawColldouble& iOther) const = default;
  /// The order of the first numbers that differ; none where that is a not-a-number.
  std::partial_ordering operator<=>(const KORRawColldouble& iOther) const = default;

  /// @{
  /// For range-based loops and the standard algorithms; iterators count from 0, as everywhere, and end with the next
  /// change of the list.
  using value_type = double;
  using reference = double&;
  using const_reference = const double&;
  using iterator = std::vector<double>::iterator;
  using const_iterator = std::vector<double>::const_iterator;
  const_iterator begin() const noexcept { return _values.begin(); }
  const_iterator end() const noexcept { return _values.end(); }
  iterator begin() noexcept { return _values.begin(); }
  iterator end() noexcept { return _values.end(); }
  /// @}

 private:
  std::size_t Index(int iPosition) const noexcept {
    return VYX::Platform::CheckedIndex("KORRawColldouble", iPosition, Size());
  }

  std::vector<double> _values;
};
