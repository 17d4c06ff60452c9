#include "VYXPropertyTree/object.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <new>

#include "VYXPropertyTree/object_body.h"

namespace json {

namespace {

constexpr std::size_t kMaxReserved =
    static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) / (2 * (sizeof(Slot) + sizeof(Entry)));

void Discard(ObjectBody& ioBody, Entry* ioEntry) noexcept {
  ioEntry->~Entry();
  ioBody.FreeEntry(ioEntry);
}

/// Puts an entry into the key order; it is discarded when that finds no memory.
Value& Link(ObjectBody& ioBody, const SlotTable::Place& iPlace, std::uint64_t iPrefix, Entry* ioEntry) {
  try {
    ioBody.slots.Insert(iPlace, {iPrefix, ioEntry});
  } catch (...) {
    Discard(ioBody, ioEntry);
    throw;
  }
  return ioEntry->value;
}

}  // namespace

ObjectBody* ObjectBody::Make(std::size_t iReserved) {
  if (iReserved > kMaxReserved) {
    throw std::bad_alloc();
  }
  const std::size_t slotCount = std::min<std::size_t>(iReserved, SlotTable::kMaxRun);
  static_assert(sizeof(ObjectBody) % alignof(Slot) == 0 && sizeof(Slot) % alignof(Entry) == 0);
  void* const memory = ::operator new(sizeof(ObjectBody) + slotCount * sizeof(Slot) + iReserved * sizeof(Entry));
  Slot* const slots = reinterpret_cast<Slot*>(static_cast<char*>(memory) + sizeof(ObjectBody));
  Entry* const block = reinterpret_cast<Entry*>(slots + slotCount);
  return new (memory) ObjectBody(slots, static_cast<std::uint32_t>(slotCount), block, iReserved);
}

void ObjectBody::Free(ObjectBody* iBody) noexcept {
  iBody->~ObjectBody();
  ::operator delete(iBody);
}

Entry* ObjectBody::NewEntry(const KORUnicodeString& iKey) {
  if (blockNext == blockEnd) {
    return new Entry(iKey);
  }
  Entry* const entry = new (blockNext) Entry(iKey);
  ++blockNext;
  return entry;
}

void ObjectBody::FreeEntry(Entry* iEntry) noexcept {
  const std::less<const Entry*> isBefore;
  if (isBefore(iEntry, blockBegin) || !isBefore(iEntry, blockEnd)) {
    ::operator delete(iEntry);
  } else if (iEntry + 1 == blockNext) {
    blockNext = iEntry;
  }
}

std::size_t Object::Size() const noexcept {
  return _body == nullptr ? 0 : _body->slots.Size();
}

const Value* Object::Find(const KORUnicodeString& iKey) const noexcept {
  if (_body == nullptr) {
    return nullptr;
  }
  const SlotTable::Place place = _body->slots.Locate(SearchKey(iKey.ToStringView()));
  return place.isFound ? &_body->slots.At(place)->value : nullptr;
}

Value* Object::Find(const KORUnicodeString& iKey) noexcept {
  return const_cast<Value*>(std::as_const(*this).Find(iKey));
}

Value& Object::Set(const KORUnicodeString& iKey, Value&& ioValue) {
  if (_body == nullptr) {
    _body = ObjectBody::Make(0);
  }
  const SearchKey key(iKey.ToStringView());
  const SlotTable::Place place = _body->slots.LocateForInsert(key);
  if (place.isFound) {
    return _body->slots.At(place)->value = std::move(ioValue);
  }
  return Link(*_body, place, key.prefix, _body->NewEntry(iKey)) = std::move(ioValue);
}

Value& Object::AppendLast(const KORUnicodeString& iKey) {
  if (_body == nullptr) {
    _body = ObjectBody::Make(0);
  }
  return Link(*_body, _body->slots.End(), SearchKey(iKey.ToStringView()).prefix, _body->NewEntry(iKey));
}

bool Object::Erase(const KORUnicodeString& iKey) noexcept {
  if (_body == nullptr) {
    return false;
  }
  const SlotTable::Place place = _body->slots.Locate(SearchKey(iKey.ToStringView()));
  if (!place.isFound) {
    return false;
  }
  Entry* const entry = _body->slots.At(place);
  _body->slots.Erase(place);
  Discard(*_body, entry);
  return true;
}

void Object::Reserve(std::size_t iCount) {
  if (_body == nullptr && iCount > 0) {
    _body = ObjectBody::Make(iCount);
  }
}

void Object::DestroyMembers() noexcept {
  Destroy(_body);
}

}  // namespace json
