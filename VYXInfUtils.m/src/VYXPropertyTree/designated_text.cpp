#include "VYXPropertyTree/designated_text.h"

#include "VYXPropertyTree/compact_text.h"
#include "internal/FailureTrace.h"

namespace VYX::Internal {

KORUnicodeString TextOfDesignated(const json::Value* iDesignated) {
  return CatchAtBoundary(VYX_HERE, KORUnicodeString(), [&] {
    return iDesignated == nullptr ? KORUnicodeString("null") : json::CompactText(*iDesignated);
  });
}

}  // namespace VYX::Internal
