#pragma once

#include <string>
#include <string_view>

#include "platform/adapters/json_reader.h"

/// JSON text from texts and from values that were read.
namespace VYX::Platform {

/// Appends a text as a JSON string in quotation marks. A byte of ill-formed UTF-8 becomes U+FFFD.
void AppendJsonString(std::string& ioOutput, std::string_view iText);

/// Appends the members of an object, with commas between them and without braces; nothing for any other kind.
void AppendJsonMembers(std::string& ioOutput, VYX::Adapters::JsonNode iObject);

}  // namespace VYX::Platform
