#pragma once

#include <cstddef>
#include <utility>

#include "VYXPropertyTree/container.h"

namespace json {

struct Value;

/// The heap part of an array; its elements stand right behind it.
struct ArrayBody : ContainerBody {
  explicit ArrayBody(std::size_t iCapacity) noexcept : ContainerBody(false), capacity(iCapacity) {}
  inline Value* Elements() noexcept;

  std::size_t size = 0;
  std::size_t capacity;
};

/// A growable sequence of values in insertion order. Copies are deep; a moved-from array is empty. Growing moves the
/// elements.
class Array {
 public:
  Array() noexcept = default;
  Array(const Array& iOther);
  Array(Array&& ioOther) noexcept : _body(std::exchange(ioOther._body, nullptr)) {}
  Array& operator=(Array iOther) noexcept {
    std::swap(_body, iOther._body);
    return *this;
  }
  ~Array() {
    if (_body != nullptr) {
      Destroy(_body);
    }
  }

  std::size_t Size() const noexcept { return _body == nullptr ? 0 : _body->size; }
  bool IsEmpty() const noexcept { return Size() == 0; }

  inline Value* begin() noexcept;
  inline Value* end() noexcept;
  inline const Value* begin() const noexcept;
  inline const Value* end() const noexcept;

  /// The element at a position counted from 0; std::out_of_range "invalid vector subscript" outside the array.
  Value& At(std::size_t iIndex);
  const Value& At(std::size_t iIndex) const;

  /// Makes room for so many elements.
  void Reserve(std::size_t iCapacity);

  /// Appends an element, which is left as it is when no memory is found.
  Value& Append(Value&& ioValue);

  /// Gives the heap part away; the array is empty then.
  ArrayBody* Detach() noexcept { return std::exchange(_body, nullptr); }

 private:
  ArrayBody* _body = nullptr;
};

}  // namespace json
