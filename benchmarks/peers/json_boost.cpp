// Compiled twice: with PEER_MONOTONIC set to 1, each document takes its memory from a resource that only grows.
#include <boost/json.hpp>
#include <memory>
#include <string>

#include "json_cases.h"

namespace {

namespace json = boost::json;

struct Holder {
#if PEER_MONOTONIC
  json::monotonic_resource resource;
  json::value value = json::value(json::storage_ptr(&resource));
#else
  json::value value;
#endif
};

struct Engine {
  using Document = Holder;
  using Text = std::string;
  using Key = std::string;
  using Object = json::object;

  static void Parse(const Text& iText, Document& oDocument) {
    oDocument.value = json::parse(iText, oDocument.value.storage());
  }
  static std::string Stringify(const Document& iDocument) { return json::serialize(iDocument.value); }
  static void Copy(const Document& iFrom, Document& oTo) { oTo.value = json::value(iFrom.value, oTo.value.storage()); }
  static bool Equal(const Document& iLeft, const Document& iRight) { return iLeft.value == iRight.value; }
  static void Set(Object& ioObject, const Key& iKey, std::int64_t iValue) { ioObject[iKey] = iValue; }
  static std::int64_t Get(const Object& iObject, const Key& iKey) {
    const json::value* const found = iObject.if_contains(iKey);
    const std::int64_t* const number = found == nullptr ? nullptr : found->if_int64();
    return number == nullptr ? 0 : *number;
  }
  static void Remove(Object& ioObject, const Key& iKey) { ioObject.erase(iKey); }
};

}  // namespace

int main(int iCount, char** iArguments) {
  return Compare::RunJson<Engine>(iCount, iArguments);
}
