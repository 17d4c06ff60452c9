#include "VYXLoggingAdapter/TextFileSink.h"

namespace VYX::Logging {

namespace {

const char* OrEmpty(const char* iText) {
  return iText == nullptr ? "" : iText;
}

}  // namespace

TextFileSink::TextFileSink(const char* iDirectory, const char* iFile, const char* iFormat, const char* iFilter)
    : _directory(OrEmpty(iDirectory)), _file(OrEmpty(iFile)), _format(OrEmpty(iFormat)), _filter(OrEmpty(iFilter)) {}

TextFileSink::~TextFileSink() = default;

}  // namespace VYX::Logging
