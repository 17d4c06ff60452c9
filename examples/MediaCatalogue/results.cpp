#include "results.h"

#include <stdexcept>
#include <string>

#include "VYXInfSystemUtil.h"
#include "file_facts.h"

namespace MediaCatalogue {

namespace {

[[noreturn]] void Fail(const char* iWhat, const KORUnicodeString& iPath) {
  const KORUnicodeString reason = TakePendingMessage("the trace above tells why");
  throw std::runtime_error(std::string(iWhat) + " '" + iPath.ConvertToChar() + "': " + reason.ConvertToChar());
}

}  // namespace

void WriteText(const KORUnicodeString& iText, const KORUnicodeString& iPath) {
  if (VYXInfSystemUtil::SaveToFile(iPath, iText, VYXInfSystemUtil::OVERWRITE | VYXInfSystemUtil::ATOMIC) < 0) {
    Fail("Cannot write", iPath);
  }
}

std::size_t WriteAndVerify(const VYXPropertyTree& iTree, const KORUnicodeString& iPath) {
  KORUnicodeString text;
  if (iTree.Stringify(text) < 0) {
    Fail("Cannot turn the catalogue into text for", iPath);
  }
  WriteText(text, iPath);
  KORUnicodeString readBack;
  if (VYXInfSystemUtil::ReadFile(iPath, readBack) < 0) {
    Fail("Cannot read back", iPath);
  }
  VYXPropertyTree tree;
  if (tree.Parse(readBack) < 0) {
    Fail("Cannot parse", iPath);
  }
  if (!(tree == iTree)) {
    Fail("What was written differs from what is read back from", iPath);
  }
  return text.GetLengthInByte();
}

}  // namespace MediaCatalogue
