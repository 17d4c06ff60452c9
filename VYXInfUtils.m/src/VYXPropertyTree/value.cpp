#include "VYXPropertyTree/value.h"

namespace json {

Value::Value(const Value& iOther) : Value() {
  switch (iOther._kind) {
    case Kind::Null:
      break;
    case Kind::Boolean:
      *this = Value(iOther._boolean);
      break;
    case Kind::Number:
      *this = Value(iOther._number);
      break;
    case Kind::String:
      *this = Value(iOther._string);
      break;
    case Kind::Array:
      *this = Value(json::Array(iOther._array));
      break;
    case Kind::Object:
      *this = Value(json::Object(iOther._object));
      break;
  }
}

void Value::ThrowBadAccess() {
  throw BadVariantAccess();
}

}  // namespace json
