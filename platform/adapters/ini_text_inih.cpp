#include <ini.h>

#include <algorithm>
#include <cstring>

#include "platform/adapters/ini_text.h"

namespace VYX::Adapters {

namespace {

// inih keeps a line in a buffer of this size; what is longer it would cut without a word.
constexpr std::size_t kLineBuffer = 200;

struct Reading {
  std::string_view rest;
  std::size_t line = 0;
  std::size_t tooLong = 0;
  std::vector<IniEntry>* entries;
};

std::string_view NextLine(Reading& ioReading) {
  const std::size_t end = std::min(ioReading.rest.find('\n'), ioReading.rest.size());
  const std::string_view line = ioReading.rest.substr(0, end);
  ioReading.rest.remove_prefix(std::min(end + 1, ioReading.rest.size()));
  ++ioReading.line;
  return line;
}

// Hands inih one line. Leading space is dropped, because inih takes it for the continuation of the line before.
char* ReadLine(char* oLine, int iSize, void* ioReading) {
  Reading& reading = *static_cast<Reading*>(ioReading);
  if (reading.rest.empty() || reading.tooLong != 0) {
    return nullptr;
  }
  std::string_view line = NextLine(reading);
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  const std::size_t limit = std::min(static_cast<std::size_t>(iSize), kLineBuffer) - 2;
  if (line.size() > limit || line.find('\0') != std::string_view::npos) {
    reading.tooLong = reading.line;
    return nullptr;
  }
  std::memcpy(oLine, line.data(), line.size());
  oLine[line.size()] = '\n';
  oLine[line.size() + 1] = '\0';
  return oLine;
}

int TakeEntry(void* ioReading, const char* iSection, const char* iName, const char* iValue) {
  Reading& reading = *static_cast<Reading*>(ioReading);
  reading.entries->push_back({iSection, iName, iValue == nullptr ? "" : iValue, reading.line});
  return 1;
}

}  // namespace

std::size_t ReadIniText(std::string_view iText, std::vector<IniEntry>& oEntries) {
  Reading reading{iText, 0, 0, &oEntries};
  const int errorLine = ini_parse_stream(&ReadLine, &reading, &TakeEntry, &reading);
  return errorLine > 0 ? static_cast<std::size_t>(errorLine) : reading.tooLong;
}

}  // namespace VYX::Adapters
