#include "VYXPropertyTree/shape_map.h"

#include <cstdint>

namespace json {

const Shape* ShapeMap::CopyOf(const Shape& iShape, Arena& ioArena) {
  Pair& pair = _pairs[(reinterpret_cast<std::uintptr_t>(&iShape) / sizeof(KORUnicodeString)) % _pairs.size()];
  if (pair.from != &iShape) {
    _keys.clear();
    for (std::size_t index = 0; index < iShape.Size(); ++index) {
      _keys.emplace_back(iShape.Key(index).ToStringView());
    }
    pair = {&iShape, Shape::Make(ioArena, _keys)};
  }
  return pair.to;
}

const Shape* ShapeMap::ShapeOf(const MappedBody& iBody, Arena& ioArena) {
  _keys.clear();
  MemberCursor members(&iBody);
  while (const Member member = members.Next()) {
    _keys.emplace_back(member.key->ToStringView());
  }
  if (_lastMade == nullptr || !_lastMade->Has(_keys)) {
    _lastMade = Shape::Make(ioArena, _keys);
  }
  return _lastMade;
}

}  // namespace json
