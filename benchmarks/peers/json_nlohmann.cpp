#include <nlohmann/json.hpp>
#include <string>

#include "json_cases.h"

namespace {

struct Engine {
  using Document = nlohmann::json;
  using Text = std::string;
  using Key = std::string;
  using Object = nlohmann::json;

  static void Parse(const Text& iText, Document& oDocument) { oDocument = nlohmann::json::parse(iText); }
  static std::string Stringify(const Document& iDocument) { return iDocument.dump(); }
  static void Copy(const Document& iFrom, Document& oTo) { oTo = iFrom; }
  static bool Equal(const Document& iLeft, const Document& iRight) { return iLeft == iRight; }
  static void Set(Object& ioObject, const Key& iKey, std::int64_t iValue) { ioObject[iKey] = iValue; }
  static std::int64_t Get(const Object& iObject, const Key& iKey) {
    const auto found = iObject.find(iKey);
    return found != iObject.end() && found->is_number_integer() ? found->get<std::int64_t>() : 0;
  }
  static void Remove(Object& ioObject, const Key& iKey) { ioObject.erase(iKey); }
};

}  // namespace

int main(int iCount, char** iArguments) {
  return Compare::RunJson<Engine>(iCount, iArguments);
}
