#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace VYX::Adapters {

/// One "name = value" of an ini text, and the line it stands on, counted from 1.
struct IniEntry {
  std::string section;
  std::string name;
  std::string value;
  std::size_t line = 0;
};

/**
 * Reads an ini text: "[section]", "name = value", comments from "#" or ";" at the start of a line and from " ;" within
 * one. Space around names and values is dropped; a byte order mark is accepted.
 *
 * @return 0, or the number of the first line that is neither empty nor a section nor a setting, or holds a zero;
 * oEntries then holds what came before.
 */
std::size_t ReadIniText(std::string_view iText, std::vector<IniEntry>& oEntries);

}  // namespace VYX::Adapters
