#include "VYXPropertyTree/tape_builder.h"

#include <new>
#include <vector>

#include "VYXPropertyTree/object_body.h"
#include "VYXPropertyTree/shape_finder.h"
#include "VYXPropertyTree/value.h"
#include "internal/PooledText.h"

namespace json {

namespace {

using VYX::Adapters::JsonTape;
using VYX::Internal::PooledText;

/// Goes through a tape from front to back and makes each value where it will stay.
class Builder {
 public:
  Builder(const JsonTape& iTape, std::size_t iExpected)
      : _tape(iTape), _arena(Arena::Make(iExpected)), _shapes(_tape, *_arena) {}
  Builder(const Builder&) = delete;
  Builder& operator=(const Builder&) = delete;
  ~Builder() {
    if (_arena != nullptr) {
      Arena::Free(_arena);
    }
  }

  /// The body of the object at a place, which owns the arena.
  ObjectBody* Build(std::size_t iPlace) {
    _place = iPlace;
    ObjectBody* const body = BeginObject(_tape.Count(iPlace));
    while (!_open.empty()) {
      Frame& frame = _open.back();
      if (frame.left == 0) {
        End(frame);
      } else if (--frame.left; frame.key != nullptr) {
        MakeMember(frame);
      } else {
        MakeValue(frame.values++);
      }
    }
    _arena = nullptr;
    return body;
  }

 private:
  /// An array or object whose values are being made.
  struct Frame {
    Value* values;                ///< of an array, the next one; of an object, the first
    const KeySequence::Key* key;  ///< of the next member; null in an array
    std::size_t left;
    ObjectBody* object;
    KeySequence* sequence;
  };

  void End(const Frame& iFrame) {
    if (iFrame.sequence != nullptr) {
      _shapes.Release(*iFrame.sequence);
    }
    _open.pop_back();
    ++_place;
  }

  void MakeMember(Frame& ioFrame) {
    Value* const value = ioFrame.values + (ioFrame.key++)->place;
    ++_place;
    if (_tape.Kind(_place) == JsonTape::kNull) {
      ++_place;
      return;
    }
    if (value->IsAbsent()) {
      ++ioFrame.object->size;
    } else {
      value->~Value();
      Value::MakeAbsent(value);
    }
    MakeValue(value);
  }

  void MakeValue(Value* oValue) {
    switch (_tape.Kind(_place)) {
      case JsonTape::kString:
        MakeText(oValue);
        break;
      case JsonTape::kSigned:
      case JsonTape::kUnsigned:
      case JsonTape::kDouble:
        new (oValue) Value(_tape.Number(_place));
        _place += 2;
        break;
      case JsonTape::kArray:
        MakeArray(oValue);
        break;
      case JsonTape::kObject:
        MakeObject(oValue);
        break;
      case JsonTape::kNull:
        new (oValue) Value();
        ++_place;
        break;
      default:
        new (oValue) Value(_tape.Kind(_place) == JsonTape::kTrue);
        ++_place;
        break;
    }
  }

  void MakeText(Value* oValue) {
    const std::string_view text = _tape.Text(_place++);
    if (PooledText::FitsInline(text.size())) {
      PooledText::MakeInline(oValue, text.data(), text.size());
    } else {
      void* const block = _arena->Allocate(text.size() + PooledText::kOverhead);
      PooledText::MakeLong(oValue, block, text.data(), text.size());
    }
  }

  void MakeArray(Value* oValue) {
    const std::size_t count = _tape.Count(_place);
    if (count == 0) {
      new (oValue) Value(Array());
      _place += 2;
      return;
    }
    ArrayBody* const body = ArrayBody::Make(*_arena, count);
    new (oValue) Value(Array(body));
    _open.push_back({body->Elements(), nullptr, count, nullptr, nullptr});
    ++_place;
  }

  void MakeObject(Value* oValue) {
    const std::size_t count = _tape.Count(_place);
    if (count == 0) {
      new (oValue) Value(Object());
      _place += 2;
      return;
    }
    new (oValue) Value(Object(BeginObject(count)));
  }

  ObjectBody* BeginObject(std::size_t iCount) {
    KeySequence& sequence = _shapes.Find(_place, iCount);
    ObjectBody* const body = ObjectBody::Make(*_arena, *sequence.shape);
    _open.push_back({body->Values(), sequence.keys.data(), iCount, body, &sequence});
    ++_place;
    return body;
  }

  JsonTape _tape;
  Arena* _arena;
  ShapeFinder _shapes;
  std::vector<Frame> _open;
  std::size_t _place = 0;
};

}  // namespace

Object BuildObject(const JsonTape& iTape, std::size_t iPlace, std::size_t iExpected) {
  return iTape.Count(iPlace) == 0 ? Object() : Object(Builder(iTape, iExpected).Build(iPlace));
}

}  // namespace json
