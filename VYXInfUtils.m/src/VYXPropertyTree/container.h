#pragma once

namespace json {

/// What the heap parts of arrays and objects have in common.
struct ContainerBody {
  explicit ContainerBody(bool iIsObject) noexcept : isObject(iIsObject) {}

  ContainerBody* nextDoomed = nullptr;  ///< links bodies that wait for their destruction, so that it needs no memory
  bool isObject;
};

/// Destroys a body and everything below it. Takes neither memory nor stack for the depth.
void Destroy(ContainerBody* ioBody) noexcept;

}  // namespace json
