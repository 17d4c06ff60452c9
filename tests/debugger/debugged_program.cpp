#include <cstdint>
#include <string>
#include <utility>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "Quillbase/Binary.h"
#include "Quillbase/StringView.h"
#include "VYXInfError.h"
#include "VYXInfUri.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeLists.h"

// The values that gdb_test.py looks at, where Stop is called.

namespace {

int stops = 0;

[[gnu::noinline]] void Stop() {
  ++stops;
}

VYXPropertyTree SampleTree() {
  VYXPropertyTree inner;
  inner.SetString("city", "Troms\u00F8");
  VYXPropertyTree tree;
  tree.SetPropertyTree("address", std::move(inner));
  tree.SetBoolean("open", true);
  tree.SetDouble("size", -2.5);
  VYXListAccess list;
  tree.GetListAccess("list", list, true);
  list.AddInteger(640);
  list.AddString("wide");
  return tree;
}

}  // namespace

int main() {
  const KORUnicodeString shortText = "caf\u00E9 \"x\"\n";
  const KORUnicodeString emptyText;
  const KORUnicodeString longText = KORUnicodeString("a text that is too long for the object, ") + KORUnicodeChar('z');
  const QB::StringView view(longText.ToStringView());
  [[maybe_unused]] const KORUnicodeChar letter = shortText[3];
  [[maybe_unused]] const KORUnicodeChar lineFeed = '\n';
  [[maybe_unused]] const KORUnicodeChar byte = '\xFF';
  const KORUnicodeString array[] = {"a", "b"};
  const KORListValKORUnicodeString texts(array, 2);
  KORRawColldouble numbers;
  numbers.Append(0.5);
  KORListValvyx_int64_t integers;
  integers.Append(3);
  integers.Append(-4);
  KORListValvyx_bool booleans;
  booleans.Append(true);
  KORRawCollPV pointers;
  pointers.Append(nullptr);
  const QB::Binary bytes(const_cast<char*>("ab\0c"), 4, nullptr);
  const QB::Binary noBytes;
  VYXPropertyTree tree = SampleTree();
  const VYXPropertyTree emptyTree;
  VYXPropertyTree manyMembers;
  for (int member = 1000; member < 2000; ++member) {
    manyMembers.SetInteger(std::to_string(member).c_str(), member);
  }
  VYXPropertyAccess address;
  tree.GetPropertyAccess("address", address, false);
  VYXListAccess list;
  tree.GetListAccess("list", list, false);
  [[maybe_unused]] const VYXPropertyAccess nothing;
  KORListValVYXPropertyTree trees;
  trees.Append(SampleTree());
  const VYXInfUri uri("ftp://host:8080/path?q=1#f");
  const VYXInfUri emptyUri;
  KORError::KORSetLastError(E_FAIL, "Disk full");
  const VYXInfError error(E_FAIL);
  KORListValVYXInfError errors;
  errors.Append(error);
  Stop();
  return stops == 1 ? 0 : 1;
}
