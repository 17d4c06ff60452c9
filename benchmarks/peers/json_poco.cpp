#include <Poco/Dynamic/Var.h>
#include <Poco/JSON/Object.h>
#include <Poco/JSON/Parser.h>

#include <sstream>
#include <string>

#include "json_cases.h"

namespace {

/// Containers are shared, so that there is no deep copy to compare with; nor is there an equality of values.
struct Engine {
  using Document = Poco::Dynamic::Var;
  using Text = std::string;
  using Key = std::string;
  using Object = Poco::JSON::Object;

  static void Parse(const Text& iText, Document& oDocument) { oDocument = Poco::JSON::Parser().parse(iText); }
  static std::string Stringify(const Document& iDocument) {
    std::ostringstream stream;
    iDocument.extract<Poco::JSON::Object::Ptr>()->stringify(stream);
    return stream.str();
  }
  static void Set(Object& ioObject, const Key& iKey, std::int64_t iValue) { ioObject.set(iKey, iValue); }
  static std::int64_t Get(const Object& iObject, const Key& iKey) { return iObject.getValue<std::int64_t>(iKey); }
  static void Remove(Object& ioObject, const Key& iKey) { ioObject.remove(iKey); }
};

}  // namespace

int main(int iCount, char** iArguments) {
  return Compare::RunJson<Engine>(iCount, iArguments);
}
