#include <algorithm>
#include <cstddef>
#include <utility>

#include "Quillbase/JSON/JIStream.h"
#include "Quillbase/JSON/JVisitor.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTree/object.h"
#include "VYXPropertyTree/tape_builder.h"
#include "internal/FailureTrace.h"
#include "platform/adapters/json_reader.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;

namespace VYX::Internal {

/// The library's own way to what a stream has read.
struct StreamAccess {
  static Adapters::JsonTape Tape(const JSON::JIStream& iStream) { return iStream._document->Tape(); }
};

}  // namespace VYX::Internal

namespace {

/// Stores the members of the object that was read. What the text is made of is built aside, at once, and moved into
/// place.
bool StoreMembers(const JSON::JIStream& iReader, std::size_t iTextSize, json::Object& ioTarget) {
  if (iReader.Kind() != JSON::JKind::Object) {
    JSON::JVisitor visitor(true);
    return iReader.Apply(visitor, nullptr);  // refuses it, with the reason as pending error
  }
  const long code = CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    const auto tape = VYX::Internal::StreamAccess::Tape(iReader);
    ioTarget.Merge(json::BuildObject(tape, tape.root, iTextSize));
    return S_OK;
  });
  return code >= 0 || FailureReturn(VYX_HERE, false);
}

}  // namespace

long VYXPropertyTree::Parse(const KORUnicodeString& iText) {
  if (_root == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    JSON::JIStream reader;
    if (!reader.Parse(iText, false) || !StoreMembers(reader, iText.GetLengthInByte(), *_root)) {
      return FailureReturn(VYX_HERE, LogPendingError(E_FAIL));
    }
    return S_OK;
  });
}
