// Media objects: a class of one's own in an album, sent as JSON text and rebuilt on the other side.

#include <iostream>

#include "VYXInfMediaContainer.h"
#include "VYXInfTransferableFactory.h"
#include "VYXPropertyTreeTransfer.h"

using VYX::Inf::IReceiver;
using VYX::Inf::ITransferable;
using VYX::Inf::ITransmitter;
using VYX::Inf::MediaBase;
using VYX::Inf::MediaContainer;
using VYX::Inf::PropertyTreeReceiver;
using VYX::Inf::PropertyTreeTransmitter;
using VYX::Inf::TransferableFactory;

/// A picture: a media item with a width.
class Picture final : public MediaBase {
 public:
  static constexpr const char* kType = "Example::Picture";
  explicit Picture(std::int64_t iWidth = 0) : _width(iWidth) {}
  KORUnicodeString GetType() const override { return kType; }
  bool Transfer(ITransmitter& ioTransmitter) const override {
    return MediaBase::Transfer(ioTransmitter) && ioTransmitter.PutInteger("width", _width);
  }
  bool Receive(const IReceiver& iReceiver) override {
    return MediaBase::Receive(iReceiver) && iReceiver.GetInteger("width", _width);
  }
  std::int64_t Width() const { return _width; }

 private:
  std::int64_t _width;
};

/// The album as JSON text; empty when it cannot be sent.
static KORUnicodeString Send() {
  const auto picture = std::make_shared<Picture>(1920);
  picture->SetName("Fjord");
  MediaContainer album;
  album.SetName("Holiday");
  album.AddMedia(picture);
  VYXPropertyTree document;
  return PropertyTreeTransmitter::Transmit(album, document) ? VYXPropertyTreeUtils::Stringify(document)
                                                            : KORUnicodeString();
}

static bool Show(const KORUnicodeString& iText) {
  VYXPropertyTree document;
  if (document.Parse(iText) < 0) {
    return false;
  }
  const std::unique_ptr<ITransferable> object = PropertyTreeReceiver::Rebuild(std::move(document));
  const auto* const album = dynamic_cast<const MediaContainer*>(object.get());
  if (album == nullptr) {
    return false;
  }
  const auto picture = std::dynamic_pointer_cast<const Picture>(album->GetMedia(0));
  std::cout << album->GetName() << ": " << picture->GetName() << ", " << picture->Width() << " wide\n";
  return true;
}

int main() {
  // Only registered types are made from what others wrote.
  TransferableFactory::Register(MediaContainer::kType, [] { return std::make_unique<MediaContainer>(); });
  TransferableFactory::Register(Picture::kType, [] { return std::make_unique<Picture>(); });
  const KORUnicodeString text = Send();
  std::cout << text << "\n";
  return Show(text) ? 0 : 1;
}
