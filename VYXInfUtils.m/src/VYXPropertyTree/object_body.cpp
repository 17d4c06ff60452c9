#include "VYXPropertyTree/object_body.h"

#include <algorithm>
#include <functional>
#include <new>

namespace json {

namespace {

constexpr std::size_t kFirstSlots = 8;
constexpr std::size_t kFirstRoom = 4;
constexpr std::size_t kMostRoom = 64;

}  // namespace

ObjectBody* ObjectBody::Make(Arena& ioArena, const Shape& iShape) {
  if (iShape.Size() > kMostValues) {
    throw std::bad_alloc();
  }
  void* const memory = ioArena.Allocate(sizeof(ObjectBody) + iShape.Size() * sizeof(Value));
  auto* const body = new (memory) ObjectBody(&ioArena, Memory::InArena, &iShape, iShape.Size());
  Value* const values = reinterpret_cast<Value*>(body + 1);
  for (std::size_t index = 0; index < iShape.Size(); ++index) {
    Value::MakeAbsent(values + index);
  }
  ioArena.AddBody(body);
  return body;
}

MappedBody::MappedBody(Slot* iSlots, std::size_t iSlotCount, Room* iRoom, std::size_t iRoomCount) noexcept
    : ObjectBody(nullptr, Memory::Own, nullptr, 0),
      slots(iSlots, static_cast<std::uint32_t>(iSlotCount)),
      _next(iRoom),
      _end(iRoom + iRoomCount) {}

MappedBody* MappedBody::Make() {
  static_assert(sizeof(MappedBody) % alignof(Slot) == 0 && sizeof(Slot) % alignof(Room) == 0);
  void* const memory = ::operator new(sizeof(MappedBody) + kFirstSlots * sizeof(Slot) + kFirstRoom * sizeof(Room));
  Slot* const slots = reinterpret_cast<Slot*>(static_cast<char*>(memory) + sizeof(MappedBody));
  return new (memory) MappedBody(slots, kFirstSlots, reinterpret_cast<Room*>(slots + kFirstSlots), kFirstRoom);
}

MappedBody* MappedBody::Make(ObjectBody* ioOrigin) {
  MappedBody* const body = Make();
  try {
    for (std::size_t index = 0; index < ioOrigin->shape->Size(); ++index) {
      Value& value = ioOrigin->Values()[index];
      if (!value.IsAbsent()) {
        body->slots.Insert(body->slots.End(), {ioOrigin->shape->Prefix(index), &ioOrigin->shape->Key(index), &value});
      }
    }
  } catch (...) {
    Free(body);
    throw;
  }
  body->size = ioOrigin->size;
  body->origin = ioOrigin;
  ioOrigin->Touch();
  return body;
}

void MappedBody::Free(MappedBody* ioBody) noexcept {
  while (ioBody->_blocks != nullptr) {
    Block* const block = ioBody->_blocks;
    ioBody->_blocks = block->previous;
    ::operator delete(block);
  }
  if (ioBody->origin != nullptr && ioBody->origin->arena->DropBody()) {
    Arena::Free(ioBody->origin->arena);
  }
  ioBody->~MappedBody();
  ::operator delete(ioBody);
}

Value& MappedBody::Insert(const SlotTable::Place& iPlace, const SearchKey& iKey, const KORUnicodeString& iText) {
  if (size == kMostValues) {
    throw std::bad_alloc();
  }
  Entry* const entry = NewEntry(iText);
  try {
    slots.Insert(iPlace, {iKey.prefix, &entry->key, &entry->value});
  } catch (...) {
    FreeEntry(entry);
    throw;
  }
  ++size;
  return entry->value;
}

void MappedBody::Erase(const SlotTable::Place& iPlace) noexcept {
  const Slot slot = slots.At(iPlace);
  slots.Erase(iPlace);
  --size;
  if (IsInOrigin(slot.value)) {
    slot.value->~Value();
  } else {
    FreeEntry(reinterpret_cast<Entry*>(const_cast<KORUnicodeString*>(slot.key)));
  }
}

bool MappedBody::IsInOrigin(const Value* iValue) const noexcept {
  const std::less<const Value*> isBefore;
  return origin != nullptr && !isBefore(iValue, origin->Values()) &&
         isBefore(iValue, origin->Values() + origin->capacity);
}

Entry* MappedBody::NewEntry(const KORUnicodeString& iKey) {
  if (_free != nullptr) {
    Room* const room = _free;
    Room* const next = room->next;
    try {
      Entry* const entry = new (&room->entry) Entry(iKey);
      _free = next;
      return entry;
    } catch (...) {
      room->next = next;
      throw;
    }
  }
  if (_next == _end) {
    AddBlock();
  }
  Entry* const entry = new (&_next->entry) Entry(iKey);
  ++_next;
  return entry;
}

void MappedBody::FreeEntry(Entry* iEntry) noexcept {
  iEntry->~Entry();
  Room* const room = reinterpret_cast<Room*>(iEntry);
  room->next = _free;
  _free = room;
}

/// Adds a block of entries, each as large as all before up to a bound.
void MappedBody::AddBlock() {
  const std::size_t count = std::clamp<std::size_t>(size, kFirstRoom, kMostRoom);
  static_assert(sizeof(Block) % alignof(Room) == 0);
  auto* const block = new (::operator new(sizeof(Block) + count * sizeof(Room))) Block{_blocks};
  _blocks = block;
  _next = reinterpret_cast<Room*>(block + 1);
  _end = _next + count;
}

}  // namespace json
