#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "KORSysBase/KORCollec.h"
#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysBase/KORRawCollPV.h"
#include "KORSysBase/KORRawColldouble.h"

namespace {

template <class Vector>
void ReserveHint(Vector& ioVector, int iCapacity) {
  if (iCapacity > 0) {
    ioVector.reserve(static_cast<std::size_t>(iCapacity));
  }
}

template <class Vector>
void Clear(Vector& ioVector, KORCollec::MemoryHandling iHandling) {
  if (iHandling == KORCollec::MemoryHandling::KeepMemory) {
    ioVector.clear();
  } else {
    Vector().swap(ioVector);
  }
}

}  // namespace

namespace VYX::Platform {

void StopAtBadPosition(const char* iCollection, int iPosition, int iSize) noexcept {
  std::fprintf(stderr, "%s: position %d is outside 1..%d\n", iCollection, iPosition, iSize);
  std::fflush(stderr);
  std::abort();
}

}  // namespace VYX::Platform

KORRawCollPV::KORRawCollPV(int iCapacity, int) {
  ReserveHint(_pointers, iCapacity);
}

void KORRawCollPV::RemovePosition(int iPosition) {
  _pointers.erase(_pointers.begin() + static_cast<std::ptrdiff_t>(Index(iPosition)));
}

void KORRawCollPV::RemoveAll(KORCollec::MemoryHandling iHandling) {
  Clear(_pointers, iHandling);
}

KORRawColldouble::KORRawColldouble(int iCapacity) {
  ReserveHint(_values, iCapacity);
}

void KORRawColldouble::RemoveAll(KORCollec::MemoryHandling iHandling) {
  Clear(_values, iHandling);
}

KORListValKORUnicodeString::KORListValKORUnicodeString(int iCapacity, int) {
  ReserveHint(_texts, iCapacity);
}

KORListValKORUnicodeString::KORListValKORUnicodeString(const KORUnicodeString* iTexts, int iCount)
    : _texts(iTexts, iTexts + std::max(iCount, 0)) {}

int KORListValKORUnicodeString::Locate(const KORUnicodeString& iText, int iStart) const noexcept {
  for (int position = iStart; position <= Size(); ++position) {
    if ((*this)[position] == iText) {
      return position;
    }
  }
  return 0;
}

int KORListValKORUnicodeString::RemoveValue(const KORUnicodeString& iText) {
  const int position = Locate(iText);
  if (position != 0) {
    RemovePosition(position);
  }
  return position;
}

void KORListValKORUnicodeString::RemovePosition(int iPosition) {
  _texts.erase(_texts.begin() + static_cast<std::ptrdiff_t>(Index(iPosition)));
}

void KORListValKORUnicodeString::RemoveAll(KORCollec::MemoryHandling iHandling) {
  Clear(_texts, iHandling);
}
