#include "VYXIPropertyTreeVisitor.h"

#include "KORSysBase/KORResult.h"

VYXIPropertyTreeVisitor::~VYXIPropertyTreeVisitor() = default;

long VYXIPropertyTreeVisitor::VisitNull(const KORUnicodeString&) {
  return S_OK;
}

long VYXIPropertyTreeVisitor::VisitPropertyTreeList(const KORUnicodeString&, const KORListValVYXPropertyTree&) {
  return S_OK;
}

long VYXIPropertyTreeVisitor::VisitDoubleList(const KORUnicodeString&, const KORRawColldouble&) {
  return S_OK;
}

long VYXIPropertyTreeVisitor::VisitStringList(const KORUnicodeString&, const KORListValKORUnicodeString&) {
  return S_OK;
}

long VYXIPropertyTreeVisitor::VisitBooleanList(const KORUnicodeString&, const KORListValvyx_bool&) {
  return S_OK;
}

long VYXIPropertyTreeVisitor::VisitString(const KORUnicodeString&, const KORUnicodeString&) {
  return S_OK;
}

long VYXIPropertyTreeVisitor::VisitDouble(const KORUnicodeString&, double) {
  return S_OK;
}

long VYXIPropertyTreeVisitor::VisitPropertyTree(const KORUnicodeString&, const VYXPropertyTree&) {
  return S_OK;
}

long VYXIPropertyTreeVisitor::VisitBoolean(const KORUnicodeString&, bool) {
  return S_OK;
}
