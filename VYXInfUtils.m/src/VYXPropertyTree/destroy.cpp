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

/// Ends a body whose values are gone.
void Release(ContainerBody* ioBody) noexcept {
  Arena* const arena = ioBody->arena;
  if (ioBody->memory == ContainerBody::Memory::Own) {
    ::operator delete(ioBody);
  }
  if (arena != nullptr && arena->DropBody()) {
    Arena::Free(arena);
  }
}

void DestroyArray(ArrayBody* ioBody, DoomedBodies& ioDoomed) noexcept {
  Value* const elements = ioBody->Elements();
  for (std::size_t index = 0; index < ioBody->size; ++index) {
    ioDoomed.Push(elements[index].Dismantle());
  }
  Release(ioBody);
}

void DestroyObject(ObjectBody* ioBody, DoomedBodies& ioDoomed) noexcept {
  if (ioBody->shape != nullptr) {
    for (std::size_t index = 0; index < ioBody->shape->Size(); ++index) {
      ioDoomed.Push(ioBody->Values()[index].Dismantle());
    }
    Release(ioBody);
    return;
  }
  auto* const body = static_cast<MappedBody*>(ioBody);
  SlotTable::Cursor members(body->slots);
  while (const Slot* const slot = members.Next()) {
    ioDoomed.Push(slot->value->Dismantle());
    if (!body->IsInOrigin(slot->value)) {
      slot->key->~KORUnicodeString();
    }
  }
  MappedBody::Free(body);
}

}  // namespace

ContainerBody* Value::Dismantle() noexcept {
  if (Tag() < kFirstTag) {
    _string.~KORUnicodeString();
  } else if (GetKind() == Kind::Array) {
    return _array.Detach();
  } else if (GetKind() == Kind::Object) {
    return _object.Detach();
  }
  return nullptr;
}

void Destroy(ContainerBody* ioBody) noexcept {
  DoomedBodies doomed;
  doomed.Push(ioBody);
  while (ContainerBody* const body = doomed.Pop()) {
    if (body->arena != nullptr && body->arena->DiesWith(body)) {
      Arena::Free(body->arena);
    } else if (body->isObject) {
      DestroyObject(static_cast<ObjectBody*>(body), doomed);
    } else {
      DestroyArray(static_cast<ArrayBody*>(body), doomed);
    }
  }
}

}  // namespace json
