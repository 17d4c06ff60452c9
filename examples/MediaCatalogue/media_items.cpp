#include "media_items.h"

#include <utility>
#include <vector>

#include "VYXInfMediaContainer.h"
#include "VYXInfTransferableFactory.h"

namespace MediaCatalogue {

namespace {

using VYX::Inf::ITransferable;
using VYX::Inf::LoadableContent;
using VYX::Inf::MediaContainer;
using VYX::Inf::TransferableFactory;

constexpr const char* kContentKey = "fileContent";
constexpr const char* kSizeKey = "fileSize";
constexpr const char* kSha256Key = "fileSha256";

struct Picture final : FileItem {
  static constexpr const char* kType = "MediaCatalogue::Picture";
  KORUnicodeString GetType() const override { return kType; }
};

struct Film final : FileItem {
  static constexpr const char* kType = "MediaCatalogue::Film";
  KORUnicodeString GetType() const override { return kType; }
};

struct Recording final : FileItem {
  static constexpr const char* kType = "MediaCatalogue::Recording";
  KORUnicodeString GetType() const override { return kType; }
};

struct Text final : FileItem {
  static constexpr const char* kType = "MediaCatalogue::Text";
  KORUnicodeString GetType() const override { return kType; }
};

struct OtherFile final : FileItem {
  static constexpr const char* kType = "MediaCatalogue::OtherFile";
  KORUnicodeString GetType() const override { return kType; }
};

template <typename Item>
std::unique_ptr<FileItem> Make() {
  return std::make_unique<Item>();
}

struct Kind {
  const char* mediaTypes;  // how they begin
  const char* type;
  std::unique_ptr<FileItem> (*make)();
};

// The last one is for all that is left.
constexpr Kind kKinds[] = {
    {"image/", Picture::kType, &Make<Picture>},     {"video/", Film::kType, &Make<Film>},
    {"audio/", Recording::kType, &Make<Recording>}, {"text/", Text::kType, &Make<Text>},
    {"", OtherFile::kType, &Make<OtherFile>},
};

}  // namespace

bool FileItem::Transfer(VYX::Inf::ITransmitter& ioTransmitter) const {
  return ioTransmitter.PutTransferables(kContentKey, {_content}) && ioTransmitter.PutInteger(kSizeKey, _size) &&
         ioTransmitter.PutString(kSha256Key, _sha256) && MediaBase::Transfer(ioTransmitter);
}

bool FileItem::Receive(const VYX::Inf::IReceiver& iReceiver) {
  std::vector<std::shared_ptr<ITransferable>> contents;
  std::int64_t size = 0;
  KORUnicodeString sha256;
  if (!iReceiver.GetTransferables(kContentKey, contents) || contents.size() != 1 ||
      !iReceiver.GetInteger(kSizeKey, size) || size < 0 || !iReceiver.GetString(kSha256Key, sha256)) {
    return false;
  }
  std::shared_ptr<const LoadableContent> content = std::dynamic_pointer_cast<const LoadableContent>(contents.front());
  if (content == nullptr || !MediaBase::Receive(iReceiver)) {
    return false;
  }
  _size = size;
  _sha256 = std::move(sha256);
  _content = std::move(content);
  return true;
}

void FileItem::SetFile(const KORUnicodeString& iName, const FileFacts& iFacts, const KORUnicodeString& iLocation) {
  SetName(iName);
  SetDescription(iFacts.mediaType);
  _size = iFacts.size;
  _sha256 = iFacts.sha256;
  _content = std::make_shared<const LoadableContent>(iLocation, iFacts.content);
}

std::unique_ptr<FileItem> MakeItem(const KORUnicodeString& iMediaType) {
  const Kind* kind = kKinds;
  while (!iMediaType.ToStringView().starts_with(kind->mediaTypes)) {
    ++kind;
  }
  return kind->make();
}

void RegisterMedia() {
  TransferableFactory::Register(LoadableContent::kType, [] { return std::make_unique<LoadableContent>(); });
  TransferableFactory::Register(MediaContainer::kType, [] { return std::make_unique<MediaContainer>(); });
  for (const Kind& kind : kKinds) {
    TransferableFactory::Register(kind.type, kind.make);
  }
}

}  // namespace MediaCatalogue
