#include "Quillbase/JSON/JVisitor.h"

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"

namespace JSON {

JVisitor::~JVisitor() = default;

bool JVisitor::EndOfFile() {
  return true;
}

bool JVisitor::VisitNullValue(const QB::StringView& /*iKey*/) {
  return true;
}

bool JVisitor::Visit(const QB::StringView& /*iKey*/, const std::vector<double>& /*iNumbers*/) {
  return _skipsUnhandled;
}

bool JVisitor::Visit(const QB::StringView& /*iKey*/, const std::vector<JIStream>& /*iObjects*/) {
  return _skipsUnhandled;
}

bool JVisitor::Visit(const QB::StringView& /*iKey*/, const std::vector<bool>& /*iBooleans*/) {
  return _skipsUnhandled;
}

bool JVisitor::Visit(const QB::StringView& /*iKey*/, const std::vector<QB::StringView>& /*iTexts*/) {
  return _skipsUnhandled;
}

bool JVisitor::Visit(const QB::StringView& /*iKey*/, double /*iNumber*/) {
  return _skipsUnhandled;
}

bool JVisitor::Visit(const QB::StringView& /*iKey*/, const JIStream& /*iObject*/) {
  return _skipsUnhandled;
}

bool JVisitor::Visit(const QB::StringView& /*iKey*/, bool /*iBoolean*/) {
  return _skipsUnhandled;
}

bool JVisitor::Visit(const QB::StringView& /*iKey*/, const QB::StringView& /*iText*/) {
  return _skipsUnhandled;
}

bool JVisitor::VisitAny(const QB::StringView& iKey, const JIStream& /*iArray*/) {
  KORUnicodeString message("Cannot take the JSON array '");
  message.Append(iKey.ToStringView()).Append("': its elements are not texts, numbers, truth values or objects only");
  KORError::KORSetLastError(E_FAIL, std::move(message));
  return false;
}

void JVisitor::ExpectMembers(std::size_t /*iCount*/) {}

}  // namespace JSON
