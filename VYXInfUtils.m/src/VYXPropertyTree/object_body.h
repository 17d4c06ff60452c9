#pragma once

#include <cstddef>

#include "VYXPropertyTree/container.h"
#include "VYXPropertyTree/shape.h"
#include "VYXPropertyTree/slot_table.h"
#include "VYXPropertyTree/value.h"

namespace json {

/**
 * The heap part of an object, in one of two forms. With a shape it stands in an arena, and has a value for each of the
 * shape's keys behind it, some of them absent; without one it is a MappedBody.
 */
struct ObjectBody : ContainerBody {
  /// A body in an arena, with all values absent.
  static ObjectBody* Make(Arena& ioArena, const Shape& iShape);

  /// The values of the shape's keys.
  Value* Values() noexcept { return std::launder(reinterpret_cast<Value*>(this + 1)); }
  const Value* Values() const noexcept { return const_cast<ObjectBody*>(this)->Values(); }

  const Shape* shape;

 protected:
  ObjectBody(Arena* iArena, Memory iMemory, const Shape* iShape, std::size_t iCapacity) noexcept
      : ContainerBody(iArena, iMemory, iCapacity), shape(iShape) {
    isObject = true;
  }
};

/// A member that was inserted on its own.
struct Entry {
  explicit Entry(const KORUnicodeString& iKey) : key(iKey) {}

  KORUnicodeString key;
  Value value;
};

/**
 * A body that takes any key. Members stand in blocks of entries, which grow with the object; those of a body with a
 * shape that this one was made of stay where they are. No member ever moves.
 */
struct MappedBody : ObjectBody {
  /// A body without members, with room for a few.
  static MappedBody* Make();
  /// A body with the members of one with a shape, which it owns from then on.
  static MappedBody* Make(ObjectBody* ioOrigin);
  /// Frees a body whose members are gone, and its origin.
  static void Free(MappedBody* ioBody) noexcept;

  /// Inserts a null member at a place that was located for a key not found.
  Value& Insert(const SlotTable::Place& iPlace, const SearchKey& iKey, const KORUnicodeString& iText);

  /// True for a member that stands in the origin.
  bool IsInOrigin(const Value* iValue) const noexcept;

  /// Destroys a member.
  void Erase(const SlotTable::Place& iPlace) noexcept;

  SlotTable slots;
  ObjectBody* origin = nullptr;

 private:
  union Room {
    Room() noexcept {}
    ~Room() {}
    Entry entry;
    Room* next;
  };
  struct Block {
    Block* previous;
  };

  MappedBody(Slot* iSlots, std::size_t iSlotCount, Room* iRoom, std::size_t iRoomCount) noexcept;
  ~MappedBody() = default;
  Entry* NewEntry(const KORUnicodeString& iKey);
  void FreeEntry(Entry* iEntry) noexcept;
  void AddBlock();

  Room* _free = nullptr;
  Room* _next;
  Room* _end;
  Block* _blocks = nullptr;
};

/// A member of an object; false for none.
struct Member {
  explicit operator bool() const noexcept { return key != nullptr; }

  const KORUnicodeString* key = nullptr;
  Value* value = nullptr;
};

/// Walks the members of an object in key order.
class MemberCursor {
 public:
  MemberCursor() noexcept = default;
  explicit MemberCursor(const ObjectBody* iBody) noexcept : _shaped(iBody) {
    if (iBody != nullptr && iBody->shape == nullptr) {
      _shaped = nullptr;
      _slots = SlotTable::Cursor(static_cast<const MappedBody*>(iBody)->slots);
    }
  }

  /// The next member; false after the last one.
  Member Next() noexcept {
    if (_shaped == nullptr) {
      const Slot* const slot = _slots.Next();
      return slot == nullptr ? Member() : Member{slot->key, slot->value};
    }
    while (_index < _shaped->shape->Size()) {
      const std::size_t index = _index++;
      const Value& value = _shaped->Values()[index];
      if (!value.IsAbsent()) {
        return {&_shaped->shape->Key(index), const_cast<Value*>(&value)};
      }
    }
    return {};
  }

 private:
  const ObjectBody* _shaped = nullptr;
  std::size_t _index = 0;
  SlotTable::Cursor _slots;
};

inline MemberCursor MembersOf(const Object& iObject) noexcept {
  return MemberCursor(iObject.Body());
}

}  // namespace json
