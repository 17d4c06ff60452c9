#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysBase/KORRawColldouble.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/require.h"
#include "fuzz/support/tree_model.h"

// Operations on a property tree and on a plain model of it, which have to stay the same.

namespace {

using namespace VYX::Fuzz;
using Kind = TreeModel::Kind;

constexpr std::size_t kLargestText = 20'000;

class Trees {
 public:
  void Step(FuzzInput& ioInput) {
    const std::size_t operation = ioInput.Below(10);
    const std::string key(ioInput.Piece(12));
    const KORUnicodeString name{std::string_view(key)};
    switch (operation) {
      case 0:
        Set(key, TreeModel::OfBoolean(ioInput.Flag()));
        Require(_tree.SetBoolean(name, _model.members[key].boolean) >= 0, "a Boolean is stored");
        break;
      case 1:
        Set(key, TreeModel::OfNumber(ioInput.Value<double>()));
        Require(_tree.SetDouble(name, _model.members[key].number) >= 0, "a Number is stored");
        break;
      case 2:
        SetText(key, std::string(ioInput.Piece(40)));
        break;
      case 3:
        Require((_tree.RemoveKey(name) >= 0) == (_model.members.erase(key) != 0), "what is there can be removed");
        break;
      case 4:
        SetLists(key, ioInput);
        break;
      case 5:
        Nest(key, ioInput.Flag());
        break;
      case 6:
        ChangeInside(key, ioInput);
        break;
      case 7:
        Extend(key, ioInput);
        break;
      case 8:
        Copy();
        break;
      default:
        Read(key);
        break;
    }
  }

  void Check() {
    KORUnicodeString text;
    Require(_tree.Stringify(text) >= 0, "a tree can be written");
    const std::string expected = _model.Text();
    RequireEqual(text.ToStringView(), expected, "the tree is its model");
    if (expected.size() > kLargestText) {
      _tree = VYXPropertyTree();
      _model = TreeModel();
    }
  }

 private:
  void Set(const std::string& iKey, TreeModel iValue) { _model.members.insert_or_assign(iKey, std::move(iValue)); }

  void SetText(const std::string& iKey, const std::string& iText) {
    const KORUnicodeString key{std::string_view(iKey)};
    Require(_tree.SetString(key, KORUnicodeString(std::string_view(iText))) >= 0, "a text is stored");
    Set(iKey, TreeModel::OfString(iText));
  }

  void SetLists(const std::string& iKey, FuzzInput& ioInput) {
    KORListValKORUnicodeString texts;
    KORRawColldouble numbers;
    std::vector<TreeModel> elements;
    const bool isText = ioInput.Flag();
    for (std::size_t count = ioInput.Below(6); count > 0; --count) {
      const std::string_view text = isText ? ioInput.Piece(8) : std::string_view();
      const double number = isText ? 0 : static_cast<double>(ioInput.Value<std::int16_t>()) / 16;
      isText ? texts.Append(KORUnicodeString(text)) : numbers.Append(number);
      elements.push_back(isText ? TreeModel::OfString(std::string(text)) : TreeModel::OfNumber(number));
    }
    const KORUnicodeString key{std::string_view(iKey)};
    const long code = isText ? _tree.SetStringList(key, texts) : _tree.SetDoubleList(key, numbers);
    Require(code >= 0, "a list is stored");
    Set(iKey, TreeModel::OfArray(std::move(elements)));
  }

  // A copy of the tree, or the tree itself, becomes its own member.
  void Nest(const std::string& iKey, bool iIsMoved) {
    const KORUnicodeString key{std::string_view(iKey)};
    TreeModel nested = _model;
    if (iIsMoved) {
      VYXPropertyTree taken(std::move(_tree));
      _tree = VYXPropertyTree();
      _model = TreeModel();
      Require(_tree.SetPropertyTree(key, std::move(taken)) >= 0, "a tree is taken over");
    } else {
      Require(_tree.SetPropertyTree(key, VYXPropertyTree(_tree)) >= 0, "a tree is copied");
    }
    Set(iKey, std::move(nested));
  }

  void ChangeInside(const std::string& iKey, FuzzInput& ioInput) {
    const bool isCreated = ioInput.Flag();
    const std::string inner(ioInput.Piece(8));
    VYXPropertyAccess access;
    const auto found = _model.members.find(iKey);
    const bool isThere = found != _model.members.end();
    const bool expected = isThere ? found->second.kind == Kind::Object : isCreated;
    const KORUnicodeString key{std::string_view(iKey)};
    Require((_tree.GetPropertyAccess(key, access, isCreated) >= 0) == expected, "a view on an Object");
    if (expected) {
      const KORUnicodeString name{std::string_view(inner)};
      Require(access.SetInteger(name, 7) >= 0, "a member is set through a view");
      _model.members[iKey].members.insert_or_assign(inner, TreeModel::OfNumber(7));
    }
  }

  void Extend(const std::string& iKey, FuzzInput& ioInput) {
    const bool isCreated = ioInput.Flag();
    VYXListAccess access;
    const auto found = _model.members.find(iKey);
    const bool isThere = found != _model.members.end();
    const bool expected = isThere ? found->second.kind == Kind::Array : isCreated;
    const KORUnicodeString key{std::string_view(iKey)};
    Require((_tree.GetListAccess(key, access, isCreated) >= 0) == expected, "a view on an Array");
    if (!expected) {
      return;
    }
    TreeModel& list = isThere ? found->second : _model.members[iKey];
    list.kind = Kind::Array;
    Require(access.AddPropertyTree(_tree) >= 0, "an element is added");
    std::uint64_t size = 0;
    Require(access.GetListSize(size) >= 0 && size == list.elements.size() + 1, "an Array grew by one");
    AddCopyOfRoot(iKey);
    const std::uint64_t index = ioInput.Below(4);
    const bool isInside = index < _model.members[iKey].elements.size();
    Require((access.SetBoolean(index, true) >= 0) == isInside, "an element inside can be replaced");
    if (isInside) {
      _model.members[iKey].elements[index] = TreeModel::OfBoolean(true);
    }
  }

  // What the tree was when it was copied into its own Array.
  void AddCopyOfRoot(const std::string& iKey) {
    TreeModel copy = _model;
    _model.members[iKey].elements.push_back(std::move(copy));
  }

  void Copy() {
    const VYXPropertyTree copy(_tree);
    Require(copy == _tree, "a copy is equal");
    _tree = copy;
  }

  void Read(const std::string& iKey) {
    const KORUnicodeString key{std::string_view(iKey)};
    const auto found = _model.members.find(iKey);
    const bool isThere = found != _model.members.end();
    const auto is = [&](Kind iKind) { return isThere && found->second.kind == iKind; };
    Require(_tree.HasKey(key) == isThere, "a key is there");
    bool boolean = false;
    Require((_tree.GetBoolean(key, boolean) >= 0) == is(Kind::Boolean), "a Boolean is read");
    Require(!is(Kind::Boolean) || boolean == found->second.boolean, "the Boolean");
    KORUnicodeString text;
    Require((_tree.GetString(key, text) >= 0) == is(Kind::String), "a text is read");
    RequireEqual(text.ToStringView(), is(Kind::String) ? found->second.text : "", "the text");
    VYXPropertyTree nested;
    Require((_tree.GetPropertyTree(key, nested) >= 0) == is(Kind::Object), "an Object is read");
    RequireEqual(VYXPropertyTreeUtils::Stringify(nested).ToStringView(), is(Kind::Object) ? found->second.Text() : "{}",
                 "the Object");
    std::int64_t integer = 0;
    Require((_tree.GetInteger(key, integer) >= 0) == is(Kind::Number), "a Number is read as an integer");
    CheckKeys();
  }

  void CheckKeys() {
    KORListValKORUnicodeString keys;
    Require(_tree.GetKeys(keys) >= 0 && keys.Size() == static_cast<int>(_model.members.size()), "the number of keys");
    int position = 0;
    for (const auto& [key, value] : _model.members) {
      RequireEqual(keys[++position].ToStringView(), key, "keys stand in order");
    }
  }

  VYXPropertyTree _tree;
  TreeModel _model;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  FuzzInput input(iData, iSize);
  Trees trees;
  while (!input.IsEmpty()) {
    trees.Step(input);
    trees.Check();
  }
  KORError::KORCleanLastError();
  return 0;
}
