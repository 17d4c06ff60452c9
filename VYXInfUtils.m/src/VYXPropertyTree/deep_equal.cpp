#include <array>
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
  struct Shapes {
    const Shape* left = nullptr;
    const Shape* right = nullptr;
    bool areEqual = false;
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
    return iLeft.Size() == iRight.Size() && CompareRows(iLeft.begin(), iRight.begin(), iLeft.Size());
  }

  bool CompareMembers(const Object& iLeft, const Object& iRight) {
    if (iLeft.Size() != iRight.Size() || iLeft.IsEmpty()) {
      return iLeft.Size() == iRight.Size();
    }
    const ObjectBody* const left = iLeft.Body();
    const ObjectBody* const right = iRight.Body();
    const bool haveShapes = left->shape != nullptr && right->shape != nullptr;
    if (haveShapes && HaveEqualKeys(left->shape, right->shape)) {
      return CompareRows(left->Values(), right->Values(), left->shape->Size());
    }
    return CompareOneByOne(iLeft, iRight);
  }

  /// The members of objects that may differ in their keys or in what they are made of.
  bool CompareOneByOne(const Object& iLeft, const Object& iRight) {
    MemberCursor leftMembers = MembersOf(iLeft);
    MemberCursor rightMembers = MembersOf(iRight);
    while (const Member left = leftMembers.Next()) {
      const Member right = rightMembers.Next();
      if (!VYX::Internal::PooledText::AreEqual(*left.key, *right.key) || !CompareValues(*left.value, *right.value)) {
        return false;
      }
    }
    return true;
  }

  /// Shapes are compared once, as long as the answer is remembered.
  bool HaveEqualKeys(const Shape* iLeft, const Shape* iRight) {
    Shapes& known = _shapes[(reinterpret_cast<std::uintptr_t>(iLeft) / sizeof(KORUnicodeString)) % _shapes.size()];
    if (known.left != iLeft || known.right != iRight) {
      known = {iLeft, iRight, iLeft == iRight || iLeft->HasKeysOf(*iRight)};
    }
    return known.areEqual;
  }

  bool CompareRows(const Value* iLeft, const Value* iRight, std::size_t iCount) {
    for (std::size_t index = 0; index < iCount; ++index) {
      if (!CompareValues(iLeft[index], iRight[index])) {
        return false;
      }
    }
    return true;
  }

  /// Containers of one kind are compared when their turn comes.
  bool CompareValues(const Value& iLeft, const Value& iRight) {
    const Kind kind = iLeft.GetKind();
    if (kind != iRight.GetKind()) {
      return false;
    }
    switch (kind) {
      case Kind::Boolean:
        return iLeft.GetBoolean() == iRight.GetBoolean();
      case Kind::Number:
        return HaveEqualNumberText(iLeft.GetNumber(), iRight.GetNumber());
      case Kind::String:
        return VYX::Internal::PooledText::AreEqual(iLeft.GetString(), iRight.GetString());
      case Kind::Array:
      case Kind::Object:
        _tasks.push_back({&iLeft, &iRight});
        return true;
      default:  // null, or absent on both sides
        return true;
    }
  }

  std::vector<Task> _tasks;
  std::array<Shapes, 32> _shapes;
};

}  // namespace

bool HaveEqualText(const Value& iLeft, const Value& iRight) {
  return Comparer().AreEqual(iLeft, iRight);
}

bool HaveEqualText(const Object& iLeft, const Object& iRight) {
  return Comparer().AreEqual(iLeft, iRight);
}

}  // namespace json
