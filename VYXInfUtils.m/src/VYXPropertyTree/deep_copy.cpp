#include <vector>

#include "VYXPropertyTree/object_body.h"
#include "VYXPropertyTree/shape_map.h"
#include "VYXPropertyTree/value.h"

namespace json {

namespace {

constexpr std::size_t kExpectedPerValue = 2 * sizeof(Value);

std::size_t ExpectedSize(const ContainerBody* iBody) noexcept {
  const bool isWhole = iBody->arena != nullptr && iBody->arena->DiesWith(iBody);
  return isWhole ? iBody->arena->Size() : sizeof(ObjectBody) + iBody->size * kExpectedPerValue;
}

/// Copies containers into an arena: a body below is made with room for its values first and filled when its turn comes.
class Copier {
 public:
  explicit Copier(const ContainerBody* iFrom) : _arena(Arena::Make(ExpectedSize(iFrom))) {}
  Copier(const Copier&) = delete;
  Copier& operator=(const Copier&) = delete;
  ~Copier() {
    if (_arena != nullptr) {
      Arena::Free(_arena);
    }
  }

  /// The copy of the whole, which owns the arena.
  template <class Body>
  Body* CopyAll(Body* iFrom) {
    Body* const to = MakeFor(iFrom);
    while (!_tasks.empty()) {
      const Task task = _tasks.back();
      _tasks.pop_back();
      if (task.from->isObject) {
        Fill(static_cast<const ObjectBody*>(task.from), static_cast<ObjectBody*>(task.to));
      } else {
        Fill(static_cast<ArrayBody*>(task.from), static_cast<ArrayBody*>(task.to));
      }
    }
    _arena = nullptr;
    return to;
  }

 private:
  struct Task {
    ContainerBody* from;
    ContainerBody* to;
  };

  ArrayBody* MakeFor(ArrayBody* iFrom) {
    ArrayBody* const to = ArrayBody::Make(*_arena, iFrom->size);
    _tasks.push_back({iFrom, to});
    return to;
  }

  ObjectBody* MakeFor(ObjectBody* iFrom) {
    const Shape* const shape = iFrom->shape != nullptr ? _shapes.CopyOf(*iFrom->shape, *_arena)
                                                       : _shapes.ShapeOf(*static_cast<MappedBody*>(iFrom), *_arena);
    ObjectBody* const to = ObjectBody::Make(*_arena, *shape);
    to->size = iFrom->size;
    _tasks.push_back({iFrom, to});
    return to;
  }

  void Fill(ArrayBody* iFrom, ArrayBody* oTo) {
    const Value* from = iFrom->Elements();
    Value* to = oTo->Elements();
    for (const Value* const end = from + iFrom->size; from != end; ++from) {
      CopyValue(*from, to++);
    }
  }

  void Fill(const ObjectBody* iFrom, ObjectBody* oTo) {
    Value* to = oTo->Values();
    if (iFrom->shape == nullptr) {
      MemberCursor members(iFrom);
      while (const Member member = members.Next()) {
        CopyValue(*member.value, to++);
      }
      return;
    }
    const Value* from = iFrom->Values();
    for (const Value* const end = from + iFrom->shape->Size(); from != end; ++from, ++to) {
      if (!from->IsAbsent()) {
        CopyValue(*from, to);
      }
    }
  }

  void CopyValue(const Value& iFrom, Value* oTo) {
    switch (iFrom.GetKind()) {
      case Kind::String:
        Value::MakePooled(oTo, iFrom.GetString(), [this](std::size_t iSize) { return _arena->Allocate(iSize); });
        break;
      case Kind::Array: {
        ArrayBody* const body = iFrom.GetArray().Body();
        new (oTo) Value(Array(iFrom.GetArray().IsEmpty() ? nullptr : MakeFor(body)));
        break;
      }
      case Kind::Object: {
        auto* const body = const_cast<ObjectBody*>(iFrom.GetObject().Body());
        new (oTo) Value(Object(iFrom.GetObject().IsEmpty() ? nullptr : MakeFor(body)));
        break;
      }
      default:
        Value::MakeScalar(oTo, iFrom);
        break;
    }
  }

  Arena* _arena;
  ShapeMap _shapes;
  std::vector<Task> _tasks;
};

}  // namespace

Array::Array(const Array& iOther) {
  if (!iOther.IsEmpty()) {
    _body = Copier(iOther._body).CopyAll(iOther._body);
  }
}

Object::Object(const Object& iOther) {
  if (!iOther.IsEmpty()) {
    _body = Copier(iOther._body).CopyAll(iOther._body);
  }
}

}  // namespace json
