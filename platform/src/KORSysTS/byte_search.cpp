#include "byte_search.h"

#include <algorithm>
#include <cstring>

namespace VYX::Platform {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// The plain scan compares this many bytes per byte of progress, and a start-up allowance, before it gives way.
constexpr std::size_t kPatience = 8;
constexpr std::size_t kAllowance = 1024;

// A text read from its first or from its last byte on.
struct Upward {
  std::string_view text;
  unsigned char operator[](std::size_t iIndex) const noexcept { return static_cast<unsigned char>(text[iIndex]); }
};
struct Downward {
  std::string_view text;
  unsigned char operator[](std::size_t iIndex) const noexcept {
    return static_cast<unsigned char>(text[text.size() - 1 - iIndex]);
  }
};

// A critical factorization: where the needle is parted and the period of its right part.
struct Parting {
  std::size_t suffix;
  std::size_t period;
};

template <class Reader>
Parting MaximalSuffix(Reader iNeedle, bool iInverted) noexcept {
  const std::size_t size = iNeedle.text.size();
  std::size_t before = kNone;  // one before the suffix; wraps to index 0
  std::size_t candidate = 0;
  std::size_t step = 1;
  std::size_t period = 1;
  while (candidate + step < size) {
    const unsigned char next = iNeedle[candidate + step];
    const unsigned char best = iNeedle[before + step];
    if (next == best) {
      if (step == period) {
        candidate += period;
        step = 1;
      } else {
        ++step;
      }
    } else if ((next < best) != iInverted) {
      candidate += step;
      step = 1;
      period = candidate - before;
    } else {
      before = candidate++;
      step = period = 1;
    }
  }
  return {before + 1, period};
}

template <class Reader>
Parting PartCritically(Reader iNeedle) noexcept {
  const Parting straight = MaximalSuffix(iNeedle, false);
  const Parting inverted = MaximalSuffix(iNeedle, true);
  return inverted.suffix < straight.suffix ? straight : inverted;
}

template <class Reader>
bool IsPeriodic(Reader iNeedle, Parting iParting) noexcept {
  for (std::size_t index = 0; index < iParting.suffix; ++index) {
    if (iNeedle[index] != iNeedle[index + iParting.period]) {
      return false;
    }
  }
  return true;
}

// The two-way algorithm of Crochemore and Perrin (Journal of the ACM 38, 1991): linear time, constant space.
template <class Reader>
std::size_t FindTwoWay(Reader iText, Reader iNeedle) noexcept {
  const std::size_t textSize = iText.text.size();
  const std::size_t size = iNeedle.text.size();
  const Parting parting = PartCritically(iNeedle);
  const bool isPeriodic = IsPeriodic(iNeedle, parting);
  const std::size_t shift = isPeriodic ? parting.period : std::max(parting.suffix, size - parting.suffix) + 1;
  std::size_t known = 0;  // bytes at the needle's start that are known to match
  std::size_t place = 0;
  while (place + size <= textSize) {
    std::size_t right = std::max(parting.suffix, known);
    while (right < size && iNeedle[right] == iText[place + right]) {
      ++right;
    }
    if (right < size) {
      place += right - parting.suffix + 1;
      known = 0;
      continue;
    }
    std::size_t left = parting.suffix;
    while (left > known && iNeedle[left - 1] == iText[place + left - 1]) {
      --left;
    }
    if (left <= known) {
      return place;
    }
    place += shift;
    known = isPeriodic ? size - parting.period : 0;
  }
  return kNone;
}

template <class Reader>
std::size_t CommonLength(Reader iText, std::size_t iPlace, Reader iNeedle) noexcept {
  std::size_t length = 0;
  while (length < iNeedle.text.size() && iText[iPlace + length] == iNeedle[length]) {
    ++length;
  }
  return length;
}

}  // namespace

std::size_t FindFirst(std::string_view iText, std::string_view iNeedle, std::size_t iFrom) noexcept {
  std::size_t place = iFrom;
  std::size_t compared = 0;
  while (place <= iText.size() && iNeedle.size() <= iText.size() - place) {
    const void* const hit = std::memchr(iText.data() + place, static_cast<unsigned char>(iNeedle.front()),
                                        iText.size() - place - iNeedle.size() + 1);
    if (hit == nullptr) {
      return kNone;
    }
    place = static_cast<std::size_t>(static_cast<const char*>(hit) - iText.data());
    const std::size_t common = CommonLength(Upward{iText}, place, Upward{iNeedle});
    if (common == iNeedle.size()) {
      return place;
    }
    ++place;
    compared += common;
    if (compared > kAllowance + kPatience * (place - iFrom)) {
      const std::size_t found = FindTwoWay(Upward{iText.substr(place)}, Upward{iNeedle});
      return found == kNone ? kNone : place + found;
    }
  }
  return kNone;
}

std::size_t FindLast(std::string_view iText, std::string_view iNeedle) noexcept {
  const Downward text{iText};
  const Downward needle{iNeedle};
  std::size_t compared = 0;
  for (std::size_t place = 0; place + iNeedle.size() <= iText.size(); ++place) {
    const std::size_t common = CommonLength(text, place, needle);
    if (common == iNeedle.size()) {
      return iText.size() - place - iNeedle.size();
    }
    compared += common;
    if (compared > kAllowance + kPatience * place) {
      const std::size_t found = FindTwoWay(Downward{iText.substr(0, iText.size() - place)}, needle);
      return found == kNone ? kNone : iText.size() - place - found - iNeedle.size();
    }
  }
  return kNone;
}

}  // namespace VYX::Platform
