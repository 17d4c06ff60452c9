#include "VYXInfTransferableFactory.h"

#include <map>

#include "internal/FailureTrace.h"

namespace VYX::Inf {

namespace {

using Internal::FailureLog;
using Internal::FailureReturn;
using Internal::LogUnlessFiltered;
using Registry = std::map<KORUnicodeString, TransferableFactory::Creator>;

// Constructed on first use and never destroyed: static objects may register and create in any order.
Registry& TheRegistry() {
  static Registry* const registry = new Registry;
  return *registry;
}

}  // namespace

bool TransferableFactory::Register(const KORUnicodeString& iType, const Creator& iCreator) {
  LogUnlessFiltered(INFO, "TransferableFactory: Registering type <", iType, ">");
  if (iType.IsEmpty()) {
    return FailureReturn(VYX_HERE, false);
  }
  if (!TheRegistry().try_emplace(iType, iCreator).second) {
    FailureLog(VYX_HERE, "TransferableFactory: Creator with type <", iType, "> already registered");
    return false;
  }
  return true;
}

bool TransferableFactory::Unregister(const KORUnicodeString& iType) {
  LogUnlessFiltered(INFO, "TransferableFactory: Unregistering type <", iType, ">");
  // The creator dies with the node, when the registry is in order again and may be used by its destructor.
  const Registry::node_type removed = TheRegistry().extract(iType);
  if (removed.empty()) {
    LogUnlessFiltered(WARN, "TransferableFactory: Type <", iType, "> to unregister not found");
    return false;
  }
  return true;
}

void TransferableFactory::UnregisterAll() {
  LogUnlessFiltered(INFO, "TransferableFactory: Unregister all");
  Registry removed;
  TheRegistry().swap(removed);
}

std::unique_ptr<ITransferable> TransferableFactory::Create(const KORUnicodeString& iType) {
  LogUnlessFiltered(TRACE, "TransferableFactory: Creating type <", iType, ">");
  const Registry& registry = TheRegistry();
  const auto found = registry.find(iType);
  if (found == registry.end()) {
    return FailureReturn(VYX_HERE, std::unique_ptr<ITransferable>());
  }
  return found->second();
}

std::unique_ptr<ITransferable> TransferableFactory::Create(const KORUnicodeString& iType, const IReceiver& iReceiver) {
  LogUnlessFiltered(TRACE, "TransferableFactory: Creating type <", iType, "> and initializing with receiver");
  std::unique_ptr<ITransferable> object = Create(iType);
  if (object == nullptr) {
    return FailureReturn(VYX_HERE, std::unique_ptr<ITransferable>());
  }
  if (!object->Receive(iReceiver)) {
    return FailureReturn(VYX_HERE, std::unique_ptr<ITransferable>());
  }
  return object;
}

}  // namespace VYX::Inf
