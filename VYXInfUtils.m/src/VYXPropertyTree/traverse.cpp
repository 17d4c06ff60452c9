#include <stdexcept>
#include <utility>

#include "VYXIPropertyTreeVisitor.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTree/object_body.h"
#include "VYXPropertyTree/tree_access.h"
#include "VYXPropertyTreeLists.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::TreeAccess;

namespace {

VYXPropertyTree CopyAsTree(const json::Object& iObject) {
  VYXPropertyTree tree;
  TreeAccess::Replace(tree, json::Object(iObject));
  return tree;
}

/// The elements of an array as a list; json::BadVariantAccess at one of another alternative.
template <class List, class Read>
List ListOf(const json::Array& iArray, Read&& iRead) {
  List list;
  for (const json::Value& element : iArray) {
    list.Append(iRead(element));
  }
  return list;
}

void VisitArray(const KORUnicodeString& iKey, const json::Array& iArray, VYXIPropertyTreeVisitor& ioVisitor) {
  switch (iArray.IsEmpty() ? json::Kind::String : iArray.begin()->GetKind()) {
    case json::Kind::Null:
      break;
    case json::Kind::Boolean:
      ioVisitor.VisitBooleanList(
          iKey, ListOf<KORListValvyx_bool>(iArray, [](const json::Value& iElement) { return iElement.GetBoolean(); }));
      break;
    case json::Kind::Number:
      ioVisitor.VisitDoubleList(
          iKey, ListOf<KORRawColldouble>(iArray, [](const json::Value& iElement) { return iElement.GetNumber(); }));
      break;
    case json::Kind::String:
      ioVisitor.VisitStringList(iKey, ListOf<KORListValKORUnicodeString>(
                                          iArray, [](const json::Value& iElement) { return iElement.GetString(); }));
      break;
    case json::Kind::Array:
      throw std::logic_error("Unexpected visit");
    case json::Kind::Object:
      ioVisitor.VisitPropertyTreeList(iKey, ListOf<KORListValVYXPropertyTree>(iArray, [](const json::Value& iElement) {
                                        return CopyAsTree(iElement.GetObject());
                                      }));
      break;
  }
}

void VisitMember(const KORUnicodeString& iKey, const json::Value& iValue, VYXIPropertyTreeVisitor& ioVisitor) {
  switch (iValue.GetKind()) {
    case json::Kind::Null:
      ioVisitor.VisitNull(iKey);
      break;
    case json::Kind::Boolean:
      ioVisitor.VisitBoolean(iKey, iValue.GetBoolean());
      break;
    case json::Kind::Number:
      ioVisitor.VisitDouble(iKey, iValue.GetNumber());
      break;
    case json::Kind::String:
      ioVisitor.VisitString(iKey, iValue.GetString());
      break;
    case json::Kind::Array:
      VisitArray(iKey, iValue.GetArray(), ioVisitor);
      break;
    case json::Kind::Object:
      ioVisitor.VisitPropertyTree(iKey, CopyAsTree(iValue.GetObject()));
      break;
  }
}

}  // namespace

long VYXPropertyTree::Traverse(VYXIPropertyTreeVisitor& iVisitor) const {
  if (_root == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    json::SlotTable::Cursor members = json::MembersOf(*_root);
    while (const json::Entry* const member = members.Next()) {
      VisitMember(member->key, member->value, iVisitor);
    }
    return S_OK;
  });
}

long VYXPropertyTree::Dispatch(const KORUnicodeString& iKey, VYXIPropertyTreeVisitor& iVisitor) const {
  if (_root == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    const json::Value* const value = _root->Find(iKey);
    if (value == nullptr) {
      return S_FALSE;
    }
    VisitMember(iKey, *value, iVisitor);
    return S_OK;
  });
}
