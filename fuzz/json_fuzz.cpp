#include <cstddef>
#include <cstdint>
#include <string_view>

#include "KORSysBase/KORError.h"
#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/JSON/JIStream.h"
#include "VYXPropertyTree.h"
#include "fuzz/support/require.h"
#include "platform/adapters/json_diagnosis.h"
#include "platform/adapters/json_reader.h"

// Any text as JSON: both readings agree on it, and what a tree writes is a fixed point.

namespace {

using namespace VYX::Fuzz;
namespace Adapters = VYX::Adapters;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

void CheckPlace(const Adapters::JsonFailure& iFailure, std::string_view iText) {
  Require(iFailure.offset <= iText.size(), "a failure lies within the text");
  Require(iFailure.line >= 1 && iFailure.column >= 1, "lines and columns count from 1");
  Require(!iFailure.reason.empty(), "a failure has a reason");
}

// A text that was rewritten for the fast reader means what it meant before.
void CheckRewriting(const VYXPropertyTree& iTree, const Adapters::JsonDiagnosis& iDiagnosis) {
  VYXPropertyTree rewritten;
  Require(rewritten.Parse(KORUnicodeString(std::string_view(iDiagnosis.rewritten))) >= 0, "rewritten text is JSON");
  Require(rewritten == iTree, "rewritten text means the same");
}

void CheckFixedPoint(const VYXPropertyTree& iTree) {
  KORUnicodeString text;
  Require(iTree.Stringify(text) >= 0, "a parsed tree can be written");
  VYXPropertyTree again;
  Require(again.Parse(text) >= 0, "what was written can be parsed");
  Require(again == iTree, "what was written means the tree");
  KORUnicodeString textAgain;
  Require(again.Stringify(textAgain) >= 0, "a tree that was parsed twice can be written");
  RequireEqual(textAgain.ToStringView(), text.ToStringView(), "writing is a fixed point");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  const std::string_view text(reinterpret_cast<const char*>(iData), iSize);
  const std::size_t mark = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  Adapters::JsonDocument document;
  Adapters::JsonFailure failure;
  const bool isAccepted = document.Parse(text, failure);
  const Adapters::JsonDiagnosis diagnosis = Adapters::DiagnoseJson(text.substr(mark));
  Require(isAccepted == diagnosis.isWellFormed, "both readings accept the same texts");
  if (!isAccepted) {
    CheckPlace(failure, text);
  }
  VYXPropertyTree tree;
  const bool isStored = tree.Parse(KORUnicodeString(text)) >= 0;
  const bool isObject = document.Root().Kind() == Adapters::JsonKind::Object;
  Require(isStored == (isAccepted && isObject), "a tree takes every well-formed object");
  if (isStored) {
    if (diagnosis.isRewritten) {
      CheckRewriting(tree, diagnosis);
    }
    CheckFixedPoint(tree);
  }
  KORError::KORCleanLastError();
  return 0;
}
