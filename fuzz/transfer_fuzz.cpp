#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "KORSysBase/KORError.h"
#include "VYXInfMediaContainer.h"
#include "VYXInfTransferableFactory.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeTransfer.h"
#include "fuzz/support/require.h"

// Any document as a transferred object: what can be rebuilt is written as a document that rebuilds the same.

namespace {

using namespace VYX::Fuzz;
namespace Inf = VYX::Inf;

// An item with a field of every kind.
class Item final : public Inf::MediaBase {
 public:
  static constexpr const char* kType = "Item";

  KORUnicodeString GetType() const override { return kType; }

  bool Transfer(Inf::ITransmitter& ioTransmitter) const override {
    const std::vector<std::shared_ptr<const Inf::ITransferable>> objects(_objects.begin(), _objects.end());
    return MediaBase::Transfer(ioTransmitter) && ioTransmitter.PutBoolean("b", _boolean) &&
           ioTransmitter.PutInteger("i", _integer) && ioTransmitter.PutDouble("d", _double) &&
           ioTransmitter.PutBinary("y", _bytes) && ioTransmitter.PutTransferables("o", objects);
  }

  bool Receive(const Inf::IReceiver& iReceiver) override {
    return MediaBase::Receive(iReceiver) && iReceiver.GetBoolean("b", _boolean) &&
           iReceiver.GetInteger("i", _integer) && iReceiver.GetDouble("d", _double) &&
           iReceiver.GetBinary("y", _bytes) && iReceiver.GetTransferables("o", _objects);
  }

 private:
  bool _boolean = false;
  std::int64_t _integer = 0;
  double _double = 0;
  QB::Binary _bytes;
  std::vector<std::shared_ptr<Inf::ITransferable>> _objects;
};

KORUnicodeString Written(const Inf::ITransferable& iObject) {
  VYXPropertyTree document;
  Require(Inf::PropertyTreeTransmitter::Transmit(iObject, document), "what was rebuilt can be written");
  return VYXPropertyTreeUtils::Stringify(document);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  Inf::TransferableFactory::Register(Item::kType, [] { return std::make_unique<Item>(); });
  Inf::TransferableFactory::Register(Inf::MediaContainer::kType,
                                     [] { return std::make_unique<Inf::MediaContainer>(); });
  Inf::TransferableFactory::Register("Nothing", [] { return std::unique_ptr<Inf::ITransferable>(); });
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  VYXPropertyTree document;
  if (document.Parse(KORUnicodeString(std::string_view(reinterpret_cast<const char*>(iData), iSize))) >= 0) {
    if (const std::unique_ptr<Inf::ITransferable> object = Inf::PropertyTreeReceiver::Rebuild(std::move(document))) {
      const KORUnicodeString text = Written(*object);
      VYXPropertyTree again;
      Require(again.Parse(text) >= 0, "what was written is JSON");
      const std::unique_ptr<Inf::ITransferable> rebuilt = Inf::PropertyTreeReceiver::Rebuild(std::move(again));
      Require(rebuilt != nullptr, "what was written can be rebuilt");
      RequireEqual(Written(*rebuilt).ToStringView(), text.ToStringView(), "what was rebuilt is the same");
    }
  }
  KORError::KORCleanLastError();
  return 0;
}
