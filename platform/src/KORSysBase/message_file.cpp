#include "message_file.h"

#include <cstddef>
#include <mutex>
#include <utility>

#include "Quillbase/Paths.h"
#include "platform/adapters/json_reader.h"
#include "platform/os/native_path.h"
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

// The file of the first folder that has it, or where it cannot be told that it has none; null where none has it.
std::shared_ptr<const MessageFile> LoadMessageFile(const std::string& iName, const std::string& iInstallFolders) {
  const QB::Paths folders{KORUnicodeString(std::string_view(iInstallFolders))};
  for (const QB::StringView folder : folders) {
    std::string path;
    if (!Os::ToNativePath(folder.ToStringView(), path).IsOk()) {
      continue;
    }
    const char separator = Os::NativeSeparator();
    for (const std::string_view part : {"resources", "msgcatalog", iName.c_str()}) {
      path.append(path.ends_with(separator) ? 0 : 1, separator).append(part);
    }
    auto file = std::make_shared<const MessageFile>(ReadMessageFile(path));
    if (file->isThere) {
      return file;
    }
  }
  return nullptr;
}

}  // namespace

MessageFile ReadMessageFile(const std::string& iPath) {
  MessageFile file;
  std::string text;
  Os::Status host;
  std::string cause = ReadSmallTextFile(iPath, text, host);
  file.isThere = !host.IsNotThere() && host.GetNative() != Os::Failure::NotAFolder().GetNative();
  file.isLasting = host.IsOk() || !file.isThere;
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
  if (file == nullptr || file->isLasting) {
    memory.files.emplace(std::move(place), file);
  }
  return file;
}

}  // namespace VYX::Platform
