#include "VYXPropertyTree/container.h"
#include "VYXPropertyTree/object_body.h"
#include "VYXPropertyTree/value.h"

namespace json {

namespace {

/// Bodies that wait for their destruction, linked through themselves.
class DoomedBodies {
 public:
  void Push(ContainerBody* ioBody) noexcept {
    if (ioBody != nullptr) {
      ioBody->nextDoomed = _first;
      _first = ioBody;
    }
  }
  ContainerBody* Pop() noexcept { return _first == nullptr ? nullptr : std::exchange(_first, _first->nextDoomed); }

 private:
  ContainerBody* _first = nullptr;
};

void DestroyArray(ArrayBody* ioBody, DoomedBodies& ioDoomed) noexcept {
  Value* const elements = ioBody->Elements();
  for (std::size_t index = 0; index < ioBody->size; ++index) {
    ioDoomed.Push(elements[index].Dismantle());
  }
  ::operator delete(ioBody);
}

void DestroyObject(ObjectBody* ioBody, DoomedBodies& ioDoomed) noexcept {
  SlotTable::Cursor members(ioBody->slots);
  while (Entry* const entry = members.Next()) {
    ioDoomed.Push(entry->value.Dismantle());
    entry->key.~KORUnicodeString();
    ioBody->FreeEntry(entry);
  }
  ObjectBody::Free(ioBody);
}

}  // namespace

ContainerBody* Value::Dismantle() noexcept {
  if (_kind == Kind::String) {
    _string.~KORUnicodeString();
  } else if (_kind == Kind::Array) {
    return _array.Detach();
  } else if (_kind == Kind::Object) {
    return _object.Detach();
  }
  return nullptr;
}

void Destroy(ContainerBody* ioBody) noexcept {
  DoomedBodies doomed;
  doomed.Push(ioBody);
  while (ContainerBody* const body = doomed.Pop()) {
    if (body->isObject) {
      DestroyObject(static_cast<ObjectBody*>(body), doomed);
    } else {
      DestroyArray(static_cast<ArrayBody*>(body), doomed);
    }
  }
}

}  // namespace json
