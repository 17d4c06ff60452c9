#pragma once

#include <cstddef>

#include "VYXPropertyTree/container.h"
#include "VYXPropertyTree/slot_table.h"

namespace json {

/**
 * The heap part of an object. One that was made for a number of members carries that many slots and entries behind it
 * in the same allocation; members beyond those are allocated one by one. An entry never moves.
 */
struct ObjectBody : ContainerBody {
  /// Allocates a body with room for iReserved members.
  static ObjectBody* Make(std::size_t iReserved);
  /// Frees a body whose entries are gone.
  static void Free(ObjectBody* iBody) noexcept;

  /// A null member under construction, not yet in the key order.
  Entry* NewEntry(const KORUnicodeString& iKey);

  /// Gives back the memory of an entry that was destroyed.
  void FreeEntry(Entry* iEntry) noexcept;

  SlotTable slots;
  Entry* blockBegin;
  Entry* blockNext;
  Entry* blockEnd;

 private:
  ObjectBody(Slot* iSlots, std::uint32_t iSlotCount, Entry* iBlock, std::size_t iReserved) noexcept
      : ContainerBody(true),
        slots(iSlots, iSlotCount),
        blockBegin(iBlock),
        blockNext(iBlock),
        blockEnd(iBlock + iReserved) {}
};

/// Walks the members of an object in key order.
inline SlotTable::Cursor MembersOf(const Object& iObject) noexcept {
  return iObject.Body() == nullptr ? SlotTable::Cursor() : SlotTable::Cursor(iObject.Body()->slots);
}

}  // namespace json
