#include "message_file.h"

#include <cstddef>
#include <mutex>
#include <utility>

#include "KORSysBase/KORPath.h"
#include "platform/adapters/json_reader.h"
#include "small_text_file.h"

namespace VYX::Platform {

namespace {

using Adapters::JsonDocument;
using Adapters::JsonFailure;
using Adapters::JsonKind;
using Adapters::JsonWalk;

// Names come from callers: what is remembered about them, absence included, is forgotten when it grows beyond this.
constexpr std::size_t kMaxRemembered = 1024;

std::string ParseTexts(std::string_view iText, MessageFile& ioFile) {
  JsonDocument document;
  JsonFailure failure;
  if (!document.Parse(iText, failure)) {
    return "line " + std::to_string(failure.line) + ", column " + std::to_string(failure.column) + ": " +
           failure.reason;
  }
  if (document.Root().Kind() != JsonKind::Object) {
    return "it holds no object";
  }
  for (JsonWalk walk(document.Root()); walk.Next();) {
    if (walk.Value().Kind() != JsonKind::String) {
      return "the message '" + std::string(walk.Key()) + "' is no text";
    }
    ioFile.texts.insert_or_assign(std::string(walk.Key()), KORUnicodeString(walk.Value().Text()));
  }
  return {};
}

// The files read so far, by installation folders and name; null for a file that does not exist.
struct Memory {
  std::mutex mutex;
  std::map<std::string, std::shared_ptr<const MessageFile>, std::less<>> files;
};

// Never destroyed: messages are asked for until the process is gone.
Memory& TheMemory() {
  static Memory* const memory = new Memory;
  return *memory;
}

std::shared_ptr<const MessageFile> LoadMessageFile(const std::string& iName, const std::string& iInstallFolders) {
  const KORUnicodeString path = KORFindPath(("resources/msgcatalog/" + iName).c_str(), iInstallFolders.c_str());
  if (path.IsEmpty()) {
    return nullptr;
  }
  return std::make_shared<const MessageFile>(ReadMessageFile(path.ConvertToChar()));
}

}  // namespace

MessageFile ReadMessageFile(const std::string& iPath) {
  MessageFile file;
  std::string text;
  std::string cause = ReadSmallTextFile(iPath, text);
  if (cause.empty()) {
    cause = ParseTexts(text, file);
  }
  if (!cause.empty()) {
    file.texts.clear();
    file.problem = "Cannot use the message catalog '" + iPath + "': " + cause;
  }
  return file;
}

std::shared_ptr<const MessageFile> FindMessageFile(const std::string& iName, std::string_view iInstallFolders) {
  std::string place(iInstallFolders);
  place.append(1, '\0').append(iName);
  Memory& memory = TheMemory();
  // Reading happens under the lock, so that no two threads read the same file.
  const std::scoped_lock lock(memory.mutex);
  if (const auto found = memory.files.find(place); found != memory.files.end()) {
    return found->second;
  }
  if (memory.files.size() >= kMaxRemembered) {
    memory.files.clear();
  }
  auto file = LoadMessageFile(iName, std::string(iInstallFolders));
  memory.files.emplace(std::move(place), file);
  return file;
}

}  // namespace VYX::Platform
