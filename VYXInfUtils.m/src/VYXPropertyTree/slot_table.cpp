#include "VYXPropertyTree/slot_table.h"

#include <algorithm>
#include <cstring>

namespace json {

namespace {

constexpr std::uint32_t kFirstRunCapacity = 4;
constexpr std::uint32_t kFirstDirectoryCapacity = 8;

bool IsLess(const Slot& iSlot, const SearchKey& iKey) noexcept {
  return iSlot.prefix != iKey.prefix ? iSlot.prefix < iKey.prefix : iSlot.entry->key.ToStringView() < iKey.text;
}

/// The number of slots whose key is less than iKey.
std::uint32_t LowerBound(const SlotTable::Run& iRun, const SearchKey& iKey) noexcept {
  std::uint32_t first = 0;
  std::uint32_t count = iRun.size;
  while (count > 0) {
    const std::uint32_t half = count / 2;
    const bool isLess = IsLess(iRun.slots[first + half], iKey);
    first = isLess ? first + half + 1 : first;
    count = isLess ? count - half - 1 : half;
  }
  return first;
}

void MoveSlots(Slot* oTo, const Slot* iFrom, std::uint32_t iCount) noexcept {
  if (iCount > 0) {
    std::memmove(oTo, iFrom, iCount * sizeof(Slot));
  }
}

}  // namespace

SearchKey::SearchKey(std::string_view iText) noexcept : text(iText), prefix(0) {
  constexpr std::size_t kWidth = sizeof prefix;
  unsigned char bytes[kWidth] = {};
  std::memcpy(bytes, iText.data(), std::min(iText.size(), kWidth));
  for (const unsigned char byte : bytes) {
    prefix = (prefix << 8) | byte;
  }
}

SlotTable::~SlotTable() {
  for (std::uint32_t run = 0; run < _runCount; ++run) {
    FreeSlots(_runs[run]);
  }
}

void SlotTable::FreeSlots(const Run& iRun) noexcept {
  if (iRun.slots != _borrowed) {
    delete[] iRun.slots;
  }
}

/// The last run whose first key is not greater than iKey, or the first run.
std::uint32_t SlotTable::FindRun(const SearchKey& iKey) const noexcept {
  std::uint32_t first = 1;
  std::uint32_t count = _runCount - 1;
  while (count > 0) {
    const std::uint32_t half = count / 2;
    const Run& run = _runs[first + half];
    const bool isGreater = run.firstPrefix != iKey.prefix ? run.firstPrefix > iKey.prefix
                                                          : run.slots[0].entry->key.ToStringView() > iKey.text;
    first = isGreater ? first : first + half + 1;
    count = isGreater ? half : count - half - 1;
  }
  return first - 1;
}

SlotTable::Place SlotTable::Locate(const SearchKey& iKey) const noexcept {
  const std::uint32_t position = _runCount == 1 ? 0 : FindRun(iKey);
  const Run& run = _runs[position];
  const std::uint32_t index = LowerBound(run, iKey);
  const bool isFound = index < run.size && run.slots[index].prefix == iKey.prefix &&
                       run.slots[index].entry->key.ToStringView() == iKey.text;
  return {position, index, isFound};
}

SlotTable::Place SlotTable::LocateForInsert(const SearchKey& iKey) const noexcept {
  const Run& last = _runs[_runCount - 1];
  if (last.size == 0 || IsLess(last.slots[last.size - 1], iKey)) {
    return End();
  }
  return Locate(iKey);
}

void SlotTable::Insert(Place iPlace, const Slot& iSlot) {
  Run* run = &_runs[iPlace.run];
  if (run->size == run->capacity) {
    if (run->capacity < kMaxRun) {
      Grow(*run);
    } else if (iPlace.run == _runCount - 1 && iPlace.index == run->size) {
      AddRun(iPlace.run, 0);
      iPlace = {iPlace.run + 1, 0, false};
    } else {
      const std::uint32_t kept = run->size / 2;
      AddRun(iPlace.run, run->size - kept);
      if (iPlace.index > kept) {
        iPlace = {iPlace.run + 1, iPlace.index - kept, false};
      }
    }
    run = &_runs[iPlace.run];
  }
  Slot* const slot = run->slots + iPlace.index;
  MoveSlots(slot + 1, slot, run->size - iPlace.index);
  *slot = iSlot;
  ++run->size;
  ++_size;
  run->firstPrefix = run->slots[0].prefix;
}

void SlotTable::Grow(Run& ioRun) {
  const std::uint32_t capacity = std::min(std::max(2 * ioRun.capacity, kFirstRunCapacity), kMaxRun);
  auto larger = std::make_unique_for_overwrite<Slot[]>(capacity);
  MoveSlots(larger.get(), ioRun.slots, ioRun.size);
  FreeSlots(ioRun);
  ioRun.slots = larger.release();
  ioRun.capacity = capacity;
}

/// Adds a run behind the one at iPosition, which hands over its last iMoved slots. Only Insert may leave it empty, for
/// a moment.
void SlotTable::AddRun(std::uint32_t iPosition, std::uint32_t iMoved) {
  auto slots = std::make_unique_for_overwrite<Slot[]>(kMaxRun);
  ReserveDirectory();
  std::copy_backward(_runs + iPosition + 1, _runs + _runCount, _runs + _runCount + 1);
  ++_runCount;
  Run& from = _runs[iPosition];
  Run& added = _runs[iPosition + 1];
  from.size -= iMoved;
  MoveSlots(slots.get(), from.slots + from.size, iMoved);
  added = {slots.release(), 0, iMoved, kMaxRun};
  added.firstPrefix = iMoved == 0 ? 0 : added.slots[0].prefix;
}

void SlotTable::ReserveDirectory() {
  if (_runCount < _runCapacity) {
    return;
  }
  const std::uint32_t capacity = std::max(2 * _runCapacity, kFirstDirectoryCapacity);
  auto larger = std::make_unique<Run[]>(capacity);
  std::copy(_runs, _runs + _runCount, larger.get());
  _directory = std::move(larger);
  _runs = _directory.get();
  _runCapacity = capacity;
}

void SlotTable::Erase(const Place& iPlace) noexcept {
  Run& run = _runs[iPlace.run];
  Slot* const slot = run.slots + iPlace.index;
  --run.size;
  --_size;
  MoveSlots(slot, slot + 1, run.size - iPlace.index);
  if (run.size > 0) {
    run.firstPrefix = run.slots[0].prefix;
  } else if (_runCount > 1) {
    FreeSlots(run);
    std::copy(&run + 1, _runs + _runCount, &run);
    --_runCount;
  }
}

}  // namespace json
