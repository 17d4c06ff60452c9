// Compiled twice: with PEER_PARSE_FLAGS set to full precision, and to the library's default, which is less exact.
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>

#include "json_cases.h"

namespace {

/// The text that was written, with the names that std::string has.
struct Output {
  const char* data() const { return buffer.GetString(); }
  std::size_t size() const { return buffer.GetSize(); }

  rapidjson::StringBuffer buffer;
};

struct ObjectDocument : rapidjson::Document {
  ObjectDocument() { SetObject(); }
};

struct Engine {
  using Document = rapidjson::Document;
  using Text = std::string;
  using Key = std::string;
  using Object = ObjectDocument;

  static void Parse(const Text& iText, Document& oDocument) {
    oDocument.Parse<PEER_PARSE_FLAGS>(iText.data(), iText.size());
  }
  static Output Stringify(const Document& iDocument) {
    Output output;
    rapidjson::Writer<rapidjson::StringBuffer> writer(output.buffer);
    iDocument.Accept(writer);
    return output;
  }
  static void Copy(const Document& iFrom, Document& oTo) { oTo.CopyFrom(iFrom, oTo.GetAllocator()); }
  static bool Equal(const Document& iLeft, const Document& iRight) { return iLeft == iRight; }
  static void Set(Object& ioObject, const Key& iKey, std::int64_t iValue) {
    const rapidjson::Value key(rapidjson::StringRef(iKey.data(), iKey.size()));
    const auto found = ioObject.FindMember(key);
    if (found != ioObject.MemberEnd()) {
      found->value.SetInt64(iValue);
      return;
    }
    rapidjson::Value copy(iKey.data(), static_cast<rapidjson::SizeType>(iKey.size()), ioObject.GetAllocator());
    ioObject.AddMember(copy, rapidjson::Value(iValue), ioObject.GetAllocator());
  }
  static std::int64_t Get(const Object& iObject, const Key& iKey) {
    const auto found = iObject.FindMember(rapidjson::Value(rapidjson::StringRef(iKey.data(), iKey.size())));
    return found != iObject.MemberEnd() && found->value.IsInt64() ? found->value.GetInt64() : 0;
  }
  static void Remove(Object& ioObject, const Key& iKey) {
    ioObject.RemoveMember(rapidjson::Value(rapidjson::StringRef(iKey.data(), iKey.size())));
  }
};

}  // namespace

int main(int iCount, char** iArguments) {
  return Compare::RunJson<Engine>(iCount, iArguments);
}
