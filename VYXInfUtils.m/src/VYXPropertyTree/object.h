#pragma once

#include <cstddef>
#include <utility>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree/container.h"

namespace json {

struct Value;
struct ObjectBody;

/**
 * A map from key to value in ascending key order. Copies are deep; a moved-from object is empty. A member keeps its
 * address while others come and go and while the object itself is moved.
 */
class Object {
 public:
  Object() noexcept = default;
  Object(const Object& iOther);
  Object(Object&& ioOther) noexcept : _body(std::exchange(ioOther._body, nullptr)) {}
  Object& operator=(Object iOther) noexcept {
    std::swap(_body, iOther._body);
    return *this;
  }
  ~Object() {
    if (_body != nullptr) {
      DestroyMembers();
    }
  }

  std::size_t Size() const noexcept;
  bool IsEmpty() const noexcept { return Size() == 0; }

  /// The value of a key; null when the key is absent.
  Value* Find(const KORUnicodeString& iKey) noexcept;
  const Value* Find(const KORUnicodeString& iKey) const noexcept;

  /// Replaces the value of a key or inserts a member. Nothing changes, the new value neither, when no memory is found.
  Value& Set(const KORUnicodeString& iKey, Value&& ioValue);

  /// Inserts a null member whose key is known to come after all others.
  Value& AppendLast(const KORUnicodeString& iKey);

  /// Removes a member and everything below it; false when the key is absent.
  bool Erase(const KORUnicodeString& iKey) noexcept;

  /// Prepares an empty object for so many members; no effect on one that has or had members.
  void Reserve(std::size_t iCount);

  /// The heap part; null for an object that never had members.
  const ObjectBody* Body() const noexcept { return _body; }

  /// Gives the heap part away; the object is empty then.
  ObjectBody* Detach() noexcept { return std::exchange(_body, nullptr); }

 private:
  void DestroyMembers() noexcept;

  ObjectBody* _body = nullptr;
};

}  // namespace json
