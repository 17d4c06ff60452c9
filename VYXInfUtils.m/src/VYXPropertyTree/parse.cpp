#include <cstddef>
#include <utility>
#include <vector>

#include "Quillbase/JSON/JIStream.h"
#include "Quillbase/JSON/JVisitor.h"
#include "Quillbase/StringView.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTree/member_access.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::MemberAccess;

namespace {

/// Receives the members of an object from the reader and stores them. What is nested is built aside and moved into
/// place.
class QBJSON2PropertyTree : public JSON::JVisitor {
 public:
  explicit QBJSON2PropertyTree(json::Object& ioTarget) noexcept
      : JSON::JVisitor(true), _target(ioTarget), _members(&ioTarget) {}

  bool EndOfFile() override { return true; }

  bool Visit(const QB::StringView& iKey, const std::vector<double>& iNumbers) override {
    return StoreArray(iKey, iNumbers, StoreNumber);
  }
  bool Visit(const QB::StringView& iKey, const std::vector<JSON::JIStream>& iObjects) override {
    return StoreArray(iKey, iObjects, ReadObject);
  }
  bool Visit(const QB::StringView& iKey, const std::vector<bool>& iBooleans) override {
    return StoreArray(iKey, iBooleans, StoreBoolean);
  }
  bool Visit(const QB::StringView& iKey, const std::vector<QB::StringView>& iTexts) override {
    return StoreArray(iKey, iTexts, StoreText);
  }
  bool Visit(const QB::StringView& iKey, double iNumber) override {
    return Store(iKey, [&](json::Value& oValue) { return StoreNumber(iNumber, oValue); });
  }
  bool Visit(const QB::StringView& iKey, const JSON::JIStream& iObject) override {
    return Store(iKey, [&](json::Value& oValue) { return ReadObject(iObject, oValue); });
  }
  bool Visit(const QB::StringView& iKey, bool iBoolean) override {
    return Store(iKey, [&](json::Value& oValue) { return StoreBoolean(iBoolean, oValue); });
  }
  bool Visit(const QB::StringView& iKey, const QB::StringView& iText) override {
    return Store(iKey, [&](json::Value& oValue) { return StoreText(iText, oValue); });
  }
  bool VisitAny(const QB::StringView& iKey, const JSON::JIStream& iArray) override {
    return Store(iKey, [&](json::Value& oValue) { return ReadArray(iArray, oValue); });
  }

  void ExpectMembers(std::size_t iCount) override { _target.Reserve(iCount); }

 private:
  static bool StoreNumber(double iNumber, json::Value& oValue) {
    oValue = json::Value(iNumber);
    return true;
  }
  static bool StoreBoolean(bool iBoolean, json::Value& oValue) {
    oValue = json::Value(iBoolean);
    return true;
  }
  static bool StoreText(const QB::StringView& iText, json::Value& oValue) {
    oValue = json::Value(static_cast<const KORUnicodeString&>(iText));
    return true;
  }

  static bool ReadObject(const JSON::JIStream& iObject, json::Value& oValue) {
    json::Object object;
    QBJSON2PropertyTree visitor(object);
    const bool isRead = iObject.Apply(visitor, nullptr);
    oValue = json::Value(std::move(object));
    return isRead;
  }

  /// Any array, element by element; the reader bounds the depth.
  static bool ReadArray(const JSON::JIStream& iArray, json::Value& oValue) {
    json::Array array;
    array.Reserve(iArray.Size());
    bool isRead = true;
    for (JSON::JCursor cursor(iArray); isRead && cursor.Next();) {
      isRead = ReadAny(cursor.Value(), array.Append(json::Value()));
    }
    oValue = json::Value(std::move(array));
    return isRead;
  }

  static bool ReadAny(const JSON::JIStream& iValue, json::Value& oValue) {
    switch (iValue.Kind()) {
      case JSON::JKind::Null:
        return true;
      case JSON::JKind::Boolean:
        return StoreBoolean(iValue.GetBoolean(), oValue);
      case JSON::JKind::Number:
        return StoreNumber(iValue.GetNumber(), oValue);
      case JSON::JKind::String:
        return StoreText(iValue.GetText(), oValue);
      case JSON::JKind::Array:
        return ReadArray(iValue, oValue);
      case JSON::JKind::Object:
        return ReadObject(iValue, oValue);
    }
    return false;
  }

  /// Stores an array of elements of one kind, each read by iRead.
  template <class Elements, class Read>
  bool StoreArray(const QB::StringView& iKey, const Elements& iElements, Read&& iRead) {
    return Store(iKey, [&](json::Value& oValue) {
      json::Array array;
      array.Reserve(iElements.size());
      bool isRead = true;
      for (const auto& element : iElements) {
        isRead = isRead && iRead(element, array.Append(json::Value()));
      }
      oValue = json::Value(std::move(array));
      return isRead;
    });
  }

  template <class Read>
  bool Store(const QB::StringView& iKey, Read&& iRead) {
    const long code = CatchAtBoundary(VYX_HERE, E_FAIL, [&] {
      json::Value value;
      return iRead(value) ? _members.SetValue(iKey, std::move(value)) : E_FAIL;
    });
    if (code < 0) {
      LogPendingError(code);
      return FailureReturn(VYX_HERE, false);
    }
    return true;
  }

  json::Object& _target;
  MemberAccess _members;
};

}  // namespace

long VYXPropertyTree::Parse(const KORUnicodeString& iText) {
  if (_root == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    JSON::JIStream reader;
    if (!reader.Parse(iText, false)) {
      return FailureReturn(VYX_HERE, LogPendingError(E_FAIL));
    }
    QBJSON2PropertyTree visitor(*_root);
    if (!reader.Apply(visitor, nullptr)) {
      return FailureReturn(VYX_HERE, LogPendingError(E_FAIL));
    }
    return S_OK;
  });
}
