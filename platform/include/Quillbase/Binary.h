#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

#include "VYXExport.h"

namespace QB {

/// Frees the data of a Binary.
using ReleaseFunction = void (*)(char* ioData);

/// Allocates a byte array of the kind that deallocateArrayChar frees; the bytes are not initialised. Throws
/// std::bad_alloc when there is no memory.
VYX_EXPORT char* allocateArrayChar(std::size_t iSize);

/// Frees a byte array of `new char[]` or allocateArrayChar; null is fine.
VYX_EXPORT void deallocateArrayChar(char* ioData) noexcept;

/**
 * A byte buffer: data pointer, size in bytes and the function that frees the data.
 *
 * ```cpp
 * char* const data = QB::allocateArrayChar(4);
 * std::memcpy(data, "data", 4);
 * const QB::Binary owner(data, 4, &QB::deallocateArrayChar);
 * const QB::Binary sharer = owner;
 * sharer.GetData() == owner.GetData();  // true
 * sharer.GetSize();                     // 4
 * ```
 *
 * Copies share the data, which is freed once, when the last of them dies. The bytes are meant to be read: who writes
 * through GetData of a shared buffer writes for all its owners. Owners may live on different threads; one object
 * belongs to one thread at a time.
 */
class VYX_EXPORT Binary {
 public:
  /// An empty buffer without data.
  Binary() noexcept = default;

  /// Takes data over, to be freed with iRelease, once; a null iRelease leaves it to the caller, who has to keep it
  /// alive.
  Binary(char* ioData, std::uint64_t iSize, ReleaseFunction iRelease);

  /// Shares the data.
  Binary(const Binary& iOther) noexcept;
  /// Takes the data over; the other buffer is empty afterwards.
  Binary(Binary&& ioOther) noexcept
      : _data(std::exchange(ioOther._data, nullptr)),
        _size(std::exchange(ioOther._size, 0)),
        _owner(std::exchange(ioOther._owner, nullptr)) {}
  /// Frees the data where nobody else shares it.
  ~Binary() { Drop(); }

  /// Shares the data of another buffer instead of its own.
  Binary& operator=(const Binary& iOther) noexcept;
  /// Takes the data of another buffer over, which is empty afterwards.
  Binary& operator=(Binary&& ioOther) noexcept;

  /// The first byte; null for a buffer without data.
  const char* GetData() const noexcept { return _data; }
  /// The same, for writing; all who share the data see it.
  char* GetData() noexcept { return _data; }

  /// Number of bytes.
  std::uint64_t GetSize() const noexcept { return _size; }

  /// True for a size of 0.
  bool IsEmpty() const noexcept { return _size == 0; }

  /// The bytes as a view, valid while an owner of the data lives. It and the iterators suit a std::span, too.
  std::string_view ToStringView() const noexcept { return {_data, static_cast<std::size_t>(_size)}; }

  /// @{
  /// The bytes as a contiguous range.
  using value_type = char;
  using const_iterator = const char*;
  const char* begin() const noexcept { return _data; }
  const char* end() const noexcept { return _data + _size; }
  /// @}

  /// @{
  /// The same bytes, wherever they stand; the order is that of the bytes as unsigned numbers.
  bool operator==(const Binary& iOther) const noexcept { return ToStringView() == iOther.ToStringView(); }
  std::strong_ordering operator<=>(const Binary& iOther) const noexcept {
    return ToStringView() <=> iOther.ToStringView();
  }
  /// @}

 private:
  struct Owner;
  void Drop() noexcept;

  char* _data = nullptr;
  std::uint64_t _size = 0;
  Owner* _owner = nullptr;
};

/// Read access to the bytes of a buffer, which must outlive it. Nothing fails; may be read from any thread.
class VYX_EXPORT BinarySlice {
 public:
  /// The bytes that a buffer has now.
  explicit BinarySlice(const Binary& iBinary) noexcept : _data(iBinary.GetData()), _size(iBinary.GetSize()) {}

  /// The first byte; null for a buffer without data.
  const char* GetData() const noexcept { return _data; }

  /// Number of bytes.
  std::uint64_t GetSize() const noexcept { return _size; }

  /// The bytes as a view.
  std::string_view ToStringView() const noexcept { return {_data, static_cast<std::size_t>(_size)}; }

  /// @{
  /// The bytes as a contiguous range.
  const char* begin() const noexcept { return _data; }
  const char* end() const noexcept { return _data + _size; }
  /// @}

 private:
  const char* _data;
  std::uint64_t _size;
};

/// Reads a buffer, which must outlive it, one `char` at a time. One reader belongs to one thread at a time.
class VYX_EXPORT BinaryReader {
 public:
  /// Stands before the first byte.
  explicit BinaryReader(const Binary& iBinary) noexcept : _slice(iBinary) {}

  /// Goes to a byte position. A position beyond the end is refused: the answer is false and the reader stays where it
  /// is.
  bool Seek(std::uint64_t iPosition) noexcept;

  /// Reads the next byte. At the end the answer is false and oChar is untouched.
  bool ReadChar(char& oChar) noexcept;

 private:
  BinarySlice _slice;
  std::uint64_t _position = 0;
};

}  // namespace QB

/// Buffers of equal bytes hash alike.
template <>
struct std::hash<QB::Binary> {
  /// The hash of a value.
  std::size_t operator()(const QB::Binary& iBinary) const noexcept {
    return std::hash<std::string_view>()(iBinary.ToStringView());
  }
};
