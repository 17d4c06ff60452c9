#pragma once

#include <vector>

#include "KORSysBase/KORCollec.h"
#include "VYXExport.h"

/**
 * A growable list of untyped pointers, positions counted from 1. It owns its storage, never what the pointers point to.
 *
 * ```cpp
 * int value = 7;
 * KORRawCollPV pointers;
 * pointers.Append(&value);
 * *static_cast<int*>(pointers[1]);  // 7
 * ```
 *
 * A position outside 1 to Size() stops the program, with a message on standard error that names position and size. One
 * object belongs to one thread at a time.
 */
class VYX_EXPORT KORRawCollPV {
 public:
  /// An empty list.
  KORRawCollPV() = default;

  /// An empty list with room for iCapacity pointers; the second hint, a growth step, is accepted and not needed.
  explicit KORRawCollPV(int iCapacity, int iGrowth = 0);

  /// Appends a pointer, which may be null. Where memory runs out, std::bad_alloc passes and the list is as it was.
  void Append(void* iPointer) { _pointers.push_back(iPointer); }

  /// Number of pointers.
  int Size() const noexcept { return static_cast<int>(_pointers.size()); }

  /// The pointer at a position of 1 to Size(), to be changed in place.
  void*& operator[](int iPosition) noexcept { return _pointers[Index(iPosition)]; }
  /// The pointer at a position of 1 to Size().
  void* operator[](int iPosition) const noexcept { return _pointers[Index(iPosition)]; }

  /// Removes the entry at a position; later ones move up by one.
  void RemovePosition(int iPosition);

  /// Removes every entry and keeps or releases the storage.
  void RemoveAll(KORCollec::MemoryHandling iHandling = KORCollec::MemoryHandling::ReleaseMemory);

  /// True for the same pointers in the same order.
  bool operator==(const KORRawCollPV& iOther) const = default;

  /// @{
  /// For range-based loops and the standard algorithms; pointers into the storage, which end with its next change.
  using value_type = void*;
  void* const* begin() const noexcept { return _pointers.data(); }
  void* const* end() const noexcept { return _pointers.data() + _pointers.size(); }
  void** begin() noexcept { return _pointers.data(); }
  void** end() noexcept { return _pointers.data() + _pointers.size(); }
  /// @}

 private:
  std::size_t Index(int iPosition) const noexcept {
    return VYX::Platform::CheckedIndex("KORRawCollPV", iPosition, Size());
  }

  std::vector<void*> _pointers;
};
