#include "Quillbase/JSON/JOStream.h"

#include <charconv>

#include "json_writing.h"

namespace JSON {

using VYX::Platform::AppendJsonString;

namespace {

std::string_view ViewOf(const char* iText) {
  return iText == nullptr ? std::string_view() : std::string_view(iText);
}

}  // namespace

JOStream::JOStream(const JIStream& iStream) {
  VYX::Platform::AppendJsonMembers(_members, iStream.Node());
}

void JOStream::Add(const char* iKey, std::uint64_t iNumber) {
  BeginMember(ViewOf(iKey));
  char digits[24];
  char* const end = std::to_chars(digits, digits + sizeof digits, iNumber).ptr;
  _members.append(digits, end);
}

void JOStream::Add(const char* iKey, bool iBoolean) {
  BeginMember(ViewOf(iKey));
  _members.append(iBoolean ? "true" : "false");
}

void JOStream::Add(const char* iKey, const KORUnicodeString& iText) {
  BeginMember(ViewOf(iKey));
  AppendJsonString(_members, iText.ToStringView());
}

void JOStream::Add(const char* iKey, const char* iText) {
  BeginMember(ViewOf(iKey));
  AppendJsonString(_members, ViewOf(iText));
}

void JOStream::Add(const KORUnicodeString& iKey, const JOStream& iObject) {
  const std::string own = &iObject == this ? _members : std::string();
  BeginMember(iKey.ToStringView());
  _members.append("{").append(&iObject == this ? own : iObject._members).append("}");
}

KORUnicodeString JOStream::Stringify() const {
  KORUnicodeString text;
  text.Reserve(_members.size() + 2);
  text.Append("{").Append(std::string_view(_members)).Append("}");
  return text;
}

void JOStream::BeginMember(std::string_view iKey) {
  if (!_members.empty()) {
    _members.push_back(',');
  }
  AppendJsonString(_members, iKey);
  _members.push_back(':');
}

}  // namespace JSON
