#pragma once

#include <cstdint>
#include <memory>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXITransferable.h"
#include "VYXInfLoadableContent.h"
#include "VYXInfMediaBase.h"
#include "file_facts.h"

namespace MediaCatalogue {

/**
 * A catalogued file as a media item: named after the file, described by its media type.
 *
 * Fields, in the order of transfer: "fileContent", a list of the one LoadableContent; "fileSize", in bytes;
 * "fileSha256", 64 hexadecimal digits; then those of MediaBase.
 */
class FileItem : public VYX::Inf::MediaBase {
 public:
  FileItem() = default;
  FileItem(const FileItem&) = default;
  FileItem& operator=(const FileItem&) = default;
  ~FileItem() override = default;

  bool Transfer(VYX::Inf::ITransmitter& ioTransmitter) const override;

  /// Also false for what no file is like: not one content, a negative size.
  bool Receive(const VYX::Inf::IReceiver& iReceiver) override;

  /// Describes a file.
  void SetFile(const KORUnicodeString& iName, const FileFacts& iFacts, const KORUnicodeString& iLocation);

  std::int64_t Size() const { return _size; }
  const KORUnicodeString& Sha256() const { return _sha256; }

  /// Holds the bytes of a file of up to kInlineLimit bytes, and the location of any. Null before a file was described.
  const std::shared_ptr<const VYX::Inf::LoadableContent>& Content() const { return _content; }

 private:
  std::int64_t _size = 0;
  KORUnicodeString _sha256;
  std::shared_ptr<const VYX::Inf::LoadableContent> _content;
};

/// A new item of the class for a media type: of MediaCatalogue::Picture for "image/png", and so on.
std::unique_ptr<FileItem> MakeItem(const KORUnicodeString& iMediaType);

/// Makes the factory know the types that a catalogue holds, and no other. To be called once.
void RegisterMedia();

}  // namespace MediaCatalogue
