#include <vector>

#include "VYXPropertyTree/object_body.h"
#include "VYXPropertyTree/value.h"

namespace json {

namespace {

/// Copies containers level by level: a container below is made empty first and filled when its turn comes.
class Copier {
 public:
  void Copy(const Array& iFrom, Array& oTo) {
    CopyElements(iFrom, oTo);
    CopyPending();
  }
  void Copy(const Object& iFrom, Object& oTo) {
    CopyMembers(iFrom, oTo);
    CopyPending();
  }

 private:
  struct Task {
    const Value* from;
    Value* to;
  };

  void CopyPending() {
    while (!_tasks.empty()) {
      const Task task = _tasks.back();
      _tasks.pop_back();
      if (task.from->GetKind() == Kind::Array) {
        CopyElements(task.from->GetArray(), task.to->GetArray());
      } else {
        CopyMembers(task.from->GetObject(), task.to->GetObject());
      }
    }
  }

  void CopyElements(const Array& iFrom, Array& oTo) {
    oTo.Reserve(iFrom.Size());
    for (const Value& element : iFrom) {
      CopyValue(element, oTo.Append(Value()));
    }
  }

  void CopyMembers(const Object& iFrom, Object& oTo) {
    oTo.Reserve(iFrom.Size());
    SlotTable::Cursor members = MembersOf(iFrom);
    while (const Entry* const member = members.Next()) {
      CopyValue(member->value, oTo.AppendLast(member->key));
    }
  }

  void CopyValue(const Value& iFrom, Value& oTo) {
    switch (iFrom.GetKind()) {
      case Kind::Array:
        oTo = Value(Array());
        Postpone(iFrom, oTo, iFrom.GetArray().IsEmpty());
        break;
      case Kind::Object:
        oTo = Value(Object());
        Postpone(iFrom, oTo, iFrom.GetObject().IsEmpty());
        break;
      default:
        oTo = iFrom;
        break;
    }
  }

  void Postpone(const Value& iFrom, Value& oTo, bool iIsEmpty) {
    if (!iIsEmpty) {
      _tasks.push_back({&iFrom, &oTo});
    }
  }

  std::vector<Task> _tasks;
};

}  // namespace

// Both delegate, so that a half-made copy is destroyed when memory runs out.
Array::Array(const Array& iOther) : Array() {
  Copier().Copy(iOther, *this);
}

Object::Object(const Object& iOther) : Object() {
  Copier().Copy(iOther, *this);
}

}  // namespace json
