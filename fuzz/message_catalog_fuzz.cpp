#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/support/memory_file.h"
#include "fuzz/support/require.h"
#include "platform/adapters/json_reader.h"
#include "platform/src/KORSysBase/message_file.h"

// Any message catalog file: usable exactly when it is one JSON object of texts.

namespace {

using namespace VYX::Fuzz;
namespace Adapters = VYX::Adapters;

bool IsObjectOfTexts(const Adapters::JsonDocument& iDocument) {
  if (iDocument.Root().Kind() != Adapters::JsonKind::Object) {
    return false;
  }
  for (Adapters::JsonWalk walk(iDocument.Root()); walk.Next();) {
    if (walk.Value().Kind() != Adapters::JsonKind::String) {
      return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  static MemoryFile file;
  const std::string_view content(reinterpret_cast<const char*>(iData), iSize);
  file.Write(content);
  const VYX::Platform::MessageFile messages = VYX::Platform::ReadMessageFile(file.Path());
  Adapters::JsonDocument document;
  Adapters::JsonFailure failure;
  const bool isUsable = document.Parse(content, failure) && IsObjectOfTexts(document);
  Require(messages.problem.empty() == isUsable, "a catalog is an object of texts");
  Require(isUsable || messages.texts.empty(), "an unusable file gives no texts");
  if (isUsable) {
    for (Adapters::JsonWalk walk(document.Root()); walk.Next();) {
      Require(messages.texts.contains(walk.Key()), "every key is there");
    }
  }
  return 0;
}
