#pragma once

#include <array>
#include <vector>

#include "VYXPropertyTree/object_body.h"

namespace json {

/// Finds the shapes that a copy made, so that objects of one shape have one in the copy, too. What does not fit into
/// the map is made again.
class ShapeMap {
 public:
  /// The copy of a shape.
  const Shape* CopyOf(const Shape& iShape, Arena& ioArena);

  /// A shape of the members of a body that has none.
  const Shape* ShapeOf(const MappedBody& iBody, Arena& ioArena);

 private:
  struct Pair {
    const Shape* from = nullptr;
    const Shape* to = nullptr;
  };

  std::array<Pair, 32> _pairs;
  const Shape* _lastMade = nullptr;
  std::vector<SearchKey> _keys;
};

}  // namespace json
