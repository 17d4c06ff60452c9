#include "platform/adapters/base64.h"

#include <cstdint>

// The compiler reads this file once for each instruction set; the best one for the processor is chosen at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/adapters/base64_highway.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace VYX::Adapters {
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR

std::size_t EncodeBlocks(const std::uint8_t*, std::size_t, std::uint8_t*) {
  return 0;
}
std::size_t DecodeBlocks(const std::uint8_t*, std::size_t, std::uint8_t*) {
  return 0;
}

#else

namespace hn = hwy::HWY_NAMESPACE;
using Bytes = hn::ScalableTag<std::uint8_t>;
using Vector = hn::Vec<Bytes>;

// A distance between two bytes, as a byte to add.
constexpr std::uint8_t Distance(int iFrom, int iTo) {
  return static_cast<std::uint8_t>(256 + iTo - iFrom);
}

constexpr std::uint8_t kDigitCharacter = Distance(52, '0');
alignas(16) constexpr std::uint8_t kCharacterDistances[16] = {
    Distance(26, 'a'), kDigitCharacter,   kDigitCharacter,   kDigitCharacter, kDigitCharacter,
    kDigitCharacter,   kDigitCharacter,   kDigitCharacter,   kDigitCharacter, kDigitCharacter,
    kDigitCharacter,   Distance(62, '+'), Distance(63, '/'), Distance(0, 'A')};

// 0 to 63 to its character: each range of the alphabet has one distance between value and character.
HWY_INLINE Vector ToCharacters(Vector iValues) {
  const Bytes bytes;
  // 52 to 63 become 1 to 12; all below become 0, of which 0 to 25 are sent to entry 13.
  const Vector above = hn::SaturatedSub(iValues, hn::Set(bytes, 51));
  const Vector capitals = hn::VecFromMask(bytes, hn::Lt(iValues, hn::Set(bytes, 26)));
  const Vector entries = hn::Or(above, hn::And(capitals, hn::Set(bytes, 13)));
  return hn::Add(iValues, hn::TableLookupBytes(hn::LoadDup128(bytes, kCharacterDistances), entries));
}

// Flags of the lower and of the upper half of a character: a shared one means "not of the alphabet".
alignas(16) constexpr std::uint8_t kLowFlags[16] = {0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                                    0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A};
alignas(16) constexpr std::uint8_t kHighFlags[16] = {0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08,
                                                     0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10};
// By upper half; '/' shares it with '+' and has the entry before.
constexpr std::uint8_t kCapitalValue = Distance('A', 0);
constexpr std::uint8_t kSmallValue = Distance('a', 26);
alignas(16) constexpr std::uint8_t kValueDistances[16] = {
    0, Distance('/', 63), Distance('+', 62), Distance('0', 52), kCapitalValue, kCapitalValue, kSmallValue, kSmallValue};

// A character to its value; ioRefused is no longer zero where one is not of the alphabet.
HWY_INLINE Vector ToValues(Vector iCharacters, Vector& ioRefused) {
  const Bytes bytes;
  const Vector low = hn::And(iCharacters, hn::Set(bytes, 0x0F));
  const Vector high = hn::ShiftRight<4>(iCharacters);
  ioRefused = hn::Or(ioRefused, hn::And(hn::TableLookupBytes(hn::LoadDup128(bytes, kLowFlags), low),
                                        hn::TableLookupBytes(hn::LoadDup128(bytes, kHighFlags), high)));
  const Vector slash = hn::VecFromMask(bytes, hn::Eq(iCharacters, hn::Set(bytes, '/')));
  const Vector entries = hn::Add(high, slash);
  return hn::Add(iCharacters, hn::TableLookupBytes(hn::LoadDup128(bytes, kValueDistances), entries));
}

std::size_t EncodeBlocks(const std::uint8_t* iData, std::size_t iSize, std::uint8_t* oText) {
  const Bytes bytes;
  const std::size_t block = 3 * hn::Lanes(bytes);
  const Vector sixBits = hn::Set(bytes, 0x3F);
  std::size_t done = 0;
  for (; iSize - done >= block; done += block) {
    Vector first;
    Vector second;
    Vector third;
    hn::LoadInterleaved3(bytes, iData + done, first, second, third);
    const Vector v0 = hn::ShiftRight<2>(first);
    const Vector v1 = hn::And(hn::Or(hn::ShiftLeft<4>(first), hn::ShiftRight<4>(second)), sixBits);
    const Vector v2 = hn::And(hn::Or(hn::ShiftLeft<2>(second), hn::ShiftRight<6>(third)), sixBits);
    const Vector v3 = hn::And(third, sixBits);
    hn::StoreInterleaved4(ToCharacters(v0), ToCharacters(v1), ToCharacters(v2), ToCharacters(v3), bytes,
                          oText + done / 3 * 4);
  }
  return done;
}

std::size_t DecodeBlocks(const std::uint8_t* iText, std::size_t iSize, std::uint8_t* oData) {
  const Bytes bytes;
  const std::size_t block = 4 * hn::Lanes(bytes);
  std::size_t done = 0;
  for (; iSize - done >= block; done += block) {
    Vector c0;
    Vector c1;
    Vector c2;
    Vector c3;
    hn::LoadInterleaved4(bytes, iText + done, c0, c1, c2, c3);
    Vector refused = hn::Zero(bytes);
    const Vector v0 = ToValues(c0, refused);
    const Vector v1 = ToValues(c1, refused);
    const Vector v2 = ToValues(c2, refused);
    const Vector v3 = ToValues(c3, refused);
    if (!hn::AllTrue(bytes, hn::Eq(refused, hn::Zero(bytes)))) {
      break;
    }
    hn::StoreInterleaved3(hn::Or(hn::ShiftLeft<2>(v0), hn::ShiftRight<4>(v1)),
                          hn::Or(hn::ShiftLeft<4>(v1), hn::ShiftRight<2>(v2)), hn::Or(hn::ShiftLeft<6>(v2), v3), bytes,
                          oData + done / 4 * 3);
  }
  return done;
}

#endif

}  // namespace HWY_NAMESPACE
}  // namespace VYX::Adapters
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace VYX::Adapters {

namespace {

const std::uint8_t* AsBytes(const char* iData) noexcept {
  return reinterpret_cast<const std::uint8_t*>(iData);
}
std::uint8_t* AsBytes(char* ioData) noexcept {
  return reinterpret_cast<std::uint8_t*>(ioData);
}

HWY_EXPORT(EncodeBlocks);
HWY_EXPORT(DecodeBlocks);

}  // namespace

std::size_t EncodeBase64Blocks(const char* iData, std::size_t iSize, char* oText) noexcept {
  return HWY_DYNAMIC_DISPATCH(EncodeBlocks)(AsBytes(iData), iSize, AsBytes(oText));
}

std::size_t DecodeBase64Blocks(const char* iText, std::size_t iSize, char* oData) noexcept {
  return HWY_DYNAMIC_DISPATCH(DecodeBlocks)(AsBytes(iText), iSize, AsBytes(oData));
}

}  // namespace VYX::Adapters
#endif
