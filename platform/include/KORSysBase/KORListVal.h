#pragma once

#include <memory>
#include <utility>

#include "KORSysBase/KORCollec.h"
#include "KORSysBase/KORListValIterator.h"
#include "KORSysBase/KORRawCollPV.h"

/**
 * @file
 * The pattern of the library's value lists.
 */

/**
 * The pattern of the library's value lists: a raw collection of pointers to heap copies that the list owns, positions
 * counted from 1. Every copy of a list copies every element.
 *
 * ```cpp
 * KORListValvyx_int64_t sizes;
 * sizes.Append(640);
 * sizes.Append(480);
 * sizes[2] += 20;
 * sizes.Locate(500, 1);  // 2
 * sizes.RemovePosition(1);
 * sizes[1];      // 500
 * sizes.Size();  // 1
 * ```
 *
 * An element keeps its address until it is removed, also while others come and go and when the list is moved. A
 * position outside 1 to Size() stops the program, with a message on standard error that names position and size. What
 * appending and copying throw (std::bad_alloc, or what the element throws) passes, and the list is then as it was. One
 * list belongs to one thread at a time; a list that nobody changes may be read by several.
 *
 * @tparam T the element type; two elements are compared with `!=`.
 */
template <class T>
class KORListVal {
 public:
  /// An empty list.
  KORListVal() = default;

  /// An empty list; the hints, a capacity and a growth step, go to the raw collection.
  explicit KORListVal(int iCapacity, int iGrowth = 0) : _elements(iCapacity, iGrowth) {}

  /// Copies of all elements; std::bad_alloc passes.
  KORListVal(const KORListVal& iOther) : _elements(iOther.Size()) { AppendAll(iOther); }
  /// Takes the elements over, which keep their addresses; the other list is empty afterwards.
  KORListVal(KORListVal&& ioOther) noexcept : _elements(std::move(ioOther._elements)) {}
  /// Destroys every element, the last one first.
  ~KORListVal() { DeleteAll(); }

  /// Becomes a copy. Where memory runs out, std::bad_alloc passes and the list is as it was.
  KORListVal& operator=(const KORListVal& iOther) {
    if (this != &iOther) {
      KORListVal copy(iOther);
      std::swap(_elements, copy._elements);
    }
    return *this;
  }
  /// Destroys the elements and takes those of the other list over, which is empty afterwards.
  KORListVal& operator=(KORListVal&& ioOther) noexcept {
    if (this != &ioOther) {
      DeleteAll();
      _elements = std::move(ioOther._elements);
    }
    return *this;
  }

  /// Appends a copy of an element, which may be one of this list.
  void Append(const T& iElement) { AppendOwned(std::make_unique<T>(iElement)); }
  /// Appends an element by taking its content over.
  void Append(T&& ioElement) { AppendOwned(std::make_unique<T>(std::move(ioElement))); }

  /// Number of elements.
  int Size() const noexcept { return _elements.Size(); }

  /// The element at a position of 1 to Size(), to be changed in place.
  T& operator[](int iPosition) noexcept { return *static_cast<T*>(_elements[iPosition]); }
  /// The element at a position of 1 to Size().
  const T& operator[](int iPosition) const noexcept { return *static_cast<const T*>(_elements[iPosition]); }

  /// The first position, from iStart (1 or more) on, whose element equals the value; 0 when there is none. Takes time
  /// proportional to the number of elements.
  int Locate(const T& iElement, int iStart) const {
    for (int position = iStart; position <= Size(); ++position) {
      if (!((*this)[position] != iElement)) {
        return position;
      }
    }
    return 0;
  }

  /// Removes the first element equal to the value and answers the position that it had; 0 when there is none.
  int RemoveValue(const T& iElement) {
    const int position = Locate(iElement, 1);
    if (position != 0) {
      RemovePosition(position);
    }
    return position;
  }

  /// Removes and destroys the element at a position of 1 to Size(); later ones move up by one.
  void RemovePosition(int iPosition) {
    const std::unique_ptr<T> removed(&(*this)[iPosition]);
    _elements.RemovePosition(iPosition);
  }

  /// Removes every element, the last one first, and keeps or releases the storage.
  void RemoveAll(KORCollec::MemoryHandling iHandling = KORCollec::MemoryHandling::ReleaseMemory) {
    DeleteAll();
    _elements.RemoveAll(iHandling);
  }

  /// Copies the elements in order into an array of at least Size() constructed ones, which is filled from its last
  /// slot to its first; what copying an element throws passes.
  void Array(T* oArray) const {
    for (int position = Size(); position >= 1; --position) {
      oArray[position - 1] = (*this)[position];
    }
  }

  /// 1 when the sizes differ or two elements at one position do, else 0; a list never differs from itself.
  int operator!=(const KORListVal& iOther) const {
    if (this == &iOther) {
      return 0;
    }
    if (Size() != iOther.Size()) {
      return 1;
    }
    for (int position = 1; position <= Size(); ++position) {
      if ((*this)[position] != iOther[position]) {
        return 1;
      }
    }
    return 0;
  }
  /// 1 when operator!= answers 0, else 0.
  int operator==(const KORListVal& iOther) const { return (*this != iOther) ? 0 : 1; }

  // For range-based loops and the standard algorithms; iterators count from 0, as everywhere, and end with the next
  // change of the list.
  using value_type = T;                                ///< An element.
  using reference = T&;                                ///< Access to an element.
  using const_reference = const T&;                    ///< Access to an element that is not changed.
  using iterator = KORListValIterator<T>;              ///< Walks the elements.
  using const_iterator = KORListValIterator<const T>;  ///< Walks elements that are not changed.
  /// The first element.
  const_iterator begin() const noexcept { return const_iterator(_elements.begin()); }
  /// Behind the last element.
  const_iterator end() const noexcept { return const_iterator(_elements.end()); }
  /// The first element, to be changed.
  iterator begin() noexcept { return iterator(_elements.begin()); }
  /// Behind the last element, where elements are changed.
  iterator end() noexcept { return iterator(_elements.end()); }

 private:
  void AppendOwned(std::unique_ptr<T> ioElement) {
    _elements.Append(ioElement.get());
    static_cast<void>(ioElement.release());
  }
  void AppendAll(const KORListVal& iOther) {
    try {
      for (int position = 1; position <= iOther.Size(); ++position) {
        Append(iOther[position]);
      }
    } catch (...) {
      DeleteAll();
      throw;
    }
  }
  void DeleteAll() noexcept {
    for (int position = Size(); position >= 1; --position) {
      delete static_cast<T*>(_elements[position]);
    }
  }

  KORRawCollPV _elements;
};
