#include <QtCore/QByteArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <string>

#include "json_cases.h"

namespace {

struct Text {
  explicit Text(const std::string& iText) : bytes(iText.data(), static_cast<qsizetype>(iText.size())) {}

  QByteArray bytes;
};

/// Documents share what they hold, so that there is no deep copy to compare with.
struct Engine {
  using Document = QJsonDocument;
  using Text = ::Text;
  using Key = QString;
  using Object = QJsonObject;

  static void Parse(const Text& iText, Document& oDocument) { oDocument = QJsonDocument::fromJson(iText.bytes); }
  static QByteArray Stringify(const Document& iDocument) { return iDocument.toJson(QJsonDocument::Compact); }
  static bool Equal(const Document& iLeft, const Document& iRight) { return iLeft == iRight; }
  static void Set(Object& ioObject, const Key& iKey, std::int64_t iValue) {
    ioObject.insert(iKey, static_cast<qint64>(iValue));
  }
  static std::int64_t Get(const Object& iObject, const Key& iKey) { return iObject.value(iKey).toInteger(); }
  static void Remove(Object& ioObject, const Key& iKey) { ioObject.remove(iKey); }
};

}  // namespace

int main(int iCount, char** iArguments) {
  return Compare::RunJson<Engine>(iCount, iArguments);
}
