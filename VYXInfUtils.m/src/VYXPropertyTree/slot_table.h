#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree/value.h"

namespace json {

/// A member of an object.
struct Entry {
  explicit Entry(const KORUnicodeString& iKey) : key(iKey) {}

  KORUnicodeString key;
  Value value;
};

/// A key as it is searched: its text and the first eight bytes as a big-endian number, which orders as the bytes do.
struct SearchKey {
  explicit SearchKey(std::string_view iText) noexcept;

  std::string_view text;
  std::uint64_t prefix;
};

/// A place in the key order. Most comparisons end at the prefix and do not touch the entry.
struct Slot {
  std::uint64_t prefix;
  Entry* entry;
};

/**
 * The key order of an object: sorted runs of slots. Up to 512 members stand in one run; more are kept in a directory of
 * runs of at most 512, so that inserting anywhere moves no more than one run. Does not own the entries.
 */
class SlotTable {
 public:
  static constexpr std::uint32_t kMaxRun = 512;

  struct Run {
    Slot* slots = nullptr;
    std::uint64_t firstPrefix = 0;
    std::uint32_t size = 0;
    std::uint32_t capacity = 0;
  };

  /// Where a key stands, or would stand.
  struct Place {
    std::uint32_t run;
    std::uint32_t index;
    bool isFound;
  };

  /// Walks the entries in key order.
  class Cursor {
   public:
    Cursor() noexcept = default;
    explicit Cursor(const SlotTable& iTable) noexcept : _run(iTable._runs), _end(iTable._runs + iTable._runCount) {}

    /// The next entry; null after the last one.
    Entry* Next() noexcept {
      while (_run != _end) {
        if (_index < _run->size) {
          return _run->slots[_index++].entry;
        }
        ++_run;
        _index = 0;
      }
      return nullptr;
    }

   private:
    const Run* _run = nullptr;
    const Run* _end = nullptr;
    std::uint32_t _index = 0;
  };

  /// An empty table; the first run uses the iCapacity slots at iSlots, which the table does not own.
  SlotTable(Slot* iSlots, std::uint32_t iCapacity) noexcept : _borrowed(iSlots) {
    _single.slots = iSlots;
    _single.capacity = iCapacity;
  }
  ~SlotTable();
  SlotTable(const SlotTable&) = delete;
  SlotTable& operator=(const SlotTable&) = delete;

  std::size_t Size() const noexcept { return _size; }
  Entry* At(const Place& iPlace) const noexcept { return _runs[iPlace.run].slots[iPlace.index].entry; }

  /// Where a key stands or belongs.
  Place Locate(const SearchKey& iKey) const noexcept;

  /// The same, quick for a key behind all others.
  Place LocateForInsert(const SearchKey& iKey) const noexcept;

  /// The place behind all entries.
  Place End() const noexcept { return {_runCount - 1, _runs[_runCount - 1].size, false}; }

  /// Inserts at a place that was located for a key not found. Nothing changes when no memory is found.
  void Insert(Place iPlace, const Slot& iSlot);

  void Erase(const Place& iPlace) noexcept;

 private:
  std::uint32_t FindRun(const SearchKey& iKey) const noexcept;
  void Grow(Run& ioRun);
  void AddRun(std::uint32_t iPosition, std::uint32_t iMoved);
  void ReserveDirectory();
  void FreeSlots(const Run& iRun) noexcept;

  Run* _runs = &_single;
  std::unique_ptr<Run[]> _directory;  // in force once there is more than one run
  std::uint32_t _runCount = 1;
  std::uint32_t _runCapacity = 1;
  std::size_t _size = 0;
  Slot* _borrowed;
  Run _single;
};

}  // namespace json
