#include "VYXPropertyTree/array.h"

#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

#include "VYXPropertyTree/value.h"

namespace json {

namespace {

constexpr std::size_t kFirstCapacity = 4;
constexpr std::size_t kMaxCapacity =
    (static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) - sizeof(ArrayBody)) / sizeof(Value);

ArrayBody* Allocate(std::size_t iCapacity) {
  if (iCapacity > kMaxCapacity) {
    throw std::bad_alloc();
  }
  return new (::operator new(sizeof(ArrayBody) + iCapacity * sizeof(Value))) ArrayBody(iCapacity);
}

}  // namespace

Value& Array::At(std::size_t iIndex) {
  if (iIndex >= Size()) {
    throw std::out_of_range("invalid vector subscript");
  }
  return begin()[iIndex];
}

const Value& Array::At(std::size_t iIndex) const {
  return const_cast<Array&>(*this).At(iIndex);
}

void Array::Reserve(std::size_t iCapacity) {
  if (iCapacity == 0 || (_body != nullptr && iCapacity <= _body->capacity)) {
    return;
  }
  ArrayBody* const larger = Allocate(iCapacity);
  if (_body != nullptr) {
    Value* to = larger->Elements();
    for (Value& element : *this) {
      new (to++) Value(std::move(element));
      element.~Value();  // NOLINT(bugprone-use-after-move): what was moved from still has to end
    }
    larger->size = _body->size;
    ::operator delete(_body);
  }
  _body = larger;
}

Value& Array::Append(Value&& ioValue) {
  if (_body == nullptr) {
    Reserve(kFirstCapacity);
  } else if (_body->size == _body->capacity) {
    Reserve(std::max(2 * _body->capacity, kFirstCapacity));
  }
  Value* const element = new (_body->Elements() + _body->size) Value(std::move(ioValue));
  ++_body->size;
  return *element;
}

}  // namespace json
