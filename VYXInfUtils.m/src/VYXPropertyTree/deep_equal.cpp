#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "VYXPropertyTree/object_body.h"
#include "VYXPropertyTree/value.h"

namespace json {

namespace {

bool HaveEqualNumberText(double iLeft, double iRight) noexcept {
  return std::bit_cast<std::uint64_t>(iLeft) == std::bit_cast<std::uint64_t>(iRight) ||
         (std::isnan(iLeft) && std::isnan(iRight) && std::signbit(iLeft) == std::signbit(iRight));
}

class Comparer {
 public:
  bool AreEqual(const Value& iLeft, const Value& iRight) { return CompareValues(iLeft, iRight) && ComparePending(); }
  bool AreEqual(const Object& iLeft, const Object& iRight) { return CompareMembers(iLeft, iRight) && ComparePending(); }

 private:
  struct Task {
    const Value* left;
    const Value* right;
  };

  bool ComparePending() {
    while (!_tasks.empty()) {
      const Task task = _tasks.back();
      _tasks.pop_back();
      const bool areEqual = task.left->GetKind() == Kind::Array
                                ? CompareElements(task.left->GetArray(), task.right->GetArray())
                                : CompareMembers(task.left->GetObject(), task.right->GetObject());
      if (!areEqual) {
        return false;
      }
    }
    return true;
  }

  bool CompareElements(const Array& iLeft, const Array& iRight) {
    if (iLeft.Size() != iRight.Size()) {
      return false;
    }
    const Value* right = iRight.begin();
    for (const Value& left : iLeft) {
      if (!CompareValues(left, *right++)) {
        return false;
      }
    }
    return true;
  }

  bool CompareMembers(const Object& iLeft, const Object& iRight) {
    if (iLeft.Size() != iRight.Size()) {
      return false;
    }
    SlotTable::Cursor leftMembers = MembersOf(iLeft);
    SlotTable::Cursor rightMembers = MembersOf(iRight);
    while (const Entry* const left = leftMembers.Next()) {
      const Entry* const right = rightMembers.Next();
      if (!(left->key == right->key) || !CompareValues(left->value, right->value)) {
        return false;
      }
    }
    return true;
  }

  /// Containers of one kind are compared when their turn comes.
  bool CompareValues(const Value& iLeft, const Value& iRight) {
    if (iLeft.GetKind() != iRight.GetKind()) {
      return false;
    }
    switch (iLeft.GetKind()) {
      case Kind::Null:
        return true;
      case Kind::Boolean:
        return iLeft.GetBoolean() == iRight.GetBoolean();
      case Kind::Number:
        return HaveEqualNumberText(iLeft.GetNumber(), iRight.GetNumber());
      case Kind::String:
        return iLeft.GetString() == iRight.GetString();
      default:
        _tasks.push_back({&iLeft, &iRight});
        return true;
    }
  }

  std::vector<Task> _tasks;
};

}  // namespace

bool HaveEqualText(const Value& iLeft, const Value& iRight) {
  return Comparer().AreEqual(iLeft, iRight);
}

bool HaveEqualText(const Object& iLeft, const Object& iRight) {
  return Comparer().AreEqual(iLeft, iRight);
}

}  // namespace json
