#include "Quillbase/JSON/JIStream.h"

#include <new>
#include <string>
#include <utility>
#include <vector>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "Quillbase/JSON/JVisitor.h"
#include "platform/adapters/json_reader.h"

namespace JSON {

using VYX::Adapters::JsonDocument;
using VYX::Adapters::JsonFailure;
using VYX::Adapters::JsonKind;
using VYX::Adapters::JsonNode;
using VYX::Adapters::JsonWalk;

namespace {

bool Refuse(const std::string& iMessage) {
  KORError::KORSetLastError(E_FAIL, KORUnicodeString(std::string_view(iMessage)));
  return false;
}

std::string MessageOf(const JsonFailure& iFailure) {
  return "JSON text refused at line " + std::to_string(iFailure.line) + ", column " + std::to_string(iFailure.column) +
         " (byte " + std::to_string(iFailure.offset) + "): " + iFailure.reason;
}

}  // namespace

static_assert(static_cast<int>(JKind::Object) == static_cast<int>(JsonKind::Object));

JIStream::JIStream() noexcept = default;
JIStream::JIStream(const JIStream& iOther) noexcept = default;
JIStream::JIStream(JIStream&& ioOther) noexcept = default;
JIStream& JIStream::operator=(const JIStream& iOther) noexcept = default;
JIStream& JIStream::operator=(JIStream&& ioOther) noexcept = default;
JIStream::~JIStream() = default;

JIStream::JIStream(std::shared_ptr<const JsonDocument> iDocument, std::size_t iPlace) noexcept
    : _document(std::move(iDocument)), _place(iPlace) {}

bool JIStream::Parse(const KORUnicodeString& iText, bool /*iReserved*/) {
  try {
    auto document = std::make_shared<JsonDocument>();
    JsonFailure failure;
    if (!document->Parse(iText.ToStringView(), failure)) {
      return Refuse(MessageOf(failure));
    }
    _place = document->Root().Place();
    _document = std::move(document);
    return true;
  } catch (const std::bad_alloc&) {
    // Short enough to need no memory itself.
    KORError::KORSetLastError(E_FAIL, KORUnicodeString("JSON: out of memory"));
    return false;
  }
}

// Chooses the visit for each member of an object. The vectors of the array forms are reused from member to member.
class JIStream::MemberVisits {
 public:
  MemberVisits(JVisitor& ioVisitor, const std::shared_ptr<const JsonDocument>& iDocument)
      : _visitor(ioVisitor), _document(iDocument) {}

  bool Visit(const QB::StringView& iKey, JsonNode iNode) {
    switch (iNode.Kind()) {
      case JsonKind::Null:
        return _visitor.VisitNullValue(iKey);
      case JsonKind::Boolean:
        return _visitor.Visit(iKey, iNode.Boolean());
      case JsonKind::Number:
        return _visitor.Visit(iKey, iNode.Number());
      case JsonKind::String:
        return _visitor.Visit(iKey, QB::StringView(iNode.Text()));
      case JsonKind::Object:
        return _visitor.Visit(iKey, StreamOf(iNode));
      case JsonKind::Array:
        break;
    }
    return VisitArray(iKey, iNode);
  }

 private:
  bool VisitArray(const QB::StringView& iKey, JsonNode iArray) {
    JsonWalk walk(iArray);
    const JsonKind kind = walk.Next() ? walk.Value().Kind() : JsonKind::String;
    switch (kind) {
      case JsonKind::Number:
        return VisitAll(iKey, iArray, kind, _numbers, [](JsonNode iNode) { return iNode.Number(); });
      case JsonKind::Object:
        return VisitAll(iKey, iArray, kind, _objects, [this](JsonNode iNode) { return StreamOf(iNode); });
      case JsonKind::Boolean:
        return VisitAll(iKey, iArray, kind, _booleans, [](JsonNode iNode) { return iNode.Boolean(); });
      case JsonKind::String:
        return VisitAll(iKey, iArray, kind, _texts, [](JsonNode iNode) { return QB::StringView(iNode.Text()); });
      default:
        return _visitor.VisitAny(iKey, StreamOf(iArray));
    }
  }

  // Visits the array in its own form if all elements are of one kind, else as any array.
  template <class Element, class Convert>
  bool VisitAll(const QB::StringView& iKey, JsonNode iArray, JsonKind iKind, std::vector<Element>& ioElements,
                Convert iConvert) {
    ioElements.clear();
    ioElements.reserve(iArray.Count());
    for (JsonWalk walk(iArray); walk.Next();) {
      if (walk.Value().Kind() != iKind) {
        return _visitor.VisitAny(iKey, StreamOf(iArray));
      }
      ioElements.push_back(iConvert(walk.Value()));
    }
    return _visitor.Visit(iKey, std::as_const(ioElements));
  }

  JIStream StreamOf(JsonNode iNode) const { return JIStream(_document, iNode.Place()); }

  JVisitor& _visitor;
  const std::shared_ptr<const JsonDocument>& _document;
  std::vector<double> _numbers;
  std::vector<JIStream> _objects;
  std::vector<bool> _booleans;
  std::vector<QB::StringView> _texts;
};

bool JIStream::Apply(JVisitor& ioVisitor, QB::StringView* oRefused) const {
  if (_document == nullptr) {
    return Refuse("Cannot visit a JSON object: no JSON text has been read");
  }
  const JsonNode object = Node();
  if (object.Kind() != JsonKind::Object) {
    return Refuse("Cannot visit a JSON object: the top-level value is not an object");
  }
  MemberVisits visits(ioVisitor, _document);
  ioVisitor.ExpectMembers(object.Count());
  for (JsonWalk walk(object); walk.Next();) {
    const QB::StringView key(walk.Key());
    if (!visits.Visit(key, walk.Value())) {
      if (oRefused != nullptr) {
        *oRefused = key;
      }
      return false;
    }
  }
  return ioVisitor.EndOfFile();
}

JKind JIStream::Kind() const noexcept {
  return static_cast<JKind>(Node().Kind());
}

bool JIStream::GetBoolean() const noexcept {
  return Node().Boolean();
}

double JIStream::GetNumber() const noexcept {
  return Node().Number();
}

QB::StringView JIStream::GetText() const noexcept {
  return QB::StringView(Node().Text());
}

std::size_t JIStream::Size() const noexcept {
  return Node().Count();
}

JsonNode JIStream::Node() const noexcept {
  return _document == nullptr ? JsonNode() : _document->At(_place);
}

JCursor::JCursor(const JIStream& iParent) : _value(iParent), _walk(std::make_unique<JsonWalk>(iParent.Node())) {}
JCursor::JCursor(JCursor&& ioOther) noexcept = default;
JCursor& JCursor::operator=(JCursor&& ioOther) noexcept = default;
JCursor::~JCursor() = default;

bool JCursor::Next() noexcept {
  const bool hasValue = _walk->Next();
  _value._place = hasValue ? _walk->Value().Place() : _value._place;
  return hasValue;
}

QB::StringView JCursor::Key() const noexcept {
  return QB::StringView(_walk->Key());
}

}  // namespace JSON
