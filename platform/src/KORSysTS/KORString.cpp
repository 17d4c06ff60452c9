#include "KORSysTS/KORString.h"

KORString::KORString(const char* iText) : _text(iText == nullptr ? "" : iText) {}
