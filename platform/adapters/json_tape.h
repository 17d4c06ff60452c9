#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace VYX::Adapters {

/**
 * A document as the reader wrote it: one row of words, in the order of the text. For a reader of the whole document
 * this is several times as fast as JsonNode and JsonWalk.
 *
 * A word's upper 8 bits tell the kind of a value, the rest belongs to it:
 * - kString: the place of its size (32 bits) among the texts; its bytes and a zero byte follow there.
 * - kSigned, kUnsigned, kDouble: nothing; the next word is the number.
 * - kTrue, kFalse, kNull: nothing.
 * - kArray, kObject: 24 bits of count, kManyValues where there are as many or more, and 32 bits with the place behind
 *   the value. The elements follow, or for each member a kString for the key and its value; then one word ends it.
 */
struct JsonTape {
  static constexpr char kObject = '{';
  static constexpr char kArray = '[';
  static constexpr char kString = '"';
  static constexpr char kSigned = 'l';
  static constexpr char kUnsigned = 'u';
  static constexpr char kDouble = 'd';
  static constexpr char kTrue = 't';
  static constexpr char kFalse = 'f';
  static constexpr char kNull = 'n';
  static constexpr std::size_t kManyValues = 0xFFFFFF;

  /// So many bytes may be read from the begin of any text.
  static constexpr std::size_t kReadableBytes = 24;

  char Kind(std::size_t iPlace) const noexcept { return static_cast<char>(words[iPlace] >> 56); }

  std::string_view Text(std::size_t iPlace) const noexcept {
    const char* const text = texts + (words[iPlace] & 0x00FFFFFFFFFFFFFFU);
    std::uint32_t size = 0;
    std::memcpy(&size, text, sizeof size);
    return {text + sizeof size, size};
  }

  double Number(std::size_t iPlace) const noexcept {
    const std::uint64_t word = words[iPlace + 1];
    if (Kind(iPlace) == kSigned) {
      return static_cast<double>(static_cast<std::int64_t>(word));
    }
    if (Kind(iPlace) == kUnsigned) {
      return static_cast<double>(word);
    }
    double number = 0;
    std::memcpy(&number, &word, sizeof number);
    return number;
  }

  /// The place behind a value.
  std::size_t After(std::size_t iPlace) const noexcept {
    switch (Kind(iPlace)) {
      case kArray:
      case kObject:
        return static_cast<std::uint32_t>(words[iPlace]);
      case kSigned:
      case kUnsigned:
      case kDouble:
        return iPlace + 2;
      default:
        return iPlace + 1;
    }
  }

  /// The number of elements or members of an array or object.
  std::size_t Count(std::size_t iPlace) const noexcept {
    const std::size_t count = (words[iPlace] >> 32) & kManyValues;
    return count < kManyValues ? count : CountAll(iPlace);
  }

  const std::uint64_t* words = nullptr;
  const char* texts = nullptr;
  std::size_t root = 0;  ///< the place of the value at the top

 private:
  std::size_t CountAll(std::size_t iPlace) const noexcept {
    const std::size_t keys = Kind(iPlace) == kObject ? 1 : 0;
    std::size_t count = 0;
    for (std::size_t place = iPlace + 1; place + 1 < After(iPlace); place = After(place + keys)) {
      ++count;
    }
    return count;
  }
};

}  // namespace VYX::Adapters
