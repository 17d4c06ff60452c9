#include "Quillbase/Binary.h"

#include <atomic>

namespace QB {

struct Binary::Owner {
  std::atomic<std::uint64_t> count;
  char* data;
  ReleaseFunction release;
};

char* allocateArrayChar(std::size_t iSize) {
  return new char[iSize];
}

void deallocateArrayChar(char* ioData) noexcept {
  delete[] ioData;
}

Binary::Binary(char* ioData, std::uint64_t iSize, ReleaseFunction iRelease) : _data(ioData), _size(iSize) {
  if (ioData == nullptr || iRelease == nullptr) {
    return;
  }
  try {
    _owner = new Owner{1, ioData, iRelease};
  } catch (...) {
    // The buffer took the data over, whatever becomes of the buffer.
    iRelease(ioData);
    throw;
  }
}

Binary::Binary(const Binary& iOther) noexcept : _data(iOther._data), _size(iOther._size), _owner(iOther._owner) {
  if (_owner != nullptr) {
    _owner->count.fetch_add(1, std::memory_order_relaxed);
  }
}

Binary& Binary::operator=(const Binary& iOther) noexcept {
  if (this != &iOther) {
    *this = Binary(iOther);
  }
  return *this;
}

Binary& Binary::operator=(Binary&& ioOther) noexcept {
  if (this != &ioOther) {
    Drop();
    _data = std::exchange(ioOther._data, nullptr);
    _size = std::exchange(ioOther._size, 0);
    _owner = std::exchange(ioOther._owner, nullptr);
  }
  return *this;
}

void Binary::Drop() noexcept {
  if (_owner != nullptr && _owner->count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    _owner->release(_owner->data);
    delete _owner;
  }
}

bool BinaryReader::Seek(std::uint64_t iPosition) noexcept {
  if (iPosition > _slice.GetSize()) {
    return false;
  }
  _position = iPosition;
  return true;
}

bool BinaryReader::ReadChar(char& oChar) noexcept {
  if (_slice.GetData() == nullptr || _position >= _slice.GetSize()) {
    return false;
  }
  oChar = _slice.GetData()[_position++];
  return true;
}

}  // namespace QB
