#include <string>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree.h"
#include "json_cases.h"

namespace {

struct Text : KORUnicodeString {
  explicit Text(const std::string& iText) : KORUnicodeString(std::string_view(iText)) {}
};

/// The text that Stringify gives, with the names that std::string has.
struct Output : KORUnicodeString {
  const char* data() const { return CastToCharPtr(); }
  std::size_t size() const { return GetLengthInByte(); }
};

struct Engine {
  using Document = VYXPropertyTree;
  using Text = ::Text;
  using Key = KORUnicodeString;
  using Object = VYXPropertyTree;

  static void Parse(const Text& iText, Document& oDocument) { oDocument.Parse(iText); }
  static Output Stringify(const Document& iDocument) {
    Output text;
    iDocument.Stringify(text);
    return text;
  }
  static void Copy(const Document& iFrom, Document& oTo) { oTo = iFrom; }
  static bool Equal(const Document& iLeft, const Document& iRight) { return iLeft == iRight; }
  static void Set(Object& ioObject, const Key& iKey, std::int64_t iValue) { ioObject.SetInteger(iKey, iValue); }
  static std::int64_t Get(const Object& iObject, const Key& iKey) {
    std::int64_t value = 0;
    iObject.GetInteger(iKey, value);
    return value;
  }
  static void Remove(Object& ioObject, const Key& iKey) { ioObject.RemoveKey(iKey); }
};

}  // namespace

int main(int iCount, char** iArguments) {
  return Compare::RunJson<Engine>(iCount, iArguments);
}
