#include "VYXPropertyTree/array.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "VYXPropertyTree/value.h"

namespace json {

namespace {

constexpr std::size_t kFirstCapacity = 4;

std::size_t SizeFor(std::size_t iCapacity) {
  if (iCapacity > ContainerBody::kMostValues) {
    throw std::bad_alloc();
  }
  return sizeof(ArrayBody) + iCapacity * sizeof(Value);
}

}  // namespace

ArrayBody* ArrayBody::Make(std::size_t iCapacity) {
  return new (::operator new(SizeFor(iCapacity))) ArrayBody(nullptr, Memory::Own, iCapacity);
}

ArrayBody* ArrayBody::Make(Arena& ioArena, std::size_t iSize) {
  auto* const body = new (ioArena.Allocate(SizeFor(iSize))) ArrayBody(&ioArena, Memory::InArena, iSize);
  body->size = static_cast<std::uint32_t>(iSize);
  ioArena.AddBody(body);
  return body;
}

Value& Array::At(std::size_t iIndex) {
  const Value& element = std::as_const(*this).At(iIndex);
  _body->Touch();
  return const_cast<Value&>(element);
}

const Value& Array::At(std::size_t iIndex) const {
  if (iIndex >= Size()) {
    throw std::out_of_range("invalid vector subscript");
  }
  return begin()[iIndex];
}

void Array::Reserve(std::size_t iCapacity) {
  if (iCapacity == 0 || (_body != nullptr && iCapacity <= _body->capacity)) {
    return;
  }
  ArrayBody* const larger = ArrayBody::Make(iCapacity);
  if (_body != nullptr) {
    _body->Touch();
    Value* to = larger->Elements();
    for (Value* from = _body->Elements(); larger->size < _body->size; ++larger->size) {
      new (to++) Value(std::move(*from));
      (from++)->~Value();  // NOLINT(bugprone-use-after-move): what was moved from still has to end
    }
    larger->arena = _body->arena;  // its elements may have texts there
    if (_body->memory == ContainerBody::Memory::Own) {
      ::operator delete(_body);
    }
  }
  _body = larger;
}

Value& Array::Append(Value&& ioValue) {
  if (_body == nullptr) {
    Reserve(kFirstCapacity);
  } else if (_body->size == _body->capacity) {
    const std::size_t doubled = std::min(2 * std::size_t{_body->capacity}, ContainerBody::kMostValues);
    Reserve(std::max({doubled, std::size_t{_body->size} + 1, kFirstCapacity}));
  }
  _body->Touch();
  Value* const element = new (_body->Elements() + _body->size) Value(std::move(ioValue));
  ++_body->size;
  return *element;
}

}  // namespace json
